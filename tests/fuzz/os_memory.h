// The operating system of the fuzzers: core/os.h in memory, driven by one fuzzer input. It replaces
// core/os.cpp and core/system_log.cpp; all other code is that of the product.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <vector>

namespace fuzz {

/// What a daemon does with one connection.
struct Conversation {
  bool accepts = true;
  bool takes_message = true;
  std::string reply;  ///< every byte it sends, header included, before it closes
};

/// Everything that a request reads and everything that it leaves.
struct World {
  std::map<std::string, std::string> environment;
  std::string input;
  std::map<std::string, std::string> files;
  bool files_are_readable = true;  ///< if false, files can be opened but not read
  bool files_are_writable = true;
  std::deque<Conversation> conversations;  ///< one per connection; with none left, connecting fails
  std::string memory;                      ///< the camera status block
  std::int64_t now = 0;

  std::string output;
  std::string errors;
  std::vector<std::string>
      messages;  ///< the bytes that the daemons received, one entry per connection
  std::string last_log_line;
};

/// The world of the request that is running.
World& TheWorld();

/// Thrown where a process would end.
struct Exited {
  int status;
};

}  // namespace fuzz
