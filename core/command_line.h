// Requests from the command line, for trying the handler out without a web server.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr std::size_t kInputCommandCount = 22;

/// The canned requests by their number; an empty text if a number has none. Directives like those
/// of printf mark where arguments go. Two requests lack their last brace; `json_parser` does not
/// need it.
extern const char* const INPUT_COMMAND[kInputCommandCount];

/// 1 once a request from the command line is dispatched. For service staff with a debugger; the
/// handler does not read it.
extern std::uint8_t g_bCmdLine;

/// Builds a request from the arguments and dispatches it without a session check.
///
/// The first argument, which must be present, is the number of a canned request, or 100 for a whole
/// request in the second argument; docs/command-line.md describes the others. Numbers are read by
/// `ParseInt32`. A request that cannot be built stays empty and so ends as an unknown command. An
/// unknown number is rejected on standard error without a log line.
/// @return the exit status of the program
int RunCommandLine(int argc, const char* const* argv);
