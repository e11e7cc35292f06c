#include "streaming/settings_file.h"

#include "core/line_reader.h"
#include "core/text.h"
#include "core/text_builder.h"

namespace {

/// The longest line, its line feed and the NUL included. What does not fit is taken for a line of
/// its own.
constexpr std::size_t kLineSize = 256;

/// The setting that a line is about, or null. The line only has to begin with the key, so of two
/// keys that it begins with ("server" and "serverurl") the longer one is meant.
const SettingField* FieldOfLine(const SettingTable& table, const char* line) {
  const SettingField* found = nullptr;
  for (const SettingField& field : table) {
    if (StartsWith(line, field.key) && (found == nullptr || field.key.size() > found->key.size())) {
      found = &field;
    }
  }
  return found;
}

void Store(char* record, const SettingField& field, std::string_view value) {
  CopyText(record + field.offset, field.capacity, value);
}

}  // namespace

void ReadSettings(const SettingTable& table, const LockedFile& file, char* record) {
  LineReader<kLineSize> lines(file.File());
  while (const char* line = lines.Next()) {
    const SettingField* const field = FieldOfLine(table, line);
    if (field == nullptr) {
      continue;
    }
    const std::string_view value = ValueAfterKey(line, field->key);
    // A key without a value leaves the setting as an earlier line has set it.
    if (!value.empty()) {
      Store(record, *field, value);
    }
  }
  if (lines.Failed()) {
    for (const SettingField& field : table) {
      Store(record, field, field.default_value);
    }
  }
}

void WriteSettings(const SettingTable& table, const LockedFile& file, const char* record) {
  TextBuilder text;
  for (const SettingField& field : table) {
    text.Append(field.key);
    text.Append('\t');
    text.Append(record + field.offset);
    text.Append('\n');
  }
  // The command that changes a setting has no word for a full or write-protected disk; the daemon
  // then goes on with the old file.
  file.Write(text.View());
}
