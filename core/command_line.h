// The command line's road to a command: canned requests, to try the handler out without a web
// server.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr std::size_t kInputCommandCount = 22;

/// The canned requests by their number; empty texts where a number has none. Directives as of
/// printf stand where arguments go. Two of them lack their last brace, which nothing needs: values
/// are taken out of a request by their keys.
extern const char* const INPUT_COMMAND[kInputCommandCount];

/// 1 as soon as a request from the command line is on its way. For service staff with a debugger:
/// the handler itself does not read it.
extern std::uint8_t g_bCmdLine;

/// Builds the request that the arguments ask for and dispatches it without a session check.
///
/// The first argument, which there has to be, is the number of a canned request, or 100 for a whole
/// request as the second one; docs/command-line.md lists what the others mean. Numbers are read as
/// `ParseInt32` reads them. A request that could not be built stays empty and so ends as an
/// unknown command. A number that means nothing is refused on standard error, and nothing is
/// logged.
/// @return the exit status of the program
int RunCommandLine(int argc, const char* const* argv);
