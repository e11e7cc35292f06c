// Time codes: 29.97 frames per second with or without drop-frame counting, or 25.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace simulator {

/// Four bytes of packed BCD: hours, minutes, seconds, frames; the frames' top bit marks drop frame.
using TimeCode = std::array<std::uint8_t, 4>;

/// How frames are counted.
enum class Counting { k30, k30Drop, k25 };

/// The time code of the frame `frame` after 00:00:00:00; starts again after 24 hours.
TimeCode TimeCodeOf(std::int64_t frame, Counting counting);

/// The frame that has a time code, counted from 00:00:00:00. A number that drop-frame counting
/// leaves out counts as the next one.
std::int64_t FrameOf(const TimeCode& time_code, Counting counting);

/// How many frames there are in a time.
std::int64_t FramesIn(std::int64_t milliseconds, Counting counting);

/// "hh:mm:ss:ff", or "hh:mm:ss.ff" in drop frame.
std::string TimeCodeText(const TimeCode& time_code);

/// Reads what `TimeCodeText` writes; nothing if it is not that.
std::optional<TimeCode> ParseTimeCode(const std::string& text);

}  // namespace simulator
