#include "simulator/console.h"

#include <algorithm>
#include <iostream>

namespace simulator {

void Console::Line(const std::string& line) const {
  if (!quiet_) {
    std::cout << line << std::endl;
  }
}

std::string HexText(const Bytes& bytes) {
  constexpr std::size_t kShown = 32;
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (std::size_t i = 0; i < std::min(bytes.size(), kShown); ++i) {
    text += i == 0 ? "" : " ";
    text += kDigits[bytes[i] >> 4];
    text += kDigits[bytes[i] & 0xf];
  }
  if (bytes.size() > kShown) {
    text += " and " + std::to_string(bytes.size() - kShown) + " more";
  }
  return text;
}

}  // namespace simulator
