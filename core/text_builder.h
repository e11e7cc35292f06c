// A text that grows as it is written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Builds a text of any length on the heap. Memory grows with the text; when there is none left
/// the request ends (see `Fatal`).
class TextBuilder {
 public:
  TextBuilder() = default;
  TextBuilder(const TextBuilder&) = delete;
  TextBuilder& operator=(const TextBuilder&) = delete;
  ~TextBuilder();

  void Append(std::string_view text);
  void Append(char c) { Append(std::string_view(&c, 1)); }
  void AppendNumber(std::int64_t number);

  /// Makes room for `length` more bytes at once.
  void Reserve(std::size_t length);

  /// The text so far, always terminated; valid until the text grows.
  [[nodiscard]] const char* Text() const { return text_ != nullptr ? text_ : ""; }
  [[nodiscard]] std::size_t Length() const { return length_; }
  [[nodiscard]] std::string_view View() const { return {Text(), length_}; }

 private:
  char* text_ = nullptr;
  std::size_t length_ = 0;
  std::size_t capacity_ = 0;
};
