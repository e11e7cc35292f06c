#pragma once

namespace harness {

/// Makes a system call (SYS_flock and so on) of this process, and of those that it becomes and
/// starts, fail with an error number. It cannot be undone, so call it in a separate process.
/// @return false where this is not supported, for example in an emulator
bool RefuseSystemCall(long number, int error);

/// Makes a system call kill this process, and those that it becomes and starts, with SIGSYS before
/// it does anything.
/// @return false where this is not supported, for example in an emulator
bool EndAtSystemCall(long number);

}  // namespace harness
