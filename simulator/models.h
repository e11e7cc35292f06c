// The features of a camera, by its model, destination and firmware.
#pragma once

#include "simulator/state.h"
#include "simulator/time_code.h"

namespace simulator {

/// Live streaming: the RV130 and the RV140.
bool HasStreaming(const State& state);
/// The cloud streaming service: with streaming, from firmware 1.05 on.
bool HasCloud(const State& state);
/// Return audio: with streaming, from firmware 1.03 on.
bool HasIfb(const State& state);
/// All but the RV110 and the RV120.
bool HasGps(const State& state);
/// All but the RV110.
bool HasUpload(const State& state);

/// Whether pictures are recorded at 50 Hz: as the recording format says, or, without one, as is
/// usual at the destination.
bool Is50Hz(const State& state);

/// How this camera counts frames.
Counting CountingOf(const State& state);

}  // namespace simulator
