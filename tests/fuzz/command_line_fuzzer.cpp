// Requests from the command line, with arguments from the fuzzer.
#include <string>
#include <vector>

#include "core/command_line.h"
#include "core/dlog.h"
#include "fuzz/fuzzing.h"

namespace {

using fuzz::Require;

/// One whole reply, or one line on standard error, or neither where a daemon is missing.
void CheckOutcome(const fuzz::World& world, int status, bool ended_early) {
  if (!world.errors.empty()) {
    Require(world.errors.find('\n') == world.errors.size() - 1);
    Require(status == 1 && world.output.empty() && world.last_log_line.empty());
  } else if (ended_early) {
    Require(status == 1 && world.output.empty());
  } else {
    Require(world.output.find("\n\n{\"Response\":{") != std::string::npos);
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<scenario::Line> lines = scenario::Parse(fuzz::Text(data, size));
  fuzz::TheWorld() = fuzz::WorldOf(lines);
  const std::vector<std::string> arguments = fuzz::Values(lines, scenario::kArgument);
  std::vector<const char*> texts = {"camera_remote.cgi"};
  for (const std::string& argument : arguments) {
    texts.push_back(argument.c_str());
  }
  texts.push_back(nullptr);
  if (arguments.empty()) {
    return 0;  // not from a command line
  }
  g_log_level_limit = 7;

  int status = 0;
  bool ended_early = false;
  try {
    status = RunCommandLine(static_cast<int>(arguments.size() + 1), texts.data());
  } catch (const fuzz::Exited& exited) {
    status = exited.status;
    ended_early = true;
  }
  CheckOutcome(fuzz::TheWorld(), status, ended_early);
  return 0;
}
