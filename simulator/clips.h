// The clips on the simulated camera's cards.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "simulator/time_code.h"

namespace simulator {

/// A recording on a card. Its index number is its place on the card, from 1.
struct Clip {
  std::string name;  ///< at most 9 characters
  TimeCode first_frame{};
  TimeCode last_frame{};
  std::int64_t recorded_at = 0;  ///< seconds since 1970 in the camera's time zone
  bool ok_mark = false;
  bool four_to_three = false;
  bool edit_lock = false;
};

bool operator==(const Clip& a, const Clip& b);

/// The clips of one card, in the order in which they were recorded.
using Clips = std::vector<Clip>;

/// A day's work, with the names that the camera gives: "A001C001" and so on.
Clips RecordedClips(char card, std::size_t count);

/// The name of the clip that is recorded next on a card.
std::string NextClipName(char card, const Clips& clips);

}  // namespace simulator
