// Waiting for many file descriptors at once.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <mutex>

namespace simulator {

/// Calls back when a descriptor can be read, at a given time, and at regular intervals, all in one
/// thread. Callbacks may add and remove descriptors, including their own. The loop holds a lock
/// except while it waits, so that other threads that take the lock see no intermediate state.
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

  /// Runs until a callback calls `Stop`. `lock` is held except while the loop waits.
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
