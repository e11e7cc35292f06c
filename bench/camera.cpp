#include "camera.h"

#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <string>

#include "harness/files.h"
#include "harness/messages.h"
#include "harness/private_world.h"
#include "harness/status_block.h"
#include "harness/unix_socket.h"

namespace bench {
namespace {

constexpr std::size_t kHeaderSize = 12;
constexpr int kStatusClass = 5;
constexpr int kClipClass = 6;
constexpr int kClipListCode = 11;
constexpr std::size_t kStatusReplySize = 38;
constexpr int kQueue = 128;

std::string ClipRecord(int index) {
  return harness::Be16(static_cast<std::uint16_t>(index)) + "0123456789" +
         harness::Bytes({1, 2, 3, 4, 1, 2, 4, 5, 7, 234, 6, 14, 9, 30, 59, 1, 0, 0, 0, 0});
}

std::string ClipList(const std::string& request) {
  const int first = static_cast<unsigned char>(request.at(kHeaderSize + 3));
  const int count = static_cast<unsigned char>(request.at(kHeaderSize + 5));
  std::string payload = harness::Bytes({0, 0, 0, count});
  for (int i = 0; i < count; ++i) {
    payload += ClipRecord(first + i);
  }
  return payload;
}

/// The reply of the control daemon; empty for a notice, which has no reply.
std::string Reply(const std::string& request) {
  const int message_class = request.at(1);
  const int code = request.at(4);
  if (message_class == kStatusClass && code == 0) {
    return harness::ReplyMessage(std::string(kStatusReplySize, '\0'));
  }
  if (message_class == kClipClass && code == kClipListCode) {
    return harness::ReplyMessage(ClipList(request));
  }
  return message_class >= kStatusClass ? harness::ReplyMessage(std::string(2, '\0')) : "";
}

[[noreturn]] void Answer(int listener) {
  char buffer[1024];
  while (true) {
    const int connection = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    const ssize_t size = read(connection, buffer, sizeof buffer);
    if (size >= static_cast<ssize_t>(kHeaderSize)) {
      const std::string reply = Reply({buffer, static_cast<std::size_t>(size)});
      send(connection, reply.data(), reply.size(), MSG_NOSIGNAL);
    }
    close(connection);
  }
}

[[noreturn]] void Discard(int log) {
  char buffer[8192];
  while (true) {
    recv(log, buffer, sizeof buffer, 0);
  }
}

template <typename Work>
void InChildProcess(Work work) {
  const pid_t parent = getpid();
  if (fork() == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    // The parent may have ended before prctl took effect.
    if (getppid() == parent) {
      work();
    }
    _exit(0);
  }
}

}  // namespace

void EnterCamera() {
  harness::EnterPrivateWorld();
  harness::WriteFile("/var/tmp/lighttpd/.session",
                     std::string("ID\t") + kSessionId + "\nlifetime\t1800\nsessiontime\t0\n");
  harness::StatusBlock().Store();
  const int log = harness::BoundSocket("/dev/log", SOCK_DGRAM);
  InChildProcess([log] { Discard(log); });
  const int daemon = harness::BoundSocket("/var/run/quonta_cp.sock", SOCK_STREAM);
  listen(daemon, kQueue);
  InChildProcess([daemon] { Answer(daemon); });
}

}  // namespace bench
