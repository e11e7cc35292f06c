// What the simulated camera tells its user.
#pragma once

#include <string>

#include "simulator/journal.h"

namespace simulator {

/// Lines on standard output, each flushed at once. Quiet: none.
class Console {
 public:
  explicit Console(bool quiet) : quiet_(quiet) {}

  void Line(const std::string& line) const;

  /// A request that has ended: one line, and one for each change.
  void Request(const Entry& entry) const;

 private:
  bool quiet_;
};

}  // namespace simulator
