#include "simulator/console.h"

#include <sys/ioctl.h>
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

/// A text from outside. Control characters are shown in hexadecimal: a terminal would obey them.
std::string Printable(const std::string& text) {
  std::string printable;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= ' ' && byte != 0x7f) {
      printable += c;
    } else {
      char escaped[8];
      std::snprintf(escaped, sizeof escaped, "\\x%02x", static_cast<unsigned int>(byte));
      printable += escaped;
    }
  }
  return printable;
}

/// How many columns a line on the terminal may have without being wrapped; no limit if that is not
/// known.
std::size_t Columns() {
  winsize size = {};
  const bool is_known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return is_known ? size.ws_col - 1U : std::string::npos;
}

}  // namespace

Console::Console(bool quiet, bool log, const std::string& name)
    : quiet_(quiet),
      log_(log),
      name_(name.empty() ? "" : name + "  "),
      counts_in_place_(isatty(STDOUT_FILENO) == 1 && name.empty()),
      has_color_(isatty(STDOUT_FILENO) == 1 && std::getenv("NO_COLOR") == nullptr) {}

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
  std::cout << entry.time.substr(kTimeOfDay) << "  " << name_
            << Printable(entry.command.empty() ? entry.method : entry.command) << "  "
            << colored(ColorOf(entry.result), Printable(result)) << "  " << ms << '\n';
  for (const MessageRecord& message : entry.messages) {
    for (const std::string& change : message.changes) {
      std::cout << kIndent << Printable(change) << '\n';
    }
  }
  if (!entry.reason.empty()) {
    std::cout << kIndent << Printable(entry.reason) << '\n';
  }
  if (log_) {
    for (const std::string& line : entry.log) {
      std::cout << kIndent << colored(kFaint, Printable("log: " + line)) << '\n';
    }
  }
  std::cout << std::flush;
}

void Console::CountPoll(const Entry& entry) {
  ++polls_[entry.command];
  if (counts_in_place_) {
    // A wrapped line could not be overwritten.
    std::cout << "\r\033[K" << Polls().substr(0, Columns()) << std::flush;
  }
}

std::string Console::Polls() const {
  std::string line = std::string(kIndent) + name_;
  for (const auto& [command, count] : polls_) {
    line += command + " x " + std::to_string(count) + "  ";
  }
  return line;
}

void Console::ShowPolls() {
  if (polls_.empty()) {
    return;
  }
  const std::string line = Polls();
  if (!counts_in_place_) {
    std::cout << line;
  } else if (line.size() > Columns()) {
    std::cout << "\r\033[K" << line;
  }
  std::cout << '\n' << std::flush;
  polls_.clear();
}

}  // namespace simulator
