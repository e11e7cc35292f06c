// Diagnostic log: messages to the system log, filtered by a level.
#pragma once

#include <cstdint>

/// Priorities of the system log.
enum LogPriority { kLogError = 3, kLogInfo = 6, kLogDebug = 7 };

/// Messages of a higher level are not emitted. `INIT_DLOG` may change it.
extern std::int32_t g_log_level_limit;

/// Reads the log threshold of this camera from "/var/tmp/lighttpd/cgilog", a text file that service
/// staff write: the last line "cmd=N" with N above 0 sets `g_log_level_limit`. The file is usually
/// missing. Messages of level 1 cannot be silenced.
/// @return 0
int INIT_DLOG();

/// Emits a diagnostic message if `g_log_level_limit` allows its level.
///
/// @param level  up to 1: errors, and the traces of requests and replies (`kLogError`); 2 to 4:
///               traces of single steps (`kLogInfo`); from 5: traces of commands that clients poll
///               (`kLogDebug`)
/// @param fmt    like printf's, with no conversions but %d, %x, %c, %s and %%. The log shows the
///               formatted text as it is, truncated to `kTextSize - 1` bytes.
[[gnu::format(printf, 2, 3)]] void DLOG(int level, const char* fmt, ...);

/// Emits a message regardless of the threshold; formats and truncates like `DLOG`.
[[gnu::format(printf, 2, 3)]] void LogToSystem(LogPriority priority, const char* fmt, ...);
