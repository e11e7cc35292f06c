#include "harness/fake_daemon.h"

#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <utility>

#include "harness/recording.h"
#include "harness/system_call.h"
#include "harness/unix_socket.h"

namespace harness {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::size_t kHeaderSize = 12;
constexpr int kNoTimeout = -1;
constexpr int kBacklog = 16;

int MillisecondsUntil(steady_clock::time_point end) {
  const auto left = std::chrono::ceil<milliseconds>(end - steady_clock::now());
  return left.count() > 0 ? static_cast<int>(left.count()) : 0;
}

}  // namespace

bool Conversation::ReceiveSome(int timeout_ms) {
  pollfd events[] = {{socket_, POLLIN, 0}, {stop_, POLLIN, 0}};
  if (poll(events, 2, timeout_ms) == 0) {
    return false;
  }
  char buffer[65536];
  const ssize_t length = recv(socket_, buffer, sizeof buffer, MSG_DONTWAIT);
  if (length > 0) {
    received_.append(buffer, static_cast<std::size_t>(length));
  }
  ended_ = length == 0 || (length < 0 && errno != EAGAIN) || events[1].revents != 0;
  return true;
}

void Conversation::AwaitBytes(std::size_t bytes) {
  while (!ended_ && received_.size() < bytes) {
    ReceiveSome(kNoTimeout);
  }
}

void Conversation::AwaitEnd() {
  while (!ended_) {
    ReceiveSome(kNoTimeout);
  }
}

void Conversation::Pause(milliseconds duration) {
  const steady_clock::time_point end = steady_clock::now() + duration;
  while (!ended_ && ReceiveSome(MillisecondsUntil(end))) {
  }
}

void Conversation::Send(const std::string& bytes) {
  sent_ += bytes;
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t length = send(socket_, bytes.data() + done, bytes.size() - done, MSG_NOSIGNAL);
    if (length < 0) {
      return;
    }
    done += static_cast<std::size_t>(length);
  }
}

void Conversation::Lock() { Check(flock(socket_, LOCK_EX | LOCK_NB) == 0, "lock on a connection"); }

void Conversation::Close() {
  if (socket_ >= 0) {
    close(socket_);
  }
  socket_ = -1;
  ended_ = true;
}

Script& Script::AwaitMessage() {
  steps_.emplace_back([](Conversation& conversation) { conversation.AwaitBytes(kHeaderSize); });
  return *this;
}

Script& Script::Send(std::string bytes) {
  steps_.emplace_back(
      [bytes = std::move(bytes)](Conversation& conversation) { conversation.Send(bytes); });
  return *this;
}

Script& Script::SendInPieces(std::string bytes, std::size_t size, milliseconds delay) {
  for (std::size_t start = 0; start < bytes.size(); start += size) {
    Pause(delay).Send(bytes.substr(start, size));
  }
  return *this;
}

Script& Script::Pause(milliseconds duration) {
  steps_.emplace_back([duration](Conversation& conversation) { conversation.Pause(duration); });
  return *this;
}

Script& Script::Lock() {
  steps_.emplace_back([](Conversation& conversation) { conversation.Lock(); });
  return *this;
}

Script& Script::Close() {
  steps_.emplace_back([](Conversation& conversation) { conversation.Close(); });
  return *this;
}

Script& Script::Then(const Script& script) {
  steps_.insert(steps_.end(), script.steps_.begin(), script.steps_.end());
  return *this;
}

void Script::Play(Conversation& conversation) const {
  for (const auto& step : steps_) {
    step(conversation);
  }
}

Script Silent() { return {}; }

Script Answer(std::string reply) { return Script().AwaitMessage().Send(std::move(reply)); }

Script AnswerInPieces(std::string reply, std::size_t size, milliseconds delay) {
  return Script().AwaitMessage().SendInPieces(std::move(reply), size, delay);
}

Script AnswerAndClose(std::string reply) { return Answer(std::move(reply)).Close(); }

Script CloseAfterReading() { return Script().AwaitMessage().Close(); }

Script CloseBeforeReading() { return Script().Close(); }

FakeDaemon::FakeDaemon(const std::string& path, Script by_default)
    : by_default_(std::move(by_default)), server_(path, SOCK_STREAM, kBacklog) {
  server_.StartForEach([this] { ServeOne(); });
}

FakeDaemon& FakeDaemon::Next(Script script) {
  const std::lock_guard<std::mutex> lock(mutex_);
  scripts_.push_back(std::move(script));
  return *this;
}

std::vector<std::string> FakeDaemon::Received() {
  std::unique_lock<std::mutex> lock(mutex_);
  while (!IsIdle()) {
    changed_.wait_for(lock, milliseconds(1));
  }
  return received_;
}

bool FakeDaemon::IsIdle() {
  pollfd waiting = {server_.Socket(), POLLIN, 0};
  return !busy_ && poll(&waiting, 1, 0) == 0;
}

void FakeDaemon::ServeOne() {
  std::unique_lock<std::mutex> lock(mutex_);
  Conversation conversation(accept4(server_.Socket(), nullptr, nullptr, SOCK_CLOEXEC),
                            server_.StopDescriptor());
  busy_ = true;
  Script script = by_default_;
  if (!scripts_.empty()) {
    script = std::move(scripts_.front());
    scripts_.pop_front();
  }
  lock.unlock();

  script.Play(conversation);
  conversation.AwaitEnd();
  conversation.Close();
  RecordConversation(conversation.sent());

  lock.lock();
  received_.push_back(conversation.received());
  busy_ = false;
  changed_.notify_all();
}

ConcurrentDaemon::ConcurrentDaemon(const std::string& path, std::string reply)
    : reply_(std::move(reply)), server_(path, SOCK_STREAM, SOMAXCONN) {
  server_.Start([this] { Serve(); });
}

void ConcurrentDaemon::Serve() {
  std::vector<pollfd> events = {{server_.StopDescriptor(), POLLIN, 0},
                                {server_.Socket(), POLLIN, 0}};
  const std::size_t first_client = events.size();
  while (poll(events.data(), events.size(), kNoTimeout) >= 0 && events[0].revents == 0) {
    for (std::size_t i = events.size(); i-- > first_client;) {
      if (events[i].revents != 0 && !ServeClient(events[i].fd)) {
        close(events[i].fd);
        events.erase(events.begin() + static_cast<std::ptrdiff_t>(i));
      }
    }
    if (events[1].revents != 0) {
      events.push_back({accept4(server_.Socket(), nullptr, nullptr, SOCK_CLOEXEC), POLLIN, 0});
    }
  }
  for (std::size_t i = first_client; i < events.size(); ++i) {
    close(events[i].fd);
  }
}

bool ConcurrentDaemon::ServeClient(int client) {
  char message[65536];
  if (recv(client, message, sizeof message, MSG_DONTWAIT) <= 0) {
    return false;
  }
  ++received_;
  send(client, reply_.data(), reply_.size(), MSG_NOSIGNAL);
  return true;
}

BusyDaemon::BusyDaemon(const std::string& path) : sockets_{BoundSocket(path, SOCK_STREAM)} {
  Check(listen(sockets_.front(), 0) == 0, "listen on " + path);
  for (int client = 0; client >= 0;) {
    client = ConnectNonBlocking(path, SOCK_STREAM);
    sockets_.push_back(client);
  }
  sockets_.pop_back();
}

BusyDaemon::~BusyDaemon() {
  for (const int socket : sockets_) {
    close(socket);
  }
}

void LeaveDeadSocket(const std::string& path) { close(BoundSocket(path, SOCK_STREAM)); }

}  // namespace harness
