#include "core/text.h"

#include <cstdlib>

DecimalText::DecimalText(std::int64_t number) {
  std::uint64_t rest =
      number < 0 ? 0 - static_cast<std::uint64_t>(number) : static_cast<std::uint64_t>(number);
  do {
    text_[--first_] = static_cast<char>('0' + rest % 10);
    rest /= 10;
  } while (rest != 0);
  if (number < 0) {
    text_[--first_] = '-';
  }
}

std::int32_t DecimalValue(const char* text) {
  constexpr int kBase = 10;
  const long long value = std::strtoll(text, nullptr, kBase);
  if (value < INT32_MIN) {
    return INT32_MIN;
  }
  return value > INT32_MAX ? INT32_MAX : static_cast<std::int32_t>(value);
}
