#include "simulator/recording.h"

#include <algorithm>

#include "simulator/battery.h"
#include "simulator/models.h"

namespace simulator {
namespace {

/// What the mode "Pre" adds in front of a clip.
constexpr Milliseconds kPreRecording = 5000;
/// What the mode "Frame" records at a time.
constexpr Milliseconds kFramesAtATime = 200;
/// The mode "Interval" records for a while and pauses for a while.
constexpr Milliseconds kIntervalRecording = 1000;
constexpr Milliseconds kIntervalPause = 4000;

constexpr Milliseconds kLittleSpace = 300'000;

bool CanRecordOn(const Slot& slot) {
  return slot.card == Card::kOk && !slot.write_protected && slot.remain != 0;
}

void EnterStatus(State& state, RecordingStatus status) {
  state.recording.status = status;
  state.recording.in_status = 0;
}

void AppendClip(State& state, std::size_t index) {
  Slot& slot = state.slots[index];
  Clip clip;
  clip.name = NextClipName(index == 0 ? 'A' : 'B', slot.clips);
  clip.first_frame = state.recording.first_frame;
  clip.last_frame = CurrentTimeCode(state);
  clip.recorded_at = CurrentSecond(state.clock);
  clip.four_to_three = state.recording.four_to_three;
  slot.clips.push_back(clip);
}

bool IsRecordedOn(const State& state, std::size_t index) {
  return HasOpenClip(state) && state.slots[index].card == Card::kOk &&
         (state.recording.slot == static_cast<int>(index) || state.recording.dual);
}

void CloseClip(State& state) {
  for (std::size_t i = 0; i < state.slots.size(); ++i) {
    if (IsRecordedOn(state, i)) {
      AppendClip(state, i);
    }
  }
  EnterStatus(state, state.recording.mode == RecordingMode::kNormal ? RecordingStatus::kStop
                                                                    : RecordingStatus::kStandby);
}

/// The selected card is full: goes on with the other one, or ends.
void ChangeCards(State& state) {
  const int other = 1 - state.recording.slot;
  const bool goes_on =
      !state.recording.dual && CanRecordOn(state.slots[static_cast<std::size_t>(other)]);
  const RecordingStatus status = state.recording.status;
  CloseClip(state);
  if (goes_on) {
    state.recording.slot = other;
    state.recording.first_frame = CurrentTimeCode(state);
    EnterStatus(state, status);
  }
}

void FillCards(State& state, Milliseconds elapsed) {
  for (std::size_t i = 0; i < state.slots.size(); ++i) {
    Slot& slot = state.slots[i];
    if (IsRecordedOn(state, i) && slot.remain != Slot::kUnknown) {
      slot.remain = std::max<Milliseconds>(0, slot.remain - elapsed);
    }
  }
  if (state.slots[static_cast<std::size_t>(state.recording.slot)].remain == 0) {
    ChangeCards(state);
  }
}

void FollowMode(State& state) {
  const Recording& recording = state.recording;
  const bool records = recording.status == RecordingStatus::kRec;
  if (recording.mode == RecordingMode::kFrame && records && recording.in_status >= kFramesAtATime) {
    EnterStatus(state, RecordingStatus::kRecPause);
  }
  if (recording.mode == RecordingMode::kInterval) {
    if (records && recording.in_status >= kIntervalRecording) {
      EnterStatus(state, RecordingStatus::kRecPause);
    } else if (!records && recording.in_status >= kIntervalPause) {
      EnterStatus(state, RecordingStatus::kRec);
    }
  }
}

}  // namespace

std::int64_t CurrentSecond(const CameraClock& clock) {
  return clock.date_at_power_on + clock.uptime / 1000;
}

TimeCode CurrentTimeCode(const State& state) {
  const Counting counting = CountingOf(state);
  return TimeCodeOf(state.time_code.first_frame + FramesIn(state.time_code.elapsed, counting),
                    counting);
}

void SetTimeCode(State& state, const TimeCode& time_code) {
  state.time_code.first_frame = FrameOf(time_code, CountingOf(state));
  state.time_code.elapsed = 0;
}

bool HasCard(const Slot& slot) { return slot.card == Card::kOk; }

const char* ShootingObstacle(const State& state) {
  if (state.suspended) {
    return "the camera is suspended";
  }
  return state.mode == Mode::kCamera ? nullptr : "the camera is in another mode than Camera";
}

const char* RecordingObstacle(const State& state) {
  if (const char* const obstacle = ShootingObstacle(state); obstacle != nullptr) {
    return obstacle;
  }
  if (IsEmpty(state.battery)) {
    return "the battery is empty";
  }
  if (state.upload.phase != UploadPhase::kOff) {
    return "an upload is running";
  }
  return std::any_of(state.slots.begin(), state.slots.end(), CanRecordOn)
             ? nullptr
             : "there is no card that can be recorded on";
}

bool HasOpenClip(const State& state) {
  return state.recording.status == RecordingStatus::kRec ||
         state.recording.status == RecordingStatus::kRecPause;
}

void StartRecording(State& state) {
  Recording& recording = state.recording;
  if (!HasOpenClip(state)) {
    if (!CanRecordOn(state.slots[static_cast<std::size_t>(recording.slot)])) {
      recording.slot = 1 - recording.slot;
    }
    const Counting counting = CountingOf(state);
    const Milliseconds before = recording.mode == RecordingMode::kPre ? kPreRecording : 0;
    recording.first_frame = TimeCodeOf(
        FrameOf(CurrentTimeCode(state), counting) - FramesIn(before, counting), counting);
  }
  if (recording.status != RecordingStatus::kRec) {
    EnterStatus(state, RecordingStatus::kRec);
  }
}

void StopRecording(State& state) {
  if (state.recording.mode == RecordingMode::kClip &&
      state.recording.status == RecordingStatus::kRec) {
    EnterStatus(state, RecordingStatus::kRecPause);
  } else if (HasOpenClip(state)) {
    CloseClip(state);
  }
}

int RemainWarning(const Slot& slot) {
  if (!HasCard(slot) || slot.remain == Slot::kUnknown || slot.remain > kLittleSpace) {
    return 0;
  }
  return slot.remain > 0 ? 1 : 2;
}

void AdvanceRecording(State& state, Milliseconds elapsed) {
  const bool records = state.recording.status == RecordingStatus::kRec;
  if (state.time_code.run == TimeCodeRun::kFreeRun || records) {
    state.time_code.elapsed += elapsed;
  }
  state.recording.in_status += elapsed;
  if (records) {
    FillCards(state, elapsed);
  }
  if (HasOpenClip(state)) {
    FollowMode(state);
    if (IsEmpty(state.battery)) {
      CloseClip(state);
    }
  }
}

}  // namespace simulator
