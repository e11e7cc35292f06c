// Texts in fixed arrays, and decimal numbers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// Size of the buffers for texts of unspecified length: the values of a request, the request of the
/// command line, log messages. Longer texts are truncated.
constexpr std::size_t kTextSize = 5000;

/// Copies the bytes of a short text. It is a loop, because for a few bytes a call of the small C
/// library's memcpy takes longer.
/// @return the end of the copy
inline char* CopyShortText(char* to, std::string_view from) {
  for (const char c : from) {
    *to++ = c;
  }
  return to;
}

/// Copies `from` into a buffer of `size` bytes, truncated to leave room for the terminating NUL.
inline void CopyText(char* to, std::size_t size, std::string_view from) {
  const std::size_t length = from.size() < size ? from.size() : size - 1;
  std::memcpy(to, from.data(), length);
  to[length] = '\0';
}

template <std::size_t Size>
void CopyText(char (&to)[Size], std::string_view from) {
  CopyText(to, Size, from);
}

/// Appends `from` to the text in the array, truncated likewise.
template <std::size_t Size>
void AppendText(char (&to)[Size], std::string_view from) {
  const std::size_t used = strnlen(to, Size - 1);
  CopyText(to + used, Size - used, from);
}

/// Whether `text` begins with `prefix`.
inline bool StartsWith(const char* text, std::string_view prefix) {
  return std::strncmp(text, prefix.data(), prefix.size()) == 0;
}

/// White space as the C locale has it.
constexpr bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// The decimal number at the start of `text`: leading white space and one sign are accepted, the
/// first non-digit ends it, and without digits it is 0. Numbers beyond 32 bits saturate on every
/// build.
std::int32_t ParseInt32(const char* text);

/// Like `ParseInt32`, but saturates at 64 bits.
std::int64_t ParseInt64(const char* text);

/// A number in decimal, padded with leading zeros to `width` characters (at most 20), including the
/// sign.
class DecimalText {
 public:
  explicit DecimalText(std::int64_t number, std::size_t width = 0);

  [[nodiscard]] std::string_view View() const { return {text_ + first_, sizeof text_ - first_}; }

 private:
  char text_[sizeof "-9223372036854775808" - 1];
  std::size_t first_ = sizeof text_;
};

/// Writes a number into the array, in decimal.
template <std::size_t Size>
void CopyNumber(char (&to)[Size], std::int32_t number) {
  static_assert(Size >= sizeof "-2147483648");
  CopyText(to, DecimalText(number).View());
}

/// The low 16 bits of a number, as a signed number (70000 becomes 4464, 40000 becomes -25536).
constexpr std::int16_t TruncateToInt16(std::int32_t number) {
  return static_cast<std::int16_t>(number);
}
