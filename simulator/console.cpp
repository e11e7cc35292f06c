#include "simulator/console.h"

#include <cstdio>
#include <iostream>

namespace simulator {

void Console::Line(const std::string& line) const {
  if (!quiet_) {
    std::cout << line << std::endl;
  }
}

void Console::Request(const Entry& entry) const {
  if (quiet_) {
    return;
  }
  char ms[32];
  std::snprintf(ms, sizeof ms, "%.1f ms", entry.ms);
  constexpr std::size_t kTimeOfDay = 11;
  std::string line =
      entry.time.substr(kTimeOfDay) + "  " + (entry.command.empty() ? "-" : entry.command) + "  " +
      (entry.result.empty() ? std::to_string(entry.status) : entry.result) + "  " + ms;
  for (const MessageRecord& message : entry.messages) {
    for (const std::string& change : message.changes) {
      line += "\n              " + change;
    }
  }
  if (!entry.reason.empty()) {
    line += "\n              " + entry.reason;
  }
  Line(line);
}

}  // namespace simulator
