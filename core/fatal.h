// Ends a request that cannot be answered.
#pragma once

/// Logs `message` at level 1 and ends the process with status 1; no reply is printed.
[[noreturn]] void Fatal(const char* message);
