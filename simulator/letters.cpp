#include "simulator/letters.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "simulator/exposure.h"
#include "simulator/values.h"

namespace simulator {

std::string IrisLetter(const State& state) {
  return std::string(kIrisStops[static_cast<std::size_t>(CurrentIrisStop(state))]);
}

std::string DecibelText(int db) { return std::to_string(db) + "dB"; }

std::string GainLetter(const State& state) {
  if (!state.full_auto && state.gain.mode == GainMode::kLolux) {
    return "LOLUX";
  }
  return DecibelText(CurrentGain(state));
}

std::string AeLetter(const State& state) {
  constexpr std::array kThirds = {".0", ".3", ".7"};
  const int level = state.ae.level;
  if (level == 0) {
    return "0";
  }
  const int size = std::abs(level);
  return (level < 0 ? "-" : "+") + std::to_string(size / 3) +
         kThirds[static_cast<std::size_t>(size % 3)];
}

std::string ShutterLetter(const State& state) {
  const Shutter& shutter = state.shutter;
  if (!ShutterIsAutomatic(state)) {
    if (shutter.mode == ShutterMode::kOff) {
      return "OFF";
    }
    if (shutter.mode == ShutterMode::kVariable) {
      const std::string hertz = "1/" + std::to_string(shutter.variable_tenth_hz / 10);
      const int tenths = shutter.variable_tenth_hz % 10;
      return tenths == 0 ? hertz : hertz + "." + std::to_string(tenths);
    }
  }
  return std::string(kShutterSpeeds[static_cast<std::size_t>(CurrentShutterStep(state))]);
}

std::string KelvinText(int kelvin) { return std::to_string(kelvin) + "K"; }

std::string WhiteLetter(const State& state) { return KelvinText(CurrentKelvin(state)); }

std::string FocusLetter(const State& state) {
  if (state.focus.position == kFocusInfinity) {
    return "INF";
  }
  // Half a meter at the near end, twice as far halfway.
  constexpr double kNearest = 0.5;
  constexpr double kFeetPerMeter = 3.28084;
  const bool feet = state.focus.unit == FocusUnit::kFeet;
  const double meters = kNearest * 1000 / (1000 - state.focus.position);
  const double distance = feet ? meters * kFeetPerMeter : meters;
  char text[16];
  std::snprintf(text, sizeof text, distance < 10 ? "%.1f" : "%.0f", distance);
  return std::string(text) + (feet ? "ft" : "m");
}

std::string SignedText(int value) { return (value > 0 ? "+" : "") + std::to_string(value); }

}  // namespace simulator
