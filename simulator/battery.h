// The battery empties with time.
#pragma once

#include "simulator/state.h"

namespace simulator {

/// Whether nothing is left in it: the camera answers, but does not record.
bool IsEmpty(const Battery& battery);

/// Lets time pass: a minute of time, a percent of capacity or a tenth of a volt is used up at
/// regular intervals, and the level follows.
void AdvanceBattery(Battery& battery, Milliseconds elapsed);

}  // namespace simulator
