// What the simulated camera tells its user.
#pragma once

#include <string>

#include "simulator/message.h"

namespace simulator {

/// Lines on standard output, each flushed at once. Quiet: none.
class Console {
 public:
  explicit Console(bool quiet) : quiet_(quiet) {}

  void Line(const std::string& line) const;

 private:
  bool quiet_;
};

/// Bytes as two hexadecimal digits each with blanks between, for example "0f 01"; the first 32 of
/// them, then how many more there are.
std::string HexText(const Bytes& bytes);

}  // namespace simulator
