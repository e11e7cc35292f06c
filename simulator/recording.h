// Recording: the time code, the cards, and the clips that come to them.
#pragma once

#include "simulator/state.h"

namespace simulator {

/// The date and time, in seconds since 1970 in the camera's time zone.
std::int64_t CurrentSecond(const CameraClock& clock);

TimeCode CurrentTimeCode(const State& state);
/// The time code runs on from a value.
void SetTimeCode(State& state, const TimeCode& time_code);

/// Whether there is a card in the slot that can be read.
bool HasCard(const Slot& slot);
/// Why the camera's controls cannot be used, in words; null if the camera is awake and in the mode
/// "Camera".
const char* ShootingObstacle(const State& state);
/// Why the camera cannot record, in words; null if it could begin to record or is recording.
const char* RecordingObstacle(const State& state);
/// Whether a clip is open: it is being recorded, or paused.
bool HasOpenClip(const State& state);

/// Starts or continues to record as the recording mode says: on the selected card, or on the other
/// one if only that can be recorded on. Call it only without a `RecordingObstacle`.
void StartRecording(State& state);
/// Ends the recording and closes the clip. In the mode "Clip" the first stop pauses.
void StopRecording(State& state);

/// The first of the warnings that a card is nearly full: 0 none, 1 little is left, 2 it is full.
int RemainWarning(const Slot& slot);

/// Lets time pass: the time code runs, cards fill up, the battery empties.
void AdvanceRecording(State& state, Milliseconds elapsed);

}  // namespace simulator
