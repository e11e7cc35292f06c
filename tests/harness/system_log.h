#pragma once

#include <gmock/gmock.h>

#include <cstddef>
#include <iosfwd>
#include <mutex>
#include <string>
#include <vector>

#include "harness/socket_thread.h"

namespace harness {

/// A message in the system log. Two lines are equal when priority and text are, to the byte.
struct LogLine {
  int priority = 0;  // 3 error, 6 informational, 7 debug
  std::string text;

  bool operator==(const LogLine& other) const {
    return priority == other.priority && text == other.text;
  }
};

std::ostream& operator<<(std::ostream& stream, const LogLine& line);

using LogLines = std::vector<LogLine>;

LogLine Error(std::string text);  // priority 3: diagnostics of level 1
LogLine Info(std::string text);   // priority 6: levels 2 to 4
LogLine Debug(std::string text);  // priority 7: level 5 and above

/// Takes "<PRI>Mon dd hh:mm:ss ident: text" apart. Any other form has priority -1 and is whole.
LogLine ParseLogLine(const std::string& datagram);

/// The system log daemon of the private world: bound to /dev/log, it keeps what arrives.
class SystemLog {
 public:
  SystemLog();

  /// Everything sent so far. What a process that has ended has sent is complete in it.
  LogLines Lines();

  /// The same, and forgets it: the next call returns what came after this one.
  LogLines TakeLines();

 private:
  void ReceiveAll();  // with `mutex_` held

  std::mutex mutex_;
  LogLines lines_;
  SocketThread collector_;
};

/// A system log daemon that has stopped reading: its queue is full.
class StalledLog {
 public:
  StalledLog();
  ~StalledLog();
  StalledLog(const StalledLog&) = delete;
  StalledLog& operator=(const StalledLog&) = delete;

  /// Reads again, until `count` lines have come that were not in the queue at first. Throws
  /// std::runtime_error when they do not come.
  LogLines Read(std::size_t count);

 private:
  int socket_;
  std::size_t stale_ = 0;  // messages that filled the queue
};

/// Exactly these lines, in this order:
///   EXPECT_THAT(log_.Lines(), Logged(Error("rcv post_data = ..."), Info("...")));
template <typename... Lines>
auto Logged(Lines... lines) {
  return testing::ElementsAreArray(LogLines{lines...});
}

}  // namespace harness
