#include "simulator/system_log.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

namespace simulator {
namespace {

constexpr sockaddr_un kAddress = {AF_UNIX, "/dev/log"};

/// "<11>Jan  2 03:04:05 name: text" without the leading number, whose low three bits are the
/// priority, and the fifteen characters and blank of the time, but with the priority as a word.
std::string ReadableEntry(const std::string& entry) {
  constexpr std::array kPriorities = {"emerg",   "alert",  "crit", "err",
                                      "warning", "notice", "info", "debug"};
  constexpr std::size_t kTimeLength = 16;
  const std::size_t end = entry.find('>');
  if (entry.empty() || entry[0] != '<' || end == std::string::npos) {
    return entry;
  }
  const std::size_t priority = std::strtoul(entry.c_str() + 1, nullptr, 10) % kPriorities.size();
  const std::size_t text = std::min(entry.size(), end + 1 + kTimeLength);
  return std::string(kPriorities[priority]) + " " + entry.substr(text);
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
