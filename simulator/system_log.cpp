#include "simulator/system_log.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

namespace simulator {
namespace {

constexpr sockaddr_un kAddress = {AF_UNIX, "/dev/log"};

/// "<11>name: text" as "err name: text": the low three bits of the number are the priority.
std::string ReadableEntry(const std::string& entry) {
  constexpr std::array kPriorities = {"emerg",   "alert",  "crit", "err",
                                      "warning", "notice", "info", "debug"};
  const std::size_t end = entry.find('>');
  if (entry.empty() || entry[0] != '<' || end == std::string::npos) {
    return entry;
  }
  const std::size_t priority = std::strtoul(entry.c_str() + 1, nullptr, 10) % kPriorities.size();
  return std::string(kPriorities[priority]) + " " + entry.substr(end + 1);
}

}  // namespace

SystemLog::SystemLog(EventLoop& loop, const Console& console)
    : console_(console), fd_(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
  if (bind(fd_.Get(), reinterpret_cast<const sockaddr*>(&kAddress), sizeof kAddress) != 0) {
    throw std::system_error(errno, std::generic_category(), kAddress.sun_path);
  }
  loop.Add(fd_.Get(), [this] { Receive(); });
}

SystemLog::~SystemLog() { unlink(kAddress.sun_path); }

void SystemLog::Receive() const {
  std::array<char, 16384> entry;
  const ssize_t count = recv(fd_.Get(), entry.data(), entry.size(), 0);
  if (count > 0) {
    console_.Line("log: " + ReadableEntry({entry.data(), static_cast<std::size_t>(count)}));
  }
}

}  // namespace simulator
