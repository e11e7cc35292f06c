// Time codes, 29.97 frames per second in drop-frame counting.
#pragma once

#include <array>
#include <cstdint>

namespace simulator {

/// Four bytes of packed BCD: hours, minutes, seconds, frames; the frames' top bit marks drop frame.
using TimeCode = std::array<std::uint8_t, 4>;

/// The time code of the frame `frames` after 00:00:00.00; starts again after 24 hours.
TimeCode DropFrameTimeCode(std::int64_t frames);

}  // namespace simulator
