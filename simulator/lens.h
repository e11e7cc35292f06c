// The moving values: zoom, focus, iris, and the levels that seesaw switches change.
#pragma once

#include "simulator/state.h"

namespace simulator {

/// Starts to move the zoom to a position, limited to the ends of its range.
void ZoomTo(State& state, int position);
/// Moves the zoom up, that is toward tele, or down, until `Direction::kStopped`.
/// `speed`: 0 (does not move) to 255.
void RunZoom(State& state, Direction direction, int speed);
bool IsZooming(const State& state);
/// -99 to 99: 0 at the wide end, 99 at the tele end.
int ZoomDisplayValue(const State& state);

void StepIris(State& state, int thirds);
void StepFocus(State& state, int positions);
/// Focuses once on the subject; the focus stays manual.
void PushAutoFocus(State& state);

// As `RunZoom`.
void RunIris(State& state, Direction direction, int speed);
void RunFocus(State& state, Direction direction, int speed);
void RunMasterBlack(State& state, Direction direction, int speed);

/// Lets time pass.
void AdvanceLens(State& state, Milliseconds elapsed);

}  // namespace simulator
