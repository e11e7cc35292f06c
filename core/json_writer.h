// Writes the members of a JSON object, for the "Data" of the replies.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/text_builder.h"

/// Appends "key":value members to a text, with commas between them. Keys and texts are not escaped,
/// except by `EscapedText`: clients rely on the raw form.
class JsonWriter {
 public:
  /// "key":"text"
  void Text(std::string_view key, std::string_view text);
  /// "key":"text" for a text from outside the camera, such as an event's title: quotes, backslashes
  /// and control characters are escaped.
  void EscapedText(std::string_view key, std::string_view text);
  /// "key":number
  void Number(std::string_view key, std::int64_t number);
  /// "key":"number", because clients expect some numbers as texts.
  void QuotedNumber(std::string_view key, std::int64_t number);
  /// "key":value for a number that is stored as text.
  void Bare(std::string_view key, std::string_view value);
  /// "key":" and then what the caller appends, up to the matching `EndText`.
  TextBuilder& BeginText(std::string_view key);
  void EndText() { text_.Append('"'); }

  /// "key":{ up to the matching `EndObject`.
  void BeginObject(std::string_view key);
  /// { as an element of an array.
  void BeginElement();
  void EndObject() { End('}'); }
  /// "key":[ up to the matching `EndArray`.
  void BeginArray(std::string_view key);
  void EndArray() { End(']'); }

  /// Makes room for `length` more bytes.
  void Reserve(std::size_t length) { text_.Reserve(length); }

  [[nodiscard]] std::string_view View() const { return text_.View(); }

 private:
  void Separate();
  /// Appends the key and makes room for a value of `value_length` bytes, which the caller fills.
  char* Member(std::string_view key, std::size_t value_length);
  void AppendEscaped(char c);
  void End(char bracket);

  TextBuilder text_;
  bool first_ = true;
};
