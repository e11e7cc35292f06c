#pragma once

namespace harness {

/// From now on the system refuses this process, and those it becomes and starts, a system call
/// (SYS_flock and so on) with an error number. There is no way back: for a process of its own.
/// @return false where there is no such refusal, in an emulator for one
bool RefuseSystemCall(long number, int error);

}  // namespace harness
