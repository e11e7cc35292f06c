#pragma once

#include <string>
#include <vector>

namespace harness {

/// Throws std::system_error with errno and `what` unless a system call has succeeded.
void Check(bool succeeded, const std::string& what);

/// The array that execve and posix_spawn take: a pointer to each text, and a null pointer. Valid as
/// long as the texts are not changed.
std::vector<char*> Pointers(std::vector<std::string>& texts);

}  // namespace harness
