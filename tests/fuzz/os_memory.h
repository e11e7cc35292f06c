// The operating system of the fuzzers: core/os.h in memory, driven by one fuzzer input. Linked in
// place of core/os.cpp, so the product's code is the one that ships.
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

/// Everything a request can see and everything it leaves behind.
struct World {
  std::map<std::string, std::string> environment;
  std::string input;
  std::map<std::string, std::string> files;
  bool files_are_readable = true;  ///< what is there can be opened, and then be read
  bool files_are_writable = true;
  std::deque<Conversation> conversations;  ///< one each connection; none left: nobody listens
  std::string memory;                      ///< the camera status block
  std::int64_t now = 0;

  std::string output;
  std::string errors;
  std::vector<std::string> messages;  ///< what the daemons were sent, one entry a connection
  std::string last_log_line;
};

/// The world of the request that is running.
World& TheWorld();

/// Thrown where a process would end.
struct Exited {
  int status;
};

}  // namespace fuzz
