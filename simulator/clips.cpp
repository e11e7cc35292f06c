#include "simulator/clips.h"

#include <tuple>

namespace simulator {

bool operator==(const Clip& a, const Clip& b) {
  const auto members = [](const Clip& clip) {
    return std::tie(clip.name, clip.first_frame, clip.last_frame, clip.recorded_at, clip.ok_mark,
                    clip.four_to_three, clip.edit_lock);
  };
  return members(a) == members(b);
}

Clips RecordedClips(char card, std::size_t count) {
  // One clip every five minutes from 08:00 on, a little longer each time.
  constexpr std::int64_t kFirst = 1700726400;  // 2023-11-23T08:00:00
  constexpr std::int64_t kSecondsBetween = 300;
  constexpr std::int64_t kFramesBetween = 9000;
  constexpr std::int64_t kShortestClip = 450;
  Clips clips;
  for (std::size_t i = 0; i < count; ++i) {
    const auto number = static_cast<std::int64_t>(i);
    const std::int64_t first = kFramesBetween * number;
    Clip clip;
    clip.name = NextClipName(card, clips);
    clip.first_frame = TimeCodeOf(first, Counting::k30Drop);
    clip.last_frame = TimeCodeOf(first + kShortestClip * (number % 7 + 1) - 1, Counting::k30Drop);
    clip.recorded_at = kFirst + kSecondsBetween * number + number * 7 % 60;
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
