#include "harness/system_log.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <ostream>
#include <system_error>
#include <utility>

#include "harness/unix_socket.h"

namespace harness {
namespace {

constexpr char kLogSocket[] = "/dev/log";
constexpr int kPriorityMask = 7;  // the rest of the number is the facility
constexpr std::size_t kLongestDatagram = 1 << 18;

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
  std::string datagram(kLongestDatagram, '\0');
  ssize_t length = 0;
  while ((length = recv(socket_, datagram.data(), datagram.size(), MSG_DONTWAIT)) >= 0) {
    lines_.push_back(ParseLogLine(datagram.substr(0, static_cast<std::size_t>(length))));
  }
}

}  // namespace harness
