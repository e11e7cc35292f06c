// The network adaptor, and what depends on it: NTP, streaming, return audio.
#pragma once

#include "simulator/state.h"

namespace simulator {

bool IsOnline(const State& state);

/// Return audio plays: it is on, and its server can be reached.
bool IfbIsActive(const State& state);

// Call these only for a camera that can stream.
void StartStreaming(State& state);
void StopStreaming(State& state);

/// The streaming settings have changed: the stream connects again.
void RestartStreaming(State& state);

/// The NTP settings have changed: the camera looks for its server again.
void RestartNtp(State& state);

/// Lets time pass.
/// @param time_code_follows_ntp  whether the time code is set to the time of day when NTP has found
///                               its server
void AdvanceNetwork(State& state, bool time_code_follows_ntp, Milliseconds elapsed);

}  // namespace simulator
