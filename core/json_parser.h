// Extracts single values from the request text.
#pragma once

#include <cstddef>

/// The array that receives a value, with its size.
struct ValueBuffer {
  template <std::size_t Size>
  ValueBuffer(char (&array)[Size]) : text(array), size(Size) {}
  ValueBuffer(char* buffer, std::size_t buffer_size) : text(buffer), size(buffer_size) {}

  char* text;
  std::size_t size;
};

/// Extracts one scalar member by its name from a compact JSON text.
///
/// This is a flat scan, not a JSON parser, and clients depend on how it works: it takes the first
/// occurrence of `key` anywhere in the text, even inside another name or a value. The value starts
/// right after the next ':' (and the '"' after it, if there is one) and ends at the first '"', ','
/// or '}', which must be present. Escapes are not recognized; a nested object yields "{".
///
/// @param text  the text to search
/// @param key   the member's name, without quotes
/// @param out   receives the value, truncated to its size and always terminated; empty on failure
/// @return the character in `text` that ended the value, or null; each failure is reported to the
///         system log at priority 3
const char* json_parser(const char* text, const char* key, ValueBuffer out);
