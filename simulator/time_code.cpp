#include "simulator/time_code.h"

#include <cstddef>
#include <cstdio>

namespace simulator {
namespace {

constexpr std::uint8_t kDropFrame = 0x80;
constexpr std::uint8_t kFrameNumber = 0x7f;
// Drop-frame counting leaves out the numbers 00 and 01 of every minute except each tenth one.
constexpr std::int64_t kPerTenMinutes = 17982;
constexpr std::int64_t kPerMinute = 1798;
constexpr std::int64_t kLeftOut = 2;

std::uint8_t PackedBcd(std::int64_t value) {
  return static_cast<std::uint8_t>((value / 10) << 4 | value % 10);
}

std::int64_t FromBcd(std::uint8_t value) { return (value >> 4) * 10 + (value & 0xf); }

std::int64_t Rate(Counting counting) { return counting == Counting::k25 ? 25 : 30; }

std::int64_t FramesPerDay(Counting counting) {
  constexpr std::int64_t kTenMinutesPerDay = 144;
  constexpr std::int64_t kSecondsPerDay = 86400;
  return counting == Counting::k30Drop ? kTenMinutesPerDay * kPerTenMinutes
                                       : kSecondsPerDay * Rate(counting);
}

/// The number that drop-frame counting gives to a frame.
std::int64_t DropFrameNumber(std::int64_t frame) {
  const std::int64_t rest = frame % kPerTenMinutes;
  const std::int64_t short_minutes = rest < kLeftOut ? 0 : (rest - kLeftOut) / kPerMinute;
  return frame + 9 * kLeftOut * (frame / kPerTenMinutes) + kLeftOut * short_minutes;
}

}  // namespace

TimeCode TimeCodeOf(std::int64_t frame, Counting counting) {
  const std::int64_t day = FramesPerDay(counting);
  const std::int64_t of_day = (frame % day + day) % day;
  const bool drop = counting == Counting::k30Drop;
  const std::int64_t number = drop ? DropFrameNumber(of_day) : of_day;
  const std::int64_t rate = Rate(counting);
  const std::uint8_t mark = drop ? kDropFrame : 0;
  return {PackedBcd(number / rate / 3600), PackedBcd(number / rate / 60 % 60),
          PackedBcd(number / rate % 60),
          static_cast<std::uint8_t>(mark | PackedBcd(number % rate))};
}

std::int64_t FrameOf(const TimeCode& time_code, Counting counting) {
  const std::int64_t minutes = FromBcd(time_code[0]) * 60 + FromBcd(time_code[1]);
  const std::int64_t frames = FromBcd(time_code[3] & kFrameNumber);
  const std::int64_t number = (minutes * 60 + FromBcd(time_code[2])) * Rate(counting) + frames;
  if (counting != Counting::k30Drop) {
    return number;
  }
  const bool is_left_out = minutes % 10 != 0 && time_code[2] == 0 && frames < kLeftOut;
  const std::int64_t next = is_left_out ? kLeftOut - frames : 0;
  return number + next - kLeftOut * (minutes - minutes / 10);
}

std::int64_t FramesIn(std::int64_t milliseconds, Counting counting) {
  return counting == Counting::k25 ? milliseconds * 25 / 1000 : milliseconds * 30 / 1001;
}

std::string TimeCodeText(const TimeCode& time_code) {
  char text[16];
  std::snprintf(text, sizeof text, "%02x:%02x:%02x%c%02x", time_code[0], time_code[1], time_code[2],
                (time_code[3] & kDropFrame) != 0 ? '.' : ':', time_code[3] & kFrameNumber);
  return text;
}

std::optional<TimeCode> ParseTimeCode(const std::string& text) {
  constexpr std::size_t kLength = 11;
  constexpr int kEnds[] = {24, 60, 60, 30};
  TimeCode time_code{};
  if (text.size() != kLength || text[2] != ':' || text[5] != ':' ||
      (text[8] != ':' && text[8] != '.')) {
    return std::nullopt;
  }
  for (std::size_t i = 0; i < time_code.size(); ++i) {
    const int tens = text[3 * i] - '0';
    const int ones = text[3 * i + 1] - '0';
    if (tens < 0 || tens > 9 || ones < 0 || ones > 9 || tens * 10 + ones >= kEnds[i]) {
      return std::nullopt;
    }
    time_code[i] = PackedBcd(tens * 10 + ones);
  }
  if (text[8] == '.') {
    time_code[3] |= kDropFrame;
  }
  return time_code;
}

}  // namespace simulator
