#include "core/json_writer.h"

#include "core/text.h"

void JsonWriter::Text(std::string_view key, std::string_view text) {
  char* const value = Member(key, text.size() + 2);
  *value = '"';
  *CopyShortText(value + 1, text) = '"';
}

void JsonWriter::EscapedText(std::string_view key, std::string_view text) {
  BeginText(key);
  for (const char c : text) {
    AppendEscaped(c);
  }
  EndText();
}

void JsonWriter::Number(std::string_view key, std::int64_t number) {
  Bare(key, DecimalText(number).View());
}

void JsonWriter::QuotedNumber(std::string_view key, std::int64_t number) {
  Text(key, DecimalText(number).View());
}

void JsonWriter::Bare(std::string_view key, std::string_view value) {
  CopyShortText(Member(key, value.size()), value);
}

TextBuilder& JsonWriter::BeginText(std::string_view key) {
  *Member(key, 1) = '"';
  return text_;
}

void JsonWriter::BeginObject(std::string_view key) {
  *Member(key, 1) = '{';
  first_ = true;
}

void JsonWriter::BeginElement() {
  Separate();
  text_.Append('{');
  first_ = true;
}

void JsonWriter::BeginArray(std::string_view key) {
  *Member(key, 1) = '[';
  first_ = true;
}

void JsonWriter::Separate() {
  if (!first_) {
    text_.Append(',');
  }
  first_ = false;
}

char* JsonWriter::Member(std::string_view key, std::size_t value_length) {
  Separate();
  char* next = text_.Extend(key.size() + sizeof "\"\":" - 1 + value_length);
  *next++ = '"';
  next = CopyShortText(next, key);
  *next++ = '"';
  *next++ = ':';
  return next;
}

void JsonWriter::End(char bracket) {
  text_.Append(bracket);
  first_ = false;
}

void JsonWriter::AppendEscaped(char c) {
  constexpr char kDigits[] = "0123456789abcdef";
  const auto byte = static_cast<std::uint8_t>(c);
  if (byte < ' ') {
    text_.Append("\\u00");
    text_.Append(kDigits[byte >> 4]);
    text_.Append(kDigits[byte & 0x0F]);
    return;
  }
  if (c == '"' || c == '\\') {
    text_.Append('\\');
  }
  text_.Append(c);
}
