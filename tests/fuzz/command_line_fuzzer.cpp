// Requests from the command line: the arguments are the fuzzer's.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "core/dlog.h"
#include "core/test_mode.h"
#include "os_memory.h"

namespace {

void Require(bool condition) {
  if (!condition) {
    std::abort();
  }
}

std::vector<std::string> Arguments(FuzzedDataProvider& data) {
  std::vector<std::string> arguments = {"camera_remote.cgi"};
  arguments.push_back(data.ConsumeBool() ? std::to_string(data.ConsumeIntegralInRange(-2, 120))
                                         : data.ConsumeRandomLengthString(16));
  for (int more = data.ConsumeIntegralInRange(0, 4); more > 0; --more) {
    arguments.push_back(data.ConsumeRandomLengthString());
  }
  return arguments;
}

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

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FuzzedDataProvider data(bytes, size);
  fuzz::TheWorld() = fuzz::World();
  const std::vector<std::string> arguments = Arguments(data);
  while (data.remaining_bytes() > 0) {
    fuzz::Conversation conversation;
    conversation.reply = data.ConsumeRandomLengthString();
    fuzz::TheWorld().conversations.push_back(std::move(conversation));
  }
  std::vector<const char*> texts;
  for (const std::string& argument : arguments) {
    texts.push_back(argument.c_str());
  }
  texts.push_back(nullptr);
  g_log_level_limit = 7;

  int status = 0;
  bool ended_early = false;
  try {
    status = RunTestMode(static_cast<int>(arguments.size()), texts.data());
  } catch (const fuzz::Exited& exited) {
    status = exited.status;
    ended_early = true;
  }
  CheckOutcome(fuzz::TheWorld(), status, ended_early);
  return 0;
}
