// Writes the members of a JSON object, as the "Data" of the replies needs them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/text_builder.h"

/// Appends "key":value members to a text and puts the commas between them. Keys and texts are
/// written as they stand, unless it says otherwise: clients rely on the raw form.
class JsonWriter {
 public:
  /// "key":"text"
  void Text(std::string_view key, std::string_view text);
  /// "key":"text" with a text that anybody may have written: quotes, backslashes and control
  /// characters are escaped.
  void EscapedText(std::string_view key, std::string_view text);
  /// "key":number
  void Number(std::string_view key, std::int64_t number);
  /// "key":"number": some clients read numbers as texts.
  void QuotedNumber(std::string_view key, std::int64_t number);
  /// "key":value with a value that is stored as text and printed bare.
  void Bare(std::string_view key, std::string_view value);
  /// "key":"..." with a text that the caller appends piece by piece, up to the matching `EndText`.
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

  /// Makes room for `length` more bytes at once.
  void Reserve(std::size_t length) { text_.Reserve(length); }

  [[nodiscard]] std::string_view View() const { return text_.View(); }

 private:
  void Separate();
  void Key(std::string_view key);
  void AppendEscaped(char c);
  void Begin(char bracket);
  void End(char bracket);

  TextBuilder text_;
  bool first_ = true;
};
