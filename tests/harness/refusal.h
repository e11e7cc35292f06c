#pragma once

namespace harness {

/// Makes a system call of this process, and of those that it becomes and starts, fail
/// (SYS_flock and so on) with an error number. It cannot be undone, so
/// call it in a separate process.
/// @return false where this is not supported, for example in an emulator
bool RefuseSystemCall(long number, int error);

}  // namespace harness
