// From a code to the word that clients know it by.
#pragma once

#include <cstddef>

/// The words for the codes 0, 1, 2, ... and the one for every other code.
template <std::size_t Count>
struct WordTable {
  const char* words[Count];
  const char* otherwise;

  constexpr const char* operator[](int code) const {
    return code >= 0 && static_cast<std::size_t>(code) < Count ? words[code] : otherwise;
  }
};
