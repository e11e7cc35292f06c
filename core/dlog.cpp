#include "core/dlog.h"

#include <algorithm>
#include <cstdarg>
#include <cstring>

#include "core/line_reader.h"
#include "core/system_log.h"
#include "core/text.h"

std::int32_t g_log_level_limit = 3;

namespace {

constexpr char kThresholdPath[] = "/var/tmp/lighttpd/cgilog";
constexpr std::size_t kThresholdLineSize = 16;

LogPriority PriorityOfLevel(int level) {
  if (level <= 1) {
    return kLogError;
  }
  return level <= 4 ? kLogInfo : kLogDebug;
}

/// A text that is truncated to the size of a log message.
class Message {
 public:
  void Append(std::string_view text) {
    CopyText(text_ + length_, sizeof text_ - length_, text);
    length_ = std::min(length_ + text.size(), sizeof text_ - 1);
  }
  void Append(char c) { Append({&c, 1}); }
  void AppendHex(unsigned number) {
    if (number > 0xF) {
      AppendHex(number >> 4);
    }
    Append("0123456789abcdef"[number & 0xF]);
  }

  [[nodiscard]] const char* Text() const { return text_; }

 private:
  // cppcheck-suppress uninitMemberVarPrivate  // every message is appended to, which sets the NUL
  char text_[kTextSize];
  std::size_t length_ = 0;
};

/// Formats as printf does, but knows only the conversions that DLOG's description names: the C
/// library's function, which knows them all, is a tenth of the whole program on the board.
[[gnu::format(printf, 2, 0)]] void FormatAndLog(LogPriority priority, const char* fmt,
                                                va_list arguments) {
  Message message;
  while (const char* const conversion = std::strchr(fmt, '%')) {
    message.Append({fmt, static_cast<std::size_t>(conversion - fmt)});
    fmt = conversion + 2;
    // NOLINTBEGIN(clang-analyzer-valist.Uninitialized): both callers have started the list.
    switch (conversion[1]) {
      case 'd':
        message.Append(DecimalText(va_arg(arguments, int)).View());
        break;
      case 'x':
        message.AppendHex(va_arg(arguments, unsigned));
        break;
      case 'c':
        message.Append(static_cast<char>(va_arg(arguments, int)));
        break;
      case 's':
        message.Append(va_arg(arguments, const char*));
        break;
      default:
        message.Append(conversion[1]);
        break;
    }
    // NOLINTEND(clang-analyzer-valist.Uninitialized)
  }
  message.Append(fmt);
  os::SystemLog(priority, message.Text());
}

}  // namespace

int INIT_DLOG() {
  const os::Descriptor file = os::OpenForReading(kThresholdPath);
  LineReader<kThresholdLineSize> lines(file);
  while (const char* line = lines.Next()) {
    const char* const value = StartsWith(line, "cmd") ? std::strchr(line, '=') : nullptr;
    const std::int32_t limit = value != nullptr ? ParseInt32(value + 1) : 0;
    if (limit > 0) {
      g_log_level_limit = limit;
    }
  }
  return 0;
}

void DLOG(int level, const char* fmt, ...) {
  if (g_log_level_limit < level) {
    return;
  }
  va_list arguments;
  va_start(arguments, fmt);
  FormatAndLog(PriorityOfLevel(level), fmt, arguments);
  va_end(arguments);
}

void LogToSystem(LogPriority priority, const char* fmt, ...) {
  va_list arguments;
  va_start(arguments, fmt);
  FormatAndLog(priority, fmt, arguments);
  va_end(arguments);
}
