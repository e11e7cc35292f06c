// The system log's socket, where the handler's log lines arrive.
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>

#include "simulator/event_loop.h"
#include "simulator/unique_fd.h"

namespace simulator {

/// Takes the place of the system log at /dev/log.
class SystemLog {
 public:
  /// Is called for every line, with the process that logs it.
  using OnLine = std::function<void(pid_t sender, const std::string& line)>;

  /// @throws std::system_error when the socket cannot be made, also when a system log is there
  SystemLog(EventLoop& loop, OnLine on_line);
  SystemLog(const SystemLog&) = delete;
  SystemLog& operator=(const SystemLog&) = delete;
  /// Removes the socket file.
  ~SystemLog();

  /// Deals with everything that has been logged before this call.
  void ReceiveAll() const;

 private:
  /// @return whether there was a line
  bool Receive() const;

  OnLine on_line_;
  UniqueFd fd_;
};

}  // namespace simulator
