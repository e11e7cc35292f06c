#include "simulator/system_log.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>
#include <system_error>
#include <utility>

namespace simulator {
namespace {

constexpr sockaddr_un kAddress = {AF_UNIX, "/dev/log"};

/// "<11>name: text" as "err name: text": the low three bits of the number are the priority. Like
/// other system logs, without line feeds at the end.
std::string ReadableEntry(const std::string& entry) {
  constexpr std::array kPriorities = {"emerg",   "alert",  "crit", "err",
                                      "warning", "notice", "info", "debug"};
  const std::size_t end = entry.find('>');
  if (entry.empty() || entry[0] != '<' || end == std::string::npos) {
    return entry;
  }
  const std::size_t priority = std::strtoul(entry.c_str() + 1, nullptr, 10) % kPriorities.size();
  std::string line = std::string(kPriorities[priority]) + " " + entry.substr(end + 1);
  line.erase(line.find_last_not_of('\n') + 1);
  return line;
}

}  // namespace

SystemLog::SystemLog(EventLoop& loop, OnLine on_line)
    : on_line_(std::move(on_line)),
      fd_(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
  const int yes = 1;
  if (setsockopt(fd_.Get(), SOL_SOCKET, SO_PASSCRED, &yes, sizeof yes) != 0 ||
      bind(fd_.Get(), reinterpret_cast<const sockaddr*>(&kAddress), sizeof kAddress) != 0) {
    throw std::system_error(errno, std::generic_category(), kAddress.sun_path);
  }
  loop.Add(fd_.Get(), [this] { Receive(); });
}

SystemLog::~SystemLog() { unlink(kAddress.sun_path); }

void SystemLog::ReceiveAll() const {
  while (Receive()) {
  }
}

bool SystemLog::Receive() const {
  std::array<char, 16384> entry;
  alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(ucred))> control{};
  iovec part = {entry.data(), entry.size()};
  msghdr message = {};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  message.msg_control = control.data();
  message.msg_controllen = control.size();
  const ssize_t count = recvmsg(fd_.Get(), &message, 0);
  if (count <= 0) {
    return false;
  }
  ucred sender = {};
  const cmsghdr* const header = CMSG_FIRSTHDR(&message);
  if (header != nullptr && header->cmsg_type == SCM_CREDENTIALS) {
    std::memcpy(&sender, CMSG_DATA(header), sizeof sender);
  }
  on_line_(sender.pid, ReadableEntry({entry.data(), static_cast<std::size_t>(count)}));
  return true;
}

}  // namespace simulator
