#pragma once

#include <cerrno>

namespace os {

/// Makes a system call, and repeats it while signals interrupt it.
/// @return what the system call returns
template <typename Call>
auto Uninterrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) {
    result = call();
  }
  return result;
}

}  // namespace os
