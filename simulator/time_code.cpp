#include "simulator/time_code.h"

namespace simulator {
namespace {

constexpr std::uint8_t kDropFrame = 0x80;

std::uint8_t PackedBcd(std::int64_t value) {
  return static_cast<std::uint8_t>((value / 10) << 4 | value % 10);
}

/// The number that drop-frame counting gives to the frame `frames` after 00:00:00.00: it skips the
/// numbers 00 and 01 of each minute that is not a multiple of ten.
std::int64_t DropFrameNumber(std::int64_t frames) {
  constexpr std::int64_t kPerTenMinutes = 17982;
  constexpr std::int64_t kPerMinute = 1798;
  const std::int64_t in_ten_minutes = frames % kPerTenMinutes;
  const std::int64_t short_minutes = in_ten_minutes < 2 ? 0 : (in_ten_minutes - 2) / kPerMinute;
  return frames + 18 * (frames / kPerTenMinutes) + 2 * short_minutes;
}

}  // namespace

TimeCode DropFrameTimeCode(std::int64_t frames) {
  constexpr std::int64_t kFramesPerDay = 2589408;
  constexpr std::int64_t kFrameRate = 30;
  const std::int64_t number = DropFrameNumber(frames % kFramesPerDay);
  return {PackedBcd(number / kFrameRate / 60 / 60), PackedBcd(number / kFrameRate / 60 % 60),
          PackedBcd(number / kFrameRate % 60),
          static_cast<std::uint8_t>(kDropFrame | PackedBcd(number % kFrameRate))};
}

}  // namespace simulator
