// Client of the system log daemon at /dev/log.
#pragma once

namespace os {

/// Sends one message to the system log, whole and unchanged, as "<number>name: text". The daemon
/// adds the local time. The number is the priority plus 8 for the facility "user"; the name is the
/// program's. Both kinds of daemon are served: each message is a datagram or, where the daemon has
/// a stream socket, ends with a NUL.
///
/// Without a log daemon the message is lost. A daemon that does not keep up delays the process for
/// one second in total, over all messages; what it does not take in that time is lost, too. The C
/// library's syslog() would do the same, but it reads the time zone, which needs most of the
/// library's text and number scanning.
/// @param priority  3 error, 6 informational, 7 debug
void SystemLog(int priority, const char* text);

}  // namespace os
