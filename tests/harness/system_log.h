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

/// Splits "<number>name: text", where number is 8, for the facility "user", plus the priority. A
/// message of any other form is returned whole, with priority -1.
LogLine ParseLogLine(const std::string& message);

/// The system log daemon of the private world: listens on /dev/log and keeps what arrives.
class SystemLog {
 public:
  SystemLog();

  /// All lines so far. Those of a process that has ended are complete.
  LogLines Lines();

  /// The same, and forgets them: the next call returns only later lines.
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

  /// Reads again until `count` lines have arrived in addition to those that filled the queue.
  /// Throws std::runtime_error if they do not arrive.
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
