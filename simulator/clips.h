// The clips on the simulated camera's cards.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "simulator/time_code.h"

namespace simulator {

/// The camera's local time.
struct DateTime {
  std::uint16_t year = 1970;
  std::uint8_t month = 1;  ///< from 1
  std::uint8_t day = 1;
  std::uint8_t hour = 0;
  std::uint8_t minute = 0;
  std::uint8_t second = 0;
};

DateTime CurrentDateTime();

/// A recording on a card. Its index number is its place on the card, from 1.
struct Clip {
  std::string name;  ///< at most 9 characters
  TimeCode first_frame{};
  TimeCode last_frame{};
  DateTime recorded_at;
  bool ok_mark = false;
  bool four_to_three = false;
  bool edit_lock = false;
};

/// The clips of one card, in the order in which they were recorded.
using Clips = std::vector<Clip>;

/// A morning's work, with the names that the camera gives: "A001C001" and so on.
Clips RecordedClips(char card, std::size_t count);

/// The name of the clip that is recorded next on a card.
std::string NextClipName(char card, const Clips& clips);

}  // namespace simulator
