#include "harness/system_log.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "harness/unix_socket.h"

namespace harness {
namespace {

constexpr char kLogSocket[] = "/dev/log";
constexpr int kPriorityMask = 7;  // the rest of the number is the facility
constexpr std::size_t kLongestDatagram = 1 << 18;

/// The next datagram; nothing when none is there.
std::optional<std::string> Receive(int socket) {
  std::string datagram(kLongestDatagram, '\0');
  const ssize_t length = recv(socket, datagram.data(), datagram.size(), MSG_DONTWAIT);
  if (length < 0) {
    return std::nullopt;
  }
  datagram.resize(static_cast<std::size_t>(length));
  return datagram;
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, const LogLine& line) {
  return stream << line.priority << ": " << testing::PrintToString(line.text);
}

LogLine Error(std::string text) { return {3, std::move(text)}; }
LogLine Info(std::string text) { return {6, std::move(text)}; }
LogLine Debug(std::string text) { return {7, std::move(text)}; }

LogLine ParseLogLine(const std::string& datagram) {
  int priority = 0;
  int head_length = 0;
  // "<PRI>", month, day, time, and the program's name up to its colon; then one blank.
  std::sscanf(datagram.c_str(), "<%3d>%*3s %*2d %*2d:%*2d:%*2d %*[^: ]:%n", &priority,
              &head_length);
  const auto end_of_head = static_cast<std::size_t>(head_length);
  if (head_length == 0 || datagram.compare(end_of_head, 1, " ") != 0) {
    return {-1, datagram};
  }
  return {priority & kPriorityMask, datagram.substr(end_of_head + 1)};
}

SystemLog::SystemLog() : socket_(BoundSocket(kLogSocket, SOCK_DGRAM)) {
  if (pipe2(stop_pipe_, O_CLOEXEC) != 0) {
    throw std::system_error(errno, std::generic_category(), "pipe");
  }
  collector_ = std::thread(&SystemLog::Collect, this);
}

SystemLog::~SystemLog() {
  close(stop_pipe_[1]);
  collector_.join();
  close(stop_pipe_[0]);
  close(socket_);
  unlink(kLogSocket);
}

LogLines SystemLog::Lines() {
  const std::lock_guard<std::mutex> lock(mutex_);
  ReceiveAll();
  return lines_;
}

LogLines SystemLog::TakeLines() {
  const std::lock_guard<std::mutex> lock(mutex_);
  ReceiveAll();
  return std::exchange(lines_, {});
}

// The queue of a datagram socket is short and a sender waits when it is full: a thread empties it.
void SystemLog::Collect() {
  pollfd events[] = {{socket_, POLLIN, 0}, {stop_pipe_[0], POLLIN, 0}};
  while (poll(events, 2, -1) >= 0 && events[1].revents == 0) {
    const std::lock_guard<std::mutex> lock(mutex_);
    ReceiveAll();
  }
}

void SystemLog::ReceiveAll() {
  while (const std::optional<std::string> datagram = Receive(socket_)) {
    lines_.push_back(ParseLogLine(*datagram));
  }
}

StalledLog::StalledLog() : socket_(BoundSocket(kLogSocket, SOCK_DGRAM)) {
  const int sender = ConnectWithoutWaiting(kLogSocket, SOCK_DGRAM);
  while (send(sender, "stale", 5, MSG_DONTWAIT) >= 0) {
    ++stale_;
  }
  close(sender);
}

StalledLog::~StalledLog() {
  close(socket_);
  unlink(kLogSocket);
}

LogLines StalledLog::Read(std::size_t count) {
  constexpr int kPatienceMs = 10000;
  LogLines lines;
  for (std::size_t received = 0; received < stale_ + count; ++received) {
    pollfd event = {socket_, POLLIN, 0};
    poll(&event, 1, kPatienceMs);
    const std::optional<std::string> datagram = Receive(socket_);
    if (!datagram) {
      throw std::runtime_error("nothing more is logged");
    }
    if (received >= stale_) {
      lines.push_back(ParseLogLine(*datagram));
    }
  }
  return lines;
}

}  // namespace harness
