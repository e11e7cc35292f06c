// Waiting for many file descriptors at once.
#pragma once

#include <functional>
#include <map>

namespace simulator {

/// Calls back when a descriptor can be read, and at regular intervals. One thread; callbacks may
/// add and remove descriptors, their own included.
class EventLoop {
 public:
  using Callback = std::function<void()>;

  /// Calls `on_readable` whenever `fd` has something to read or has ended. The loop does not own
  /// `fd`: remove it before closing it.
  void Add(int fd, Callback on_readable);
  void Remove(int fd);

  /// Calls `tick` about ten times a second.
  void OnTick(Callback tick);

  /// Runs until `Stop` is called from a callback.
  void Run();
  void Stop() { running_ = false; }

 private:
  void WaitOnce(int timeout_ms);

  std::map<int, Callback> readers_;
  Callback tick_;
  bool running_ = false;
};

}  // namespace simulator
