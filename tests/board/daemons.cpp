// A small stand-in for the camera's daemons: answers every message of the handler with fixed,
// plausible data. Start it as root; it ends when it is killed.
//
//   board_daemons
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

using namespace std::literals;

constexpr std::size_t kHeaderSize = 12;
constexpr std::size_t kMaxPayload = 512;
constexpr int kQueue = 64;

/// A part of a reply's payload. Bytes that no part gives are 0, and byte 0 is the result, 0 for
/// success.
struct Part {
  std::uint8_t message_class;
  std::uint8_t code;
  std::uint16_t payload_length;
  std::size_t offset;
  std::string_view bytes;
};

// Replies with more than a result. Numbers are big-endian in those of the control daemon (classes 5
// and 6) and little-endian in those of the streaming daemon (class 11).
// clang-format off
constexpr Part kParts[] = {
    {5,   0,  38,   0, "\0"sv},                         // camera status
    {5,  15,   5,   1, "\1\1\1\0"sv},                   // permissions of the pages
    {6,  11,  36,   3, "\1"sv},                         // number of clips
    {6,  11,  36,   4, "\0\1"sv},                       // index of the clip
    {6,  11,  36,   6, "CLIP000001"sv},
    {6,  11,  36,  16, "\1\2\3\4"sv},                   // first time code
    {6,  11,  36,  20, "\1\2\4\5"sv},                   // last time code
    {6,  11,  36,  24, "\x07\xea\x05\x0e\x09\x1e\x3b"sv},  // 2026-06-14 09:30:59
    {6,  11,  36,  31, "\1"sv},                         // marked
    {6,  29,  32,   4, "GOOD"sv},                       // antenna
    {6,  29,  32,  24, "35N139E"sv},                    // location
    {11, 102,  8,   4, "\1\0"sv},                       // number of events
    {11, 103, 132,  4, "Morning show"sv},               // title of an event
    {11, 105, 324,  4, "rtmp://cloud.example/live"sv},  // stream information
    {11, 105, 324, 196, "cloud-key"sv},
    {11, 105, 324, 260, "Morning"sv},
};
// clang-format on

[[noreturn]] void Fail(const char* what) {
  std::perror(what);
  std::exit(1);
}

int Listen(const char* path) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, path, sizeof address.sun_path - 1);
  const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
      chmod(path, 0666) != 0 || listen(listener, kQueue) != 0) {
    Fail(path);
  }
  return listener;
}

/// Reads one message and answers it; a renewal notice (class 1) has no reply.
void Serve(int connection) {
  std::uint8_t message[kHeaderSize + kMaxPayload];
  const ssize_t received = recv(connection, message, sizeof message, 0);
  constexpr std::uint8_t kNotice = 1;
  if (received < static_cast<ssize_t>(kHeaderSize) || message[1] == kNotice) {
    return;
  }
  std::uint8_t reply[kHeaderSize + kMaxPayload] = {};
  std::uint16_t payload_length = 1;
  for (const Part& part : kParts) {
    if (part.message_class == message[1] && part.code == message[4]) {
      payload_length = part.payload_length;
      std::memcpy(reply + kHeaderSize + part.offset, part.bytes.data(), part.bytes.size());
    }
  }
  reply[1] = message[1];
  reply[2] = static_cast<std::uint8_t>(payload_length);
  reply[3] = static_cast<std::uint8_t>(payload_length >> 8);
  reply[4] = message[4];
  send(connection, reply, kHeaderSize + payload_length, MSG_NOSIGNAL);
}

}  // namespace

int main() {
  pollfd daemons[] = {{Listen("/var/run/quonta_cp.sock"), POLLIN, 0},
                      {Listen("/var/run/streaming.sock"), POLLIN, 0}};
  while (poll(daemons, 2, -1) > 0) {
    for (const pollfd& daemon : daemons) {
      if (daemon.revents != 0) {
        const int connection = accept4(daemon.fd, nullptr, nullptr, SOCK_CLOEXEC);
        Serve(connection);
        close(connection);
      }
    }
  }
  Fail("poll");
}
