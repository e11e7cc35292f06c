#include "simulator/battery.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace simulator {
namespace {

/// The unit in which a kind of battery reports what is left in it.
struct Scale {
  int empty;
  int full;
  Milliseconds per_unit;  ///< how long one unit of the value lasts
};

/// In the order of `BatteryInfo`: minutes, percent, tenths of a volt. A full one lasts for 140
/// minutes.
constexpr std::array<Scale, 3> kScales = {Scale{0, 140, 60000}, Scale{0, 100, 84000},
                                          Scale{110, 166, 150000}};
constexpr int kHighestLevel = 5;

const Scale& ScaleOf(const Battery& battery) {
  return kScales[static_cast<std::size_t>(battery.info)];
}

int LevelOf(const Battery& battery) {
  const Scale& scale = ScaleOf(battery);
  const int range = scale.full - scale.empty;
  const int left = std::clamp(battery.value - scale.empty, 0, range);
  return (left * kHighestLevel + range - 1) / range;
}

}  // namespace

bool IsEmpty(const Battery& battery) { return battery.value <= ScaleOf(battery).empty; }

void AdvanceBattery(Battery& battery, Milliseconds elapsed) {
  battery.since_drain += elapsed;
  const Milliseconds per_unit = ScaleOf(battery).per_unit;
  while (battery.since_drain >= per_unit) {
    battery.since_drain -= per_unit;
    if (!IsEmpty(battery)) {
      --battery.value;
      battery.level = std::min(battery.level, LevelOf(battery));
    }
  }
}

}  // namespace simulator
