// The texts that the camera shows for its values.
#pragma once

#include <string>

#include "simulator/state.h"

namespace simulator {

std::string IrisLetter(const State& state);  ///< "F2.8", "OPEN", "CLOSE"
std::string GainLetter(const State& state);  ///< "9dB", "-6dB", "LOLUX"
std::string DecibelText(int db);
std::string AeLetter(const State& state);       ///< "0", "+0.3", "-2.0"
std::string ShutterLetter(const State& state);  ///< "1/100", "1/60.2", "OFF"
std::string WhiteLetter(const State& state);    ///< "5600K"
std::string KelvinText(int kelvin);
std::string FocusLetter(const State& state);  ///< "2.5m", "8.2ft", "INF"
std::string SignedText(int value);            ///< "0", "+3", "-3"

}  // namespace simulator
