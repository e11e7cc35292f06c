#include "simulator/message_server.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>
#include <vector>

namespace simulator {
namespace {

/// How long the rest of a message may take. The handler sends a message in one piece, so a header
/// that comes alone has no payload; the handler waits for an answer for five seconds at most.
constexpr std::chrono::milliseconds kPayloadTimeout{250};
/// How long a connection may stay open without a message.
constexpr std::chrono::seconds kIdleTimeout{60};

sockaddr_un SocketAddress(const std::string& path) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) {
    throw std::system_error(ENAMETOOLONG, std::generic_category(), path);
  }
  std::memcpy(address.sun_path, path.data(), path.size());
  return address;
}

bool HasListener(const sockaddr_un& address) {
  const UniqueFd probe(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  return connect(probe.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

}  // namespace

MessageServer::~MessageServer() {
  for (const Listener& listener : listeners_) {
    unlink(listener.path.c_str());
  }
}

void MessageServer::Listen(const std::string& path, Answer answer) {
  const sockaddr_un address = SocketAddress(path);
  if (HasListener(address)) {
    throw std::system_error(EADDRINUSE, std::generic_category(), path);
  }
  unlink(path.c_str());
  UniqueFd fd(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (bind(fd.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      listen(fd.Get(), SOMAXCONN) != 0) {
    throw std::system_error(errno, std::generic_category(), path);
  }
  const Listener& listener =
      listeners_.emplace_back(Listener{path, std::move(fd), std::move(answer)});
  loop_.Add(listener.fd.Get(), [this, &listener] { Accept(listener); });
}

void MessageServer::Accept(const Listener& listener) {
  while (true) {
    UniqueFd client(accept4(listener.fd.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    const int fd = client.Get();
    if (fd < 0) {
      return;
    }
    ucred sender = {};
    socklen_t size = sizeof sender;
    getsockopt(fd, SOL_SOCKET, SO_PEERCRED, &sender, &size);
    const Number number = ++last_number_;
    connections_.emplace(
        number, Connection{std::move(client), sender.pid, &listener.answer, {}, Clock::now()});
    loop_.Add(fd, [this, number] { Receive(number); });
  }
}

void MessageServer::ReceiveAll() {
  for (const Listener& listener : listeners_) {
    Accept(listener);
  }
  std::vector<Number> numbers;
  for (const auto& [number, connection] : connections_) {
    numbers.push_back(number);
  }
  for (const Number number : numbers) {
    Receive(number);
  }
}

void MessageServer::Receive(Number number) {
  const auto found = connections_.find(number);
  if (found == connections_.end()) {
    return;
  }
  Connection& connection = found->second;
  std::array<std::uint8_t, 4096> piece;
  const ssize_t count = recv(connection.fd.Get(), piece.data(), piece.size(), MSG_DONTWAIT);
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
    return;
  }
  if (count <= 0) {
    Close(number);
    return;
  }
  connection.received.insert(connection.received.end(), piece.begin(), piece.begin() + count);
  connection.last_arrival = Clock::now();
  while (connection.received.size() >= kHeaderSize &&
         connection.received.size() >= kHeaderSize + AnnouncedLength(connection.received)) {
    if (!AnswerOne(number, connection)) {
      Close(number);
      return;
    }
  }
}

bool MessageServer::AnswerOne(Number number, Connection& connection) {
  constexpr std::chrono::milliseconds kBetweenPieces{1};
  const Message message = TakeMessage(connection.received);
  const Delivery delivery = (*connection.answer)(message, connection.sender);
  const Bytes& reply = delivery.reply;
  // Replies are far smaller than a socket's buffer: one that does not fit has no reader.
  const auto send_all = [&connection, &reply](std::size_t length) {
    return send(connection.fd.Get(), reply.data(), length, MSG_NOSIGNAL) ==
           static_cast<ssize_t>(length);
  };
  switch (delivery.way) {
    case Delivery::Way::kNoReply:
    case Delivery::Way::kSilent:
      return true;
    case Delivery::Way::kAtOnce:
      return send_all(reply.size());
    case Delivery::Way::kLater:
      SendLater(number, std::chrono::milliseconds(delivery.delay_ms), reply, reply.size());
      return true;
    case Delivery::Way::kPieces:
      SendLater(number, kBetweenPieces, reply, 1);
      return true;
    case Delivery::Way::kShort:
      send_all(std::min(reply.size(), delivery.length));
      return false;
  }
  return false;
}

/// Sends `bytes` in pieces of `piece` bytes, and waits for `delay` before each of them.
void MessageServer::SendLater(Number number, std::chrono::milliseconds delay, const Bytes& bytes,
                              std::size_t piece) {
  loop_.After(delay, [this, number, delay, bytes, piece] {
    const auto found = connections_.find(number);
    if (found == connections_.end()) {
      return;
    }
    const std::size_t length = std::min(piece, bytes.size());
    const bool is_sent = send(found->second.fd.Get(), bytes.data(), length, MSG_NOSIGNAL) ==
                         static_cast<ssize_t>(length);
    if (is_sent && length < bytes.size()) {
      SendLater(number, delay, {bytes.begin() + static_cast<std::ptrdiff_t>(length), bytes.end()},
                piece);
    }
  });
}

void MessageServer::SettleOverdue() {
  const Clock::time_point now = Clock::now();
  std::vector<Number> finished;
  for (auto& [number, connection] : connections_) {
    const auto silence = now - connection.last_arrival;
    if (silence < (connection.received.empty() ? Clock::duration(kIdleTimeout)
                                               : Clock::duration(kPayloadTimeout))) {
      continue;
    }
    if (connection.received.size() < kHeaderSize || !AnswerOne(number, connection)) {
      finished.push_back(number);
    }
  }
  for (const Number number : finished) {
    Close(number);
  }
}

void MessageServer::Close(Number number) {
  const auto found = connections_.find(number);
  loop_.Remove(found->second.fd.Get());
  connections_.erase(found);
}

}  // namespace simulator
