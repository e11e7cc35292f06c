#include "simulator/models.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace simulator {
namespace {

constexpr int kRv110 = 1;
constexpr int kRv120 = 2;
constexpr int kRv130 = 3;
constexpr int kRv140 = 4;

/// Destinations with 60 Hz: JP, US, KR, TW, UC, UA, UB.
constexpr std::array kDestinationsWith60Hz = {0, 1, 2, 8, 10, 11, 12};
/// Recording formats with 50 Hz.
constexpr std::array kFormatsWith50Hz = {3, 4, 5, 7, 9, 11};

template <typename List>
bool Contains(const List& list, int value) {
  return std::find(list.begin(), list.end(), value) != list.end();
}

/// Versions are two whole numbers: "1.10" is newer than "1.9".
bool IsAtLeast(const std::string& firmware, int major, int minor) {
  char* end = nullptr;
  const long found_major = std::strtol(firmware.c_str(), &end, 10);
  const long found_minor = *end == '.' ? std::strtol(end + 1, nullptr, 10) : 0;
  return found_major > major || (found_major == major && found_minor >= minor);
}

}  // namespace

bool HasStreaming(const State& state) { return state.model == kRv130 || state.model == kRv140; }

bool HasCloud(const State& state) { return HasStreaming(state) && IsAtLeast(state.firmware, 1, 5); }

bool HasIfb(const State& state) { return HasStreaming(state) && IsAtLeast(state.firmware, 1, 3); }

bool HasGps(const State& state) { return state.model != kRv110 && state.model != kRv120; }

bool HasUpload(const State& state) { return state.model != kRv110; }

bool Is50Hz(const State& state) {
  return state.recording.format == Recording::kNoFormat
             ? !Contains(kDestinationsWith60Hz, state.destination)
             : Contains(kFormatsWith50Hz, state.recording.format);
}

Counting CountingOf(const State& state) {
  if (Is50Hz(state)) {
    return Counting::k25;
  }
  return state.time_code.drop_frame ? Counting::k30Drop : Counting::k30;
}

}  // namespace simulator
