#include "simulator/clips.h"

#include <ctime>

namespace simulator {

DateTime CurrentDateTime() {
  const std::time_t now = std::time(nullptr);
  std::tm local = {};
  localtime_r(&now, &local);
  return {
      static_cast<std::uint16_t>(local.tm_year + 1900), static_cast<std::uint8_t>(local.tm_mon + 1),
      static_cast<std::uint8_t>(local.tm_mday),         static_cast<std::uint8_t>(local.tm_hour),
      static_cast<std::uint8_t>(local.tm_min),          static_cast<std::uint8_t>(local.tm_sec)};
}

Clips RecordedClips(char card, std::size_t count) {
  // One clip every five minutes from 08:00 on, a little longer each time.
  constexpr std::int64_t kFramesBetween = 9000;
  constexpr std::int64_t kShortestClip = 450;
  Clips clips;
  for (std::size_t i = 0; i < count; ++i) {
    const auto number = static_cast<std::int64_t>(i);
    const std::int64_t first = kFramesBetween * number;
    Clip clip;
    clip.name = NextClipName(card, clips);
    clip.first_frame = DropFrameTimeCode(first);
    clip.last_frame = DropFrameTimeCode(first + kShortestClip * (number % 7 + 1) - 1);
    const int minutes = static_cast<int>(i) * 5;
    clip.recorded_at = {2023,
                        11,
                        23,
                        static_cast<std::uint8_t>(8 + minutes / 60),
                        static_cast<std::uint8_t>(minutes % 60),
                        static_cast<std::uint8_t>(i * 7 % 60)};
    clip.ok_mark = i % 4 == 1;
    clip.edit_lock = i % 5 == 4;
    clips.push_back(clip);
  }
  return clips;
}

std::string NextClipName(char card, const Clips& clips) {
  constexpr std::size_t kDigits = 3;
  const std::string number = std::to_string(clips.size() + 1);
  const std::size_t zeros = number.size() < kDigits ? kDigits - number.size() : 0;
  return card + std::string("001C") + std::string(zeros, '0') + number;
}

}  // namespace simulator
