#include "core/json_parser.h"

#include <cstring>

#include "core/dlog.h"

namespace {

bool EndsValue(char c) { return c == '"' || c == ',' || c == '}'; }

const char* BufferOver(std::size_t index, std::size_t length) {
  LogToSystem(kLogError, "error: json_parser() buffer over %d/%d\n", static_cast<int>(index),
              static_cast<int>(length));
  return nullptr;
}

}  // namespace

const char* json_parser(const char* text, const char* key, ValueBuffer out) {
  out.text[0] = '\0';
  const char* const found = std::strstr(text, key);
  if (found == nullptr) {
    LogToSystem(kLogError, "error: json_parser() key [%s] does not appear\n", key);
    return nullptr;
  }
  const char* const colon = std::strchr(found + std::strlen(key), ':');
  if (colon == nullptr) {
    LogToSystem(kLogError, "error: json_parser() terminater : does not appear\n");
    return nullptr;
  }

  const char* const value = colon[1] == '"' ? colon + 2 : colon + 1;
  const auto start = static_cast<std::size_t>(value - text);
  const std::size_t remaining = std::strlen(value);
  const std::size_t length = start + remaining;
  if (remaining < 1) {
    return BufferOver(start, length);
  }
  if (EndsValue(*value)) {
    return value;
  }

  std::size_t value_length = 1;
  while (value_length < remaining && !EndsValue(value[value_length])) {
    ++value_length;
  }
  if (value_length == remaining) {
    return BufferOver(length, length);
  }
  const std::size_t kept = value_length < out.size ? value_length : out.size - 1;
  std::memcpy(out.text, value, kept);
  out.text[kept] = '\0';
  return value + value_length;
}
