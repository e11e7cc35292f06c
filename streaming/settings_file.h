// Settings files: the small text files in /var/tmp/lighttpd/ that hold the settings of the web
// interface. Each has one line "key", tab, "value" per setting and is described by a table. This is
// the only reader and writer for all of them, and tells the camera control daemon about changes.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string_view>
#include <type_traits>

#include "core/locked_file.h"

/// One setting of a file: its key, the field of the record for its value, and the default value
/// that it has without a file. The texts are arrays, not pointers, which the loader would have to
/// relocate for every request.
struct SettingField {
  char key[24];
  std::size_t offset;
  std::size_t capacity;  ///< of the field, including the terminating NUL
  char default_value[16];
};

/// The row for the field `name` of `Record`. The field has the name of the key.
#define SETTING_FIELD(Record, name, default_value) \
  SettingField { #name, offsetof(Record, name), sizeof(Record::name), default_value }

/// A file's settings, in the order of its lines. It does not own its rows.
using SettingTable = std::initializer_list<SettingField>;

/// The parts of `SettingsFile` that do not depend on the type; `record` is the record's first byte.
void ReadSettings(const SettingTable& table, const LockedFile& file, char* record);
void WriteSettings(const SettingTable& table, const LockedFile& file, const char* record);

/// Sends the renewal notice, a message of 13 bytes that makes the control daemon read the settings
/// files again. It has no reply. If the daemon cannot be reached, the process ends (see
/// `socket_send_msg`).
/// Header: class 1, code 1, payload length 1, streaming flag 1, sender 0. Payload: one byte, 1 if
/// the daemon must reconnect its stream.
/// @param renew_reconnect  1 sets the payload to 1, any other value to 0
/// @return 0
int RenewSetting(int renew_reconnect);

/// A kind of settings file. `Record` is a structure of texts in arrays of fixed size, one per
/// setting: its fields are the keys, in the order of the lines. The table consists of
/// `SETTING_FIELD`s.
template <typename Record>
class SettingsFile {
  static_assert(std::is_trivially_copyable_v<Record> && std::is_standard_layout_v<Record> &&
                    alignof(Record) == 1,
                "a record consists of texts only");

 public:
  constexpr explicit SettingsFile(const SettingTable& table) : table_(table) {}

  /// Fills the record from the file. If the file is missing or unreadable, every setting has its
  /// default value. A setting that an existing file lacks is empty; of two lines with the same key
  /// the later one counts. A value ends at white space and is truncated to its field. The file is
  /// not created.
  void Read(const char* path, Record& record) const {
    Read(LockedFile(path, os::OpenForReading), record);
  }

  /// Replaces the file with all settings of the record, including empty ones. A failure is logged
  /// at level 1 but otherwise ignored: the reply does not depend on it.
  void Write(const char* path, const Record& record) const {
    Write(LockedFile(path, os::OpenForUpdate), record);
  }

  /// Reads the file, passes the record to `change` and rewrites the file. Settings that it does not
  /// change keep their values. `change` must not use another settings file, because the folder is
  /// locked.
  template <typename Change>
  void Rewrite(const char* path, Change change) const {
    const LockedFile file(path, os::OpenForUpdate);
    Record record;
    Read(file, record);
    change(record);
    Write(file, record);
  }

  /// Rewrites the file and sends the renewal notice, as every Set command does.
  template <typename Change>
  void Update(const char* path, Change change) const {
    Rewrite(path, change);
    RenewSetting(0);
  }

  /// The same, and calls `trace` with the record before and after the change. The log lines are
  /// known by the misspelled word "bofore".
  template <typename Change, typename Trace>
  void UpdateTraced(const char* path, Change change, Trace trace) const {
    Update(path, [&](Record& record) {
      trace("bofore", record);
      change(record);
      trace("after", record);
    });
  }

 private:
  void Read(const LockedFile& file, Record& record) const {
    record = Record();
    ReadSettings(table_, file, reinterpret_cast<char*>(&record));
  }
  void Write(const LockedFile& file, const Record& record) const {
    WriteSettings(table_, file, reinterpret_cast<const char*>(&record));
  }

  SettingTable table_;
};
