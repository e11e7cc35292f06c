// The values that the simulated camera's controls can take.
#pragma once

#include <array>
#include <string_view>

namespace simulator {

/// From wide open to closed; the F-numbers are a third of a stop apart.
inline constexpr std::array<std::string_view, 25> kIrisStops = {
    "OPEN", "F1.6", "F1.8", "F2.0", "F2.2", "F2.5", "F2.8", "F3.2", "F3.5",
    "F4.0", "F4.5", "F5.0", "F5.6", "F6.3", "F7.1", "F8.0", "F9.0", "F10",
    "F11",  "F13",  "F14",  "F16",  "F18",  "F22",  "CLOSE"};

/// Shutter speeds, the slowest first.
inline constexpr std::array<std::string_view, 11> kShutterSpeeds = {
    "1/50",   "1/60",   "1/100",  "1/120",  "1/250",  "1/500",
    "1/1000", "1/2000", "1/4000", "1/8000", "1/10000"};

inline constexpr int kGainLowest = -6;
inline constexpr int kGainHighest = 30;
inline constexpr int kGainStep = 3;

/// In thirds of a stop.
inline constexpr int kAeLevelEnd = 6;

inline constexpr int kKelvinLowest = 2300;
inline constexpr int kKelvinHighest = 15000;

/// White paint runs from minus this to plus this.
inline constexpr int kPaintScale = 32;

/// Zoom positions run from 0, the wide end, to this one, the tele end.
inline constexpr int kZoomTele = 999;

/// Focus positions run from 0, the nearest, to this one, infinity.
inline constexpr int kFocusInfinity = 999;

inline constexpr int kMasterBlackEnd = 50;
inline constexpr int kDetailEnd = 10;

/// Of the variable shutter, in tenths of a hertz.
inline constexpr int kVariableLowest = 500;
inline constexpr int kVariableHighest = 100000;

}  // namespace simulator
