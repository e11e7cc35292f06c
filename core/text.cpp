#include "core/text.h"

#include <algorithm>

DecimalText::DecimalText(std::int64_t number, std::size_t width) {
  std::uint64_t rest =
      number < 0 ? 0 - static_cast<std::uint64_t>(number) : static_cast<std::uint64_t>(number);
  // Most numbers fit into 32 bits, and the board needs a library call to divide 64 bits.
  for (; rest > UINT32_MAX; rest /= 10) {
    text_[--first_] = static_cast<char>('0' + rest % 10);
  }
  auto low = static_cast<std::uint32_t>(rest);
  do {
    text_[--first_] = static_cast<char>('0' + low % 10);
    low /= 10;
  } while (low != 0);
  const std::size_t sign = number < 0 ? 1 : 0;
  while (sizeof text_ - first_ + sign < width && first_ > sign) {
    text_[--first_] = '0';
  }
  if (number < 0) {
    text_[--first_] = '-';
  }
}

std::int64_t ParseInt64(const char* text) {
  while (IsSpace(*text)) {
    ++text;
  }
  const bool negative = *text == '-';
  if (negative || *text == '+') {
    ++text;
  }
  // Accumulated as a negative number: there is one more of those than of positive numbers.
  constexpr std::int64_t kLowestTenth = INT64_MIN / 10;
  constexpr std::int64_t kLowestDigit = -(INT64_MIN % 10);
  std::int64_t value = 0;
  for (; *text >= '0' && *text <= '9'; ++text) {
    const std::int64_t digit = *text - '0';
    if (value < kLowestTenth || (value == kLowestTenth && digit > kLowestDigit)) {
      return negative ? INT64_MIN : INT64_MAX;
    }
    value = value * 10 - digit;
  }
  if (negative) {
    return value;
  }
  return value == INT64_MIN ? INT64_MAX : -value;
}

std::int32_t ParseInt32(const char* text) {
  const std::int64_t value = ParseInt64(text);
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
}
