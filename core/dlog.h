// Diagnostic log: messages to the system log, filtered by a level.
#pragma once

#include <cstdint>

/// Messages of a level above this one are not emitted. `INIT_DLOG` may change it.
extern std::int32_t g_log_level_limit;

/// Reads the log threshold of this camera from "/var/tmp/lighttpd/cgilog", a text file that
/// service staff write: the last line "cmd=N" with N above 0 sets `g_log_level_limit`. A missing
/// file is normal. Level-1 messages can never be silenced.
/// @return 0
int INIT_DLOG();

/// Emits one diagnostic message when `g_log_level_limit` allows its level.
///
/// @param level  1 and below: errors and the request and reply traces (priority 3); 2 to 4:
///               traces of single steps (priority 6); 5 and above: traces of commands that are
///               polled many times a second (priority 7)
/// @param fmt    as for printf. The log shows the formatted text as it is, truncated to
///               `kMaxTextLength` bytes. Give that precision to a text that may be longer:
///               formatting what is then truncated is expensive.
[[gnu::format(printf, 2, 3)]] void DLOG(int level, const char* fmt, ...);

/// Emits one message to the system log whatever the threshold; formats and cuts as `DLOG` does.
/// @param priority  of the system log: 3 error, 6 informational, 7 debug
[[gnu::format(printf, 2, 3)]] void LogToSystem(int priority, const char* fmt, ...);
