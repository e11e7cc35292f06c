#include "core/text_builder.h"

#include <cstdlib>
#include <cstring>

#include "core/fatal.h"
#include "core/text.h"

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

void TextBuilder::AppendNumber(std::int64_t number) { Append(DecimalText(number).View()); }
