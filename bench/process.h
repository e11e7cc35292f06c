// Starts a program as a web server does and measures it.
#pragma once

#include <string>
#include <vector>

namespace bench {

/// A program to be started, and the request that it gets on its standard input.
struct Program {
  std::vector<std::string> command;  // path first
  std::string body;
};

/// Wall-clock time from the start of the program to its end. Throws when its output does not hold
/// `expected`: a figure about a failed request is worth nothing.
double Microseconds(const Program& program, const std::string& expected);

/// What the kernel counts of one run.
struct Counts {
  int system_calls = 0;  // from execve to exit_group
  long peak_kib = 0;     // resident memory at the exit
};
Counts CountCalls(const Program& program);

/// User-space instructions of one run.
long Instructions(const Program& program);

}  // namespace bench
