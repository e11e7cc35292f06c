// From a code byte to the word that clients know it by.
#pragma once

#include <cstddef>
#include <cstdint>

/// The words for the codes 0, 1, 2, ... and the one for every code behind them.
template <std::size_t Count>
struct WordTable {
  const char* words[Count];
  const char* otherwise;

  constexpr const char* operator[](std::uint8_t code) const {
    return code < Count ? words[code] : otherwise;
  }
};
