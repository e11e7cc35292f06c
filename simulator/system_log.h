// The system log's socket, where the handler's log lines arrive.
#pragma once

#include "simulator/console.h"
#include "simulator/event_loop.h"
#include "simulator/unique_fd.h"

namespace simulator {

/// Takes the place of the system log at /dev/log and shows what is logged, one line each.
class SystemLog {
 public:
  /// @throws std::system_error when the socket cannot be made, also when a system log is there
  SystemLog(EventLoop& loop, const Console& console);
  SystemLog(const SystemLog&) = delete;
  SystemLog& operator=(const SystemLog&) = delete;
  /// Removes the socket file.
  ~SystemLog();

 private:
  void Receive() const;

  const Console& console_;
  UniqueFd fd_;
};

}  // namespace simulator
