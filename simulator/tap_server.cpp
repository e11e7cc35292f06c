#include "simulator/tap_server.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "simulator/tap_protocol.h"

namespace simulator {
namespace {

std::string TextOf(const tap::Object& object, const char* name) {
  const tap::Object& member = object.at(name);
  if (member.is_binary()) {
    const auto& bytes = member.get_binary();
    return {bytes.begin(), bytes.end()};
  }
  return member.get<std::string>();
}

}  // namespace

TapServer::TapServer(EventLoop& loop, OnStart on_start, OnEnd on_end)
    : loop_(loop),
      on_start_(std::move(on_start)),
      on_end_(std::move(on_end)),
      listener_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
  std::filesystem::create_directories(std::filesystem::path(tap::kSocket).parent_path());
  unlink(tap::kSocket);
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, tap::kSocket, sizeof tap::kSocket);
  if (bind(listener_.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      listen(listener_.Get(), SOMAXCONN) != 0) {
    throw std::system_error(errno, std::generic_category(), tap::kSocket);
  }
  loop_.Add(listener_.Get(), [this] { Accept(); });
}

void TapServer::Accept() {
  UniqueFd client(accept4(listener_.Get(), nullptr, nullptr, SOCK_CLOEXEC));
  const int fd = client.Get();
  if (fd < 0) {
    return;
  }
  connections_.insert_or_assign(fd, Connection{std::move(client), {}, 0, {}});
  loop_.Add(fd, [this, fd] { Receive(fd); });
}

void TapServer::Receive(int fd) {
  Connection& connection = connections_.at(fd);
  std::array<std::uint8_t, 65536> piece;
  const ssize_t count = recv(fd, piece.data(), piece.size(), MSG_DONTWAIT);
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
    return;
  }
  if (count <= 0) {
    Close(fd);
    return;
  }
  Bytes& received = connection.received;
  received.insert(received.end(), piece.begin(), piece.begin() + count);
  while (received.size() >= tap::kLengthSize) {
    const std::size_t length = tap::LengthOf(received);
    if (length > tap::kMaxLength) {
      Close(fd);
      return;
    }
    if (received.size() < tap::kLengthSize + length) {
      return;
    }
    const auto begin = received.begin() + tap::kLengthSize;
    const auto end = begin + static_cast<std::ptrdiff_t>(length);
    const Bytes packed(begin, end);
    received.erase(received.begin(), end);
    if (!Hear(connection, packed)) {
      Close(fd);
      return;
    }
  }
}

bool TapServer::Hear(Connection& connection, const Bytes& packed) {
  try {
    const tap::Object object = tap::Object::from_msgpack(packed);
    tap::Object answer = tap::Object::object();
    if (object.contains("pid")) {
      connection.pid = object.at("pid").get<int>();
      connection.started = std::chrono::steady_clock::now();
      answer["world"] = on_start_({connection.pid, TextOf(object, "method"),
                                   TextOf(object, "client"), TextOf(object, "body")});
    } else {
      on_end_(std::exchange(connection.pid, 0),
              {TextOf(object, "output"), object.at("status").get<int>(),
               object.at("ms").get<double>(), false});
    }
    const tap::Frame frame = tap::ToFrame(answer);
    return send(connection.fd.Get(), frame.data(), frame.size(), MSG_NOSIGNAL) ==
           static_cast<ssize_t>(frame.size());
  } catch (const tap::Object::exception&) {
    return false;
  }
}

void TapServer::Close(int fd) {
  loop_.Remove(fd);
  const Connection& connection = connections_.at(fd);
  if (connection.pid != 0) {
    const std::chrono::duration<double, std::milli> took =
        std::chrono::steady_clock::now() - connection.started;
    on_end_(connection.pid, {"", 0, took.count(), true});
  }
  connections_.erase(fd);
}

}  // namespace simulator
