#include "harness/system_log.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <utility>

#include "harness/unix_socket.h"

namespace harness {
namespace {

constexpr char kLogSocket[] = "/dev/log";
constexpr int kUserFacility = 1;
constexpr std::size_t kMaxDatagram = 1 << 18;

/// The next datagram, or nothing if there is none.
std::optional<std::string> Receive(int socket) {
  std::string datagram(kMaxDatagram, '\0');
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

LogLine ParseLogLine(const std::string& message) {
  int number = 0;
  int head_length = 0;
  std::sscanf(message.c_str(), "<%3d>%*[^: ]:%n", &number, &head_length);
  const auto end_of_head = static_cast<std::size_t>(head_length);
  if (head_length == 0 || message.compare(end_of_head, 1, " ") != 0 ||
      number >> 3 != kUserFacility) {
    return {-1, message};
  }
  return {number & 7, message.substr(end_of_head + 1)};
}

// The queue of a datagram socket is short and a sender waits if it is full: a thread empties it.
SystemLog::SystemLog() : collector_(kLogSocket, SOCK_DGRAM, 0) {
  collector_.StartForEach([this] {
    const std::lock_guard<std::mutex> lock(mutex_);
    ReceiveAll();
  });
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

void SystemLog::ReceiveAll() {
  while (const std::optional<std::string> datagram = Receive(collector_.Socket())) {
    lines_.push_back(ParseLogLine(*datagram));
  }
}

StalledLog::StalledLog() : socket_(BoundSocket(kLogSocket, SOCK_DGRAM)) {
  const int sender = ConnectNonBlocking(kLogSocket, SOCK_DGRAM);
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
  constexpr int kTimeoutMs = 10000;
  LogLines lines;
  for (std::size_t received = 0; received < stale_ + count; ++received) {
    pollfd event = {socket_, POLLIN, 0};
    poll(&event, 1, kTimeoutMs);
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
