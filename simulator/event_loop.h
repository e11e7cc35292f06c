// Waiting for many file descriptors at once.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <mutex>

namespace simulator {

/// Calls back when a descriptor can be read, when a time has come, and at regular intervals. One
/// thread; callbacks may add and remove descriptors, their own included. While it does not wait it
/// holds a lock, so that other threads that take it find nothing half done.
class EventLoop {
 public:
  using Callback = std::function<void()>;
  using Clock = std::chrono::steady_clock;

  /// Calls `on_readable` whenever `fd` has something to read or has ended. The loop does not own
  /// `fd`: remove it before closing it.
  void Add(int fd, Callback on_readable);
  void Remove(int fd);

  /// Calls `callback` once, after `delay`.
  void After(std::chrono::milliseconds delay, Callback callback);

  /// Calls `tick` about ten times a second.
  void OnTick(Callback tick);

  /// Runs until `Stop` is called from a callback. `lock` is held but while the loop waits.
  void Run(std::mutex& lock);
  void Stop() { running_ = false; }

 private:
  /// Waits for descriptors without holding the lock, and calls their callbacks with it.
  void HandleReadable(int timeout_ms, std::mutex& lock);
  void HandleTimers();
  [[nodiscard]] int TimeToWait(Clock::time_point next_tick) const;

  std::map<int, Callback> readers_;
  std::multimap<Clock::time_point, Callback> timers_;
  Callback tick_;
  bool running_ = false;
};

}  // namespace simulator
