#include "core/text.h"

#include <cstdlib>

std::int32_t DecimalValue(const char* text) {
  constexpr int kBase = 10;
  const long long value = std::strtoll(text, nullptr, kBase);
  if (value < INT32_MIN) {
    return INT32_MIN;
  }
  return value > INT32_MAX ? INT32_MAX : static_cast<std::int32_t>(value);
}
