// A whole request: body, files, camera status block and daemons come from one fuzzer input.
#include <string>
#include <vector>

#include "core/cgi.h"
#include "core/dlog.h"
#include "core/session.h"
#include "fuzz/fuzzing.h"

namespace {

using fuzz::Require;

/// A process that ends normally has printed one complete reply with the correct length.
void CheckReply(const std::string& output) {
  const std::size_t blank = output.find("\n\n");
  const std::size_t length = output.find("Content-Length:");
  Require(blank != std::string::npos && length < blank);
  Require(std::stoul(output.substr(length + 15)) == output.size() - blank - 2);
  Require(output.compare(blank + 2, 13, "{\"Response\":{") == 0);
  Require(output.compare(output.size() - 2, 2, "}}") == 0);
}

/// Every message begins with a header; only a bare header may announce more bytes than follow.
void CheckMessages(const std::vector<std::string>& messages) {
  for (const std::string& message : messages) {
    const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(message[i]); };
    Require(message.empty() || message.size() >= 12);
    Require(message.size() <= 12 || message.size() == 12U + byte(2) + 256U * byte(3));
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::World& world = fuzz::TheWorld();
  world = fuzz::WorldOf(scenario::Parse(fuzz::Text(data, size)));
  g_log_level_limit = 3;
  web_id[0] = '\0';

  bool ended_early = false;
  try {
    INIT_DLOG();
    ServeRequest();
  } catch (const fuzz::Exited& exited) {
    Require(exited.status == 1);
    ended_early = true;
  }
  if (ended_early) {
    Require(world.output.empty());
  } else {
    CheckReply(world.output);
  }
  CheckMessages(world.messages);
  return 0;
}
