// Takes single values out of the request text.
#pragma once

#include <cstddef>

/// Where a value ends up: the caller's array, with its size.
struct ValueBuffer {
  template <std::size_t Size>
  ValueBuffer(char (&array)[Size]) : text(array), size(Size) {}
  ValueBuffer(char* buffer, std::size_t buffer_size) : text(buffer), size(buffer_size) {}

  char* text;
  std::size_t size;
};

/// Extracts one scalar member by its name from a compact JSON text.
///
/// This is a flat scan, not a JSON parser, and clients depend on its ways: the first occurrence of
/// `key` anywhere in the text counts, even inside another name or a value; the value starts right
/// after the next ':' (after its '"', if there is one) and ends at the first '"', ',' or '}', which
/// must come before the end of the text; escapes are not recognised and a nested object yields its
/// "{".
///
/// @param text  the text to search
/// @param key   the member's name, without quotes
/// @param out   receives the value, cut to the array's size and always terminated; left empty on
///              failure
/// @return the character in `text` that ended the value, or null; each failure is reported to the
///         system log at priority 3
const char* json_parser(const char* text, const char* key, ValueBuffer out);
