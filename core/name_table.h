// Translates the camera's codes into the names that clients know.
#pragma once

#include <cstddef>

/// The names of the codes 0 to `Count - 1`, and one name for all other codes.
template <std::size_t Count>
struct NameTable {
  const char* names[Count];
  const char* otherwise;

  constexpr const char* operator[](int code) const {
    return code >= 0 && static_cast<std::size_t>(code) < Count ? names[code] : otherwise;
  }
};
