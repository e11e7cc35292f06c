#include "core/text_builder.h"

#include "core/memory.h"
#include "core/text.h"

TextBuilder::~TextBuilder() { Release(text_); }

void TextBuilder::Grow(std::size_t length) {
  constexpr std::size_t kFirstCapacity = 512;
  const std::size_t needed = length_ + length + 1;
  std::size_t capacity = capacity_ * 2 > kFirstCapacity ? capacity_ * 2 : kFirstCapacity;
  if (capacity < needed) {
    capacity = needed;
  }
  text_ = static_cast<char*>(Reallocate(text_, capacity_, capacity));
  capacity_ = capacity;
}

void TextBuilder::AppendNumber(std::int64_t number, std::size_t width) {
  Append(DecimalText(number, width).View());
}

void TextBuilder::AppendHexByte(std::uint8_t byte) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  Append(kDigits[byte >> 4]);
  Append(kDigits[byte & 0x0F]);
}
