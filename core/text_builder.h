// A text that grows as it is written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// Builds a text of any length on the heap. Memory grows with the text (see `Reallocate`).
class TextBuilder {
 public:
  TextBuilder() = default;
  TextBuilder(const TextBuilder&) = delete;
  TextBuilder& operator=(const TextBuilder&) = delete;
  ~TextBuilder();

  void Append(std::string_view text) { std::memcpy(Extend(text.size()), text.data(), text.size()); }
  void Append(char c) { *Extend(1) = c; }
  /// In decimal, padded with leading zeros to `width` characters (at most 20), including the sign.
  void AppendNumber(std::int64_t number, std::size_t width = 0);
  /// In two upper-case hexadecimal digits.
  void AppendHexByte(std::uint8_t byte);

  /// Makes room for `length` more bytes.
  void Reserve(std::size_t length) {
    if (capacity_ - length_ <= length) {
      Grow(length);
    }
  }

  /// Appends `length` bytes for the caller to fill.
  char* Extend(std::size_t length) {
    Reserve(length);
    char* const place = text_ + length_;
    length_ += length;
    text_[length_] = '\0';
    return place;
  }

  /// The text so far, always terminated; valid until the text grows.
  [[nodiscard]] const char* Text() const { return text_ != nullptr ? text_ : ""; }
  [[nodiscard]] std::size_t Length() const { return length_; }
  [[nodiscard]] std::string_view View() const { return {Text(), length_}; }

 private:
  void Grow(std::size_t length);

  char* text_ = nullptr;
  std::size_t length_ = 0;
  std::size_t capacity_ = 0;
};
