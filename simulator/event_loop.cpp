#include "simulator/event_loop.h"

#include <poll.h>

#include <cerrno>
#include <chrono>
#include <system_error>
#include <utility>
#include <vector>

namespace simulator {

void EventLoop::Add(int fd, Callback on_readable) { readers_[fd] = std::move(on_readable); }

void EventLoop::Remove(int fd) { readers_.erase(fd); }

void EventLoop::OnTick(Callback tick) { tick_ = std::move(tick); }

void EventLoop::Run() {
  using std::chrono::milliseconds;
  constexpr milliseconds kTickInterval{100};
  auto next_tick = std::chrono::steady_clock::now();
  running_ = true;
  while (running_) {
    const auto now = std::chrono::steady_clock::now();
    if (now >= next_tick) {
      tick_();
      next_tick = now + kTickInterval;
    }
    const auto wait = std::chrono::ceil<milliseconds>(next_tick - now);
    WaitOnce(static_cast<int>(wait.count()));
  }
}

void EventLoop::WaitOnce(int timeout_ms) {
  std::vector<pollfd> waiting;
  for (const auto& [fd, callback] : readers_) {
    waiting.push_back({fd, POLLIN, 0});
  }
  if (poll(waiting.data(), waiting.size(), timeout_ms) < 0 && errno != EINTR) {
    throw std::system_error(errno, std::generic_category(), "poll");
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
