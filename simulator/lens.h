// What moves: zoom, focus, iris, and the levels that seesaw switches run.
#pragma once

#include "simulator/state.h"

namespace simulator {

/// Starts the zoom's way to a position; one beyond an end means that end.
void ZoomTo(State& state, int position);
/// Runs the zoom upwards, that is towards tele, or downwards until `Direction::kStopped`.
/// `speed`: 0 (stands still) to 255.
void RunZoom(State& state, Direction direction, int speed);
bool IsZooming(const State& state);
/// -99 to 99: 0 at the wide end, 99 at the tele end.
int ZoomDisplayValue(const State& state);

void StepIris(State& state, int thirds);
void StepFocus(State& state, int positions);
/// Focuses once on what is in front of the camera, then leaves the focus to the hand again.
void PushAutoFocus(State& state);

// As `RunZoom`.
void RunIris(State& state, Direction direction, int speed);
void RunFocus(State& state, Direction direction, int speed);
void RunMasterBlack(State& state, Direction direction, int speed);

/// Lets time pass.
void AdvanceLens(State& state, Milliseconds elapsed);

}  // namespace simulator
