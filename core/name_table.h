// Translates the camera's codes into the names that clients know.
#pragma once

#include <cstddef>

/// The names of the codes 0 to `Count - 1`, and one name for all other codes. They are arrays, not
/// pointers, which the loader would have to relocate for every request.
template <std::size_t Count>
struct NameTable {
  char names[Count][16];
  char otherwise[16];

  constexpr const char* operator[](int code) const {
    return code >= 0 && static_cast<std::size_t>(code) < Count ? names[code] : otherwise;
  }
};
