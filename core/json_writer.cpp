#include "core/json_writer.h"

#include <cstring>

void JsonWriter::Text(std::string_view key, std::string_view text) {
  Key(key);
  text_.Append('"');
  text_.Append(text);
  text_.Append('"');
}

void JsonWriter::EscapedText(std::string_view key, std::string_view text) {
  Key(key);
  text_.Append('"');
  for (const char c : text) {
    AppendEscaped(c);
  }
  text_.Append('"');
}

void JsonWriter::Number(std::string_view key, std::int64_t number) {
  Key(key);
  text_.AppendNumber(number);
}

void JsonWriter::QuotedNumber(std::string_view key, std::int64_t number) {
  Key(key);
  text_.Append('"');
  text_.AppendNumber(number);
  text_.Append('"');
}

void JsonWriter::Bare(std::string_view key, std::string_view value) {
  Key(key);
  text_.Append(value);
}

TextBuilder& JsonWriter::BeginText(std::string_view key) {
  Key(key);
  text_.Append('"');
  return text_;
}

void JsonWriter::BeginObject(std::string_view key) {
  Key(key);
  Begin('{');
}

void JsonWriter::BeginElement() {
  Separate();
  Begin('{');
}

void JsonWriter::BeginArray(std::string_view key) {
  Key(key);
  Begin('[');
}

void JsonWriter::Separate() {
  if (!first_) {
    text_.Append(',');
  }
  first_ = false;
}

void JsonWriter::Key(std::string_view key) {
  constexpr std::string_view kBehind = "\":";
  Separate();
  char* const place = text_.Extend(1 + key.size() + kBehind.size());
  place[0] = '"';
  std::memcpy(place + 1, key.data(), key.size());
  std::memcpy(place + 1 + key.size(), kBehind.data(), kBehind.size());
}

void JsonWriter::Begin(char bracket) {
  text_.Append(bracket);
  first_ = true;
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
