#include "core/text_builder.h"

#include <cstdlib>
#include <cstring>

#include "core/fatal.h"

TextBuilder::~TextBuilder() { std::free(text_); }

void TextBuilder::Reserve(std::size_t length) {
  constexpr std::size_t kFirstCapacity = 512;
  const std::size_t needed = length_ + length + 1;
  if (needed <= capacity_) {
    return;
  }
  std::size_t capacity = capacity_ * 2 > kFirstCapacity ? capacity_ * 2 : kFirstCapacity;
  if (capacity < needed) {
    capacity = needed;
  }
  char* const grown = static_cast<char*>(std::realloc(text_, capacity));
  if (grown == nullptr) {
    Fatal("out of memory");
  }
  text_ = grown;
  capacity_ = capacity;
}

void TextBuilder::Append(std::string_view text) {
  Reserve(text.size());
  std::memcpy(text_ + length_, text.data(), text.size());
  length_ += text.size();
  text_[length_] = '\0';
}

void TextBuilder::AppendNumber(std::int64_t number) {
  constexpr std::size_t kLongestNumber = sizeof "-9223372036854775808";
  char digits[kLongestNumber];
  char* const end = digits + sizeof digits;
  char* first = end;
  std::uint64_t rest =
      number < 0 ? 0 - static_cast<std::uint64_t>(number) : static_cast<std::uint64_t>(number);
  do {
    *--first = static_cast<char>('0' + rest % 10);
    rest /= 10;
  } while (rest != 0);
  if (number < 0) {
    *--first = '-';
  }
  Append(std::string_view(first, static_cast<std::size_t>(end - first)));
}
