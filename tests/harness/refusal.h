#pragma once

namespace harness {

/// Makes a system call (SYS_flock and so on) fail with an error number, in this process, in the
/// programs that it executes and in its children. It cannot be undone, so call it in a separate
/// process.
/// @return false where this is not supported, for example in an emulator
bool RefuseSystemCall(long number, int error);

/// Makes a system call kill its process with SIGSYS before it does anything; for the same
/// processes.
/// @return false where this is not supported, for example in an emulator
bool EndAtSystemCall(long number);

}  // namespace harness
