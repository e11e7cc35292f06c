#include "core/dlog.h"

#include <cstdarg>
#include <cstdio>
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

[[gnu::format(printf, 2, 0)]] void FormatAndLog(LogPriority priority, const char* fmt,
                                                va_list arguments) {
  char message[kTextSize];
  message[0] = '\0';
  // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): both callers have started the list.
  std::vsnprintf(message, sizeof message, fmt, arguments);
  os::SystemLog(priority, message);
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
