#include "simulator/event_loop.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>
#include <vector>

namespace simulator {
namespace {

constexpr std::chrono::milliseconds kTickInterval{100};

}  // namespace

void EventLoop::Add(int fd, Callback on_readable) { readers_[fd] = std::move(on_readable); }

void EventLoop::Remove(int fd) { readers_.erase(fd); }

void EventLoop::After(std::chrono::milliseconds delay, Callback callback) {
  timers_.emplace(Clock::now() + delay, std::move(callback));
}

void EventLoop::OnTick(Callback tick) { tick_ = std::move(tick); }

void EventLoop::Run(std::mutex& lock) {
  const std::lock_guard<std::mutex> held(lock);
  auto next_tick = Clock::now();
  running_ = true;
  while (running_) {
    HandleTimers();
    if (Clock::now() >= next_tick) {
      tick_();
      next_tick = Clock::now() + kTickInterval;
    }
    HandleReadable(TimeToWait(next_tick), lock);
  }
}

void EventLoop::HandleTimers() {
  while (!timers_.empty() && timers_.begin()->first <= Clock::now()) {
    const Callback callback = std::move(timers_.begin()->second);
    timers_.erase(timers_.begin());
    callback();
  }
}

int EventLoop::TimeToWait(Clock::time_point next_tick) const {
  const auto next = timers_.empty() ? next_tick : std::min(next_tick, timers_.begin()->first);
  const auto wait = std::chrono::ceil<std::chrono::milliseconds>(next - Clock::now());
  return static_cast<int>(std::max<std::int64_t>(0, wait.count()));
}

void EventLoop::HandleReadable(int timeout_ms, std::mutex& lock) {
  std::vector<pollfd> waiting;
  for (const auto& [fd, callback] : readers_) {
    waiting.push_back({fd, POLLIN, 0});
  }
  lock.unlock();
  const int count = poll(waiting.data(), waiting.size(), timeout_ms);
  const int error = errno;
  lock.lock();
  if (count < 0 && error != EINTR) {
    throw std::system_error(error, std::generic_category(), "poll");
  }
  for (const pollfd& entry : waiting) {
    const auto reader = entry.revents != 0 ? readers_.find(entry.fd) : readers_.end();
    if (reader != readers_.end()) {
      const Callback callback = reader->second;  // It may remove itself while it runs.
      callback();
    }
  }
}

}  // namespace simulator
