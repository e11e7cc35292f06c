#pragma once

namespace harness {

/// Makes a system call of this process, and of those that it becomes and starts, fail
/// (SYS_flock and so on) with an error number. It cannot be undone, so
/// call it in a separate process.
/// @return false where this is not supported, for example in an emulator
bool RefuseSystemCall(long number, int error);

/// From now on the system kills this process, and those it becomes and starts, with SIGSYS instead
/// of carrying out this system call.
/// @return false where there is no such thing, in an emulator for one
bool EndAtSystemCall(long number);

}  // namespace harness
