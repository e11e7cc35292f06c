// The automatic modes: how the camera sets iris, gain, shutter and white balance for the light in
// front of it.
#pragma once

#include "simulator/state.h"

namespace simulator {

// Whether each is automatic now, by its own mode or because full auto is on.
bool IrisIsAutomatic(const State& state);
bool GainIsAutomatic(const State& state);
bool ShutterIsAutomatic(const State& state);
bool WhiteIsAutomatic(const State& state);
/// Whether the AE level has an effect: whether anything is exposed automatically.
bool AeIsOn(const State& state);

// The values in force, set by hand or automatic.
int CurrentIrisStop(const State& state);     ///< index into `kIrisStops`
int CurrentGain(const State& state);         ///< dB; that of the position when not automatic
int CurrentShutterStep(const State& state);  ///< index into `kShutterSpeeds`
int CurrentKelvin(const State& state);

/// Remembers the light for the AE lock, as long as nothing is locked.
void FollowLight(State& state);

}  // namespace simulator
