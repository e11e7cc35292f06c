#include "simulator/message_server.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>
#include <vector>

namespace simulator {
namespace {

/// How long the rest of a message may take. The handler sends a message in one piece, so a header
/// without its payload is all there will be; it waits for an answer five seconds at most.
constexpr std::chrono::milliseconds kPayloadPatience{250};
/// How long a connection may stay open without a word.
constexpr std::chrono::seconds kIdlePatience{30};

sockaddr_un SocketAddress(const std::string& path) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) {
    throw std::system_error(ENAMETOOLONG, std::generic_category(), path);
  }
  std::memcpy(address.sun_path, path.data(), path.size());
  return address;
}

bool SomebodyListens(const sockaddr_un& address) {
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
  if (SomebodyListens(address)) {
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
  UniqueFd client(accept4(listener.fd.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
  const int fd = client.Get();
  if (fd < 0) {
    return;
  }
  connections_.insert_or_assign(fd,
                                Connection{std::move(client), &listener.answer, {}, Clock::now()});
  loop_.Add(fd, [this, fd] { Receive(fd); });
}

void MessageServer::Receive(int fd) {
  Connection& connection = connections_.at(fd);
  std::array<std::uint8_t, 4096> piece;
  const ssize_t count = recv(fd, piece.data(), piece.size(), 0);
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
    return;
  }
  if (count <= 0) {
    Close(fd);
    return;
  }
  connection.received.insert(connection.received.end(), piece.begin(), piece.begin() + count);
  connection.last_arrival = Clock::now();
  while (connection.received.size() >= kHeaderSize &&
         connection.received.size() >= kHeaderSize + AnnouncedLength(connection.received)) {
    if (!AnswerOne(connection)) {
      Close(fd);
      return;
    }
  }
}

bool MessageServer::AnswerOne(Connection& connection) {
  const Message message = TakeMessage(connection.received);
  const std::optional<Bytes> payload = (*connection.answer)(message);
  if (!payload) {
    return true;
  }
  const Bytes reply = MakeReply(message, *payload);
  // Replies are far smaller than a socket's buffer: one that does not fit has no reader.
  return send(connection.fd.Get(), reply.data(), reply.size(), MSG_NOSIGNAL) ==
         static_cast<ssize_t>(reply.size());
}

void MessageServer::SettleOverdue() {
  const Clock::time_point now = Clock::now();
  std::vector<int> finished;
  for (auto& [fd, connection] : connections_) {
    const auto silence = now - connection.last_arrival;
    if (silence < (connection.received.empty() ? Clock::duration(kIdlePatience)
                                               : Clock::duration(kPayloadPatience))) {
      continue;
    }
    if (connection.received.size() < kHeaderSize || !AnswerOne(connection)) {
      finished.push_back(fd);
    }
  }
  for (const int fd : finished) {
    Close(fd);
  }
}

void MessageServer::Close(int fd) {
  loop_.Remove(fd);
  connections_.erase(fd);
}

}  // namespace simulator
