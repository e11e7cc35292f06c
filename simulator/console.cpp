#include "simulator/console.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string_view>

namespace simulator {
namespace {

constexpr std::string_view kIndent = "              ";
constexpr std::string_view kGreen = "\033[32m";
constexpr std::string_view kYellow = "\033[33m";
constexpr std::string_view kRed = "\033[31m";
constexpr std::string_view kFaint = "\033[2m";
constexpr std::string_view kPlain = "\033[0m";

/// What clients ask for again and again.
bool IsPoll(const Entry& entry) {
  constexpr std::string_view kPolls[] = {"GetCamStatus", "HeartbeatConfirmation", "SessionRenewal"};
  bool is_poll = false;
  for (const std::string_view poll : kPolls) {
    is_poll = is_poll || entry.command == poll;
  }
  return is_poll && entry.result == "Success" && entry.faults.empty();
}

std::string_view ColorOf(const std::string& result) {
  if (result == "Success") {
    return kGreen;
  }
  return result == "DisableError" ? kYellow : kRed;
}

}  // namespace

Console::Console(bool quiet, bool log)
    : quiet_(quiet),
      log_(log),
      is_terminal_(isatty(STDOUT_FILENO) == 1),
      has_color_(is_terminal_ && std::getenv("NO_COLOR") == nullptr) {}

Console::~Console() { ShowPolls(); }

void Console::Request(const Entry& entry) {
  if (quiet_) {
    return;
  }
  if (IsPoll(entry) && (!log_ || entry.log.empty())) {
    CountPoll(entry);
    return;
  }
  ShowPolls();
  const auto colored = [this](std::string_view color, const std::string& text) {
    return has_color_ ? std::string(color) + text + std::string(kPlain) : text;
  };
  constexpr std::size_t kTimeOfDay = 11;
  const std::string result =
      entry.result.empty() ? "HTTP " + std::to_string(entry.status) : entry.result;
  char ms[32];
  std::snprintf(ms, sizeof ms, "%.1f ms", entry.ms);
  std::cout << entry.time.substr(kTimeOfDay) << "  "
            << (entry.command.empty() ? entry.method : entry.command) << "  "
            << colored(ColorOf(entry.result), result) << "  " << ms << '\n';
  for (const MessageRecord& message : entry.messages) {
    for (const std::string& change : message.changes) {
      std::cout << kIndent << change << '\n';
    }
  }
  if (!entry.reason.empty()) {
    std::cout << kIndent << entry.reason << '\n';
  }
  if (log_) {
    for (const std::string& line : entry.log) {
      std::cout << kIndent << colored(kFaint, "log: " + line) << '\n';
    }
  }
  std::cout << std::flush;
}

void Console::CountPoll(const Entry& entry) {
  ++polls_[entry.command];
  if (is_terminal_) {
    std::cout << "\r\033[K";
    for (const auto& [command, count] : polls_) {
      std::cout << kIndent << command << " x " << count;
    }
    std::cout << std::flush;
  }
}

void Console::ShowPolls() {
  if (polls_.empty()) {
    return;
  }
  if (is_terminal_) {
    std::cout << '\n';
  } else {
    for (const auto& [command, count] : polls_) {
      std::cout << kIndent << command << " x " << count << '\n';
    }
  }
  std::cout << std::flush;
  polls_.clear();
}

}  // namespace simulator
