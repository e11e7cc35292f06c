#include "core/system_log.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "core/io_vector.h"
#include "core/os.h"
#include "core/text.h"
#include "core/uninterrupted.h"

namespace os {

namespace {

constexpr sockaddr_un kLogAddress = {AF_UNIX, "/dev/log"};

int log_socket = -1;
bool log_is_stream = false;

/// How long this process will still wait for a log daemon that does not keep up.
std::int64_t remaining_wait_ms = 1000;

/// Subtracts the time that a call takes from the time that is left for waiting: at least one
/// millisecond, so that many short waits end, too.
template <typename Call>
auto Waiting(Call call) {
  const std::int64_t start = MonotonicMilliseconds();
  const auto result = call();
  remaining_wait_ms -= MonotonicMilliseconds() - start + 1;
  return result;
}

void Disconnect() {
  if (log_socket >= 0) {
    close(log_socket);
    log_socket = -1;
  }
}

bool ConnectSocket() {
  return Uninterrupted([] {
           return connect(log_socket, reinterpret_cast<const sockaddr*>(&kLogAddress),
                          sizeof kLogAddress);
         }) == 0;
}

bool ConnectDatagramSocket() {
  log_socket = socket(AF_UNIX, SOCK_DGRAM, 0);
  log_is_stream = false;
  return log_socket >= 0 && ConnectSocket();
}

/// A daemon that no longer accepts connections counts as one that does not keep up.
bool ConnectStreamSocket() {
  log_socket = socket(AF_UNIX, SOCK_STREAM, 0);
  log_is_stream = true;
  const auto wait_ms = static_cast<int>(std::max(remaining_wait_ms, std::int64_t{1}));
  const timeval timeout = {wait_ms / 1000, static_cast<suseconds_t>(wait_ms % 1000) * 1000};
  return log_socket >= 0 &&
         setsockopt(log_socket, SOL_SOCKET, SO_SNDTIMEO, &timeout, sizeof timeout) == 0 &&
         Waiting(ConnectSocket);
}

/// @return false if there is no log daemon
bool ConnectToLog() {
  Disconnect();
  if (ConnectDatagramSocket()) {
    return true;
  }
  const bool has_other_type = errno == EPROTOTYPE;
  Disconnect();
  return has_other_type && ConnectStreamSocket();
}

/// Waits until the log daemon has room for more.
/// @return false when the time for waiting is used up
bool AwaitRoom() {
  return remaining_wait_ms > 0 && Waiting([] {
           pollfd log = {log_socket, POLLOUT, 0};
           return poll(&log, 1, static_cast<int>(remaining_wait_ms)) != 0;
         });
}

/// Removes what has been sent from a message.
void RemovePrefix(msghdr& message, std::size_t length) {
  while (message.msg_iovlen > 0 && length >= message.msg_iov->iov_len) {
    length -= message.msg_iov->iov_len;
    ++message.msg_iov;
    --message.msg_iovlen;
  }
  if (message.msg_iovlen > 0) {
    message.msg_iov->iov_base = static_cast<char*>(message.msg_iov->iov_base) + length;
    message.msg_iov->iov_len -= length;
  }
}

/// Sends a message in pieces, without memory for the whole: a process that has run out of memory
/// logs that.
/// @return false if there is no log daemon at the other end, so that connecting again may help. A
///         message that the daemon does not take in time is lost, but counts as sent.
bool SendToLog(int priority, const char* text) {
  constexpr int kUserFacility = 1 << 3;
  const DecimalText number(kUserFacility | priority);
  iovec parts[] = {Piece("<"),
                   Piece(number.View()),
                   Piece(">"),
                   Piece(program_invocation_short_name),
                   Piece(": "),
                   Piece(text),
                   Piece(std::string_view("", log_is_stream ? 1 : 0))};
  msghdr rest = {};
  rest.msg_iov = parts;
  rest.msg_iovlen = std::size(parts);
  bool is_partly_sent = false;
  while (log_socket >= 0) {
    const ssize_t sent = sendmsg(log_socket, &rest, MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent >= 0) {
      RemovePrefix(rest, static_cast<std::size_t>(sent));
      if (rest.msg_iovlen == 0) {
        return true;
      }
      is_partly_sent = true;
    } else if (errno != EAGAIN) {
      return false;
    } else if (!AwaitRoom()) {
      if (is_partly_sent) {
        // The next message must not continue this one.
        Disconnect();
      }
      return true;
    }
  }
  return false;
}

}  // namespace

void SystemLog(int priority, const char* text) {
  if (!SendToLog(priority, text) && ConnectToLog()) {
    SendToLog(priority, text);
  }
}

}  // namespace os
