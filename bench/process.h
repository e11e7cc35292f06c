// Starts a program as a web server does and measures it.
#pragma once

#include <string>
#include <vector>

namespace bench {

/// A program and the request that it reads from its standard input.
struct Program {
  std::vector<std::string> command;  // path first
  std::string body;
};

/// Wall-clock time from the start of the program to its end. Throws if its output does not contain
/// `expected`, because the time of a failed request means nothing.
double Microseconds(const Program& program, const std::string& expected);

/// Counts of one run.
struct Counts {
  int system_calls = 0;  // from execve to exit_group
  long peak_kib = 0;     // peak of resident memory
};
Counts CountCalls(const Program& program);

/// User-space instructions of one run.
long Instructions(const Program& program);

}  // namespace bench
