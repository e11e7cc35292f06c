// Reads a command's parameters from its "Params" text.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/json_parser.h"

/// A parameter that is a name or an address: truncated to 30 characters.
using ShortText = char[31];

/// Reads a text parameter, truncated to the size of the array.
/// @return false if the member is missing
template <std::size_t Size>
bool ReadParameter(const char* params, const char* key, char (&value)[Size]) {
  return json_parser(params, key, value) != nullptr;
}

/// Reads a parameter as a decimal number (see `ParseInt32`).
/// @return false if the member is missing
bool ReadParameter(const char* params, const char* key, std::int32_t& value);

/// Reads several parameters, given as pairs of key and value, up to the first that is missing.
/// @return false if one is missing
inline bool ReadParameters(const char* /*params*/) { return true; }
template <typename Value, typename... More>
bool ReadParameters(const char* params, const char* key, Value& value, More&... more) {
  return ReadParameter(params, key, value) && ReadParameters(params, more...);
}
