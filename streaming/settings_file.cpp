#include "streaming/settings_file.h"

#include <cstdint>
#include <cstring>

#include "core/daemon_socket.h"
#include "core/dlog.h"
#include "core/line_reader.h"
#include "core/message.h"
#include "core/text.h"
#include "core/text_builder.h"

namespace {

/// The setting of a line, or null. The line need only begin with the key; if it begins with two
/// keys ("server" and "serverurl"), the longer one counts.
const SettingField* FieldOfLine(const SettingTable& table, const char* line) {
  const SettingField* found = nullptr;
  std::size_t found_length = 0;
  for (const SettingField& field : table) {
    const std::string_view key = field.key;
    if (StartsWith(line, key) && key.size() > found_length) {
      found = &field;
      found_length = key.size();
    }
  }
  return found;
}

void Store(char* record, const SettingField& field, std::string_view value) {
  CopyText(record + field.offset, field.capacity, value);
}

}  // namespace

void ReadSettings(const SettingTable& table, const LockedFile& file, char* record) {
  LineReader<kSettingsLineSize> lines(file.File());
  while (const char* line = lines.Next()) {
    const SettingField* const field = FieldOfLine(table, line);
    if (field == nullptr) {
      continue;
    }
    const std::string_view value = ValueAfterKey(line, field->key);
    // A key without a value leaves the setting unchanged.
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
  file.Write(text.View());
}

int RenewSetting(int renew_reconnect) {
  constexpr std::uint16_t kPayloadLength = 1;
  constexpr unsigned char kControlDaemonIndex = 2;
  MessageHeader header;
  header.message_class = 1;
  header.payload_length = kPayloadLength;
  header.command_code = 1;
  header.streaming_flag = 1;
  unsigned char notice[kMessageHeaderSize + kPayloadLength];
  std::memcpy(notice, &header, sizeof header);
  notice[kMessageHeaderSize] = renew_reconnect == 1 ? 1 : 0;

  DLOG(2, "##### RenewSetting socket_send_msg() renew_reconnect %d", renew_reconnect);
  socket_send_msg(notice, sizeof notice, kControlDaemonIndex);
  return 0;
}
