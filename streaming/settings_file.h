// Settings files: the small text files under /var/tmp/lighttpd/ in which the web interface keeps
// its settings. Each holds one line "key", tab, "value" per setting and is described by one table;
// this is the one reader and the one writer of them all.
#pragma once

#include <cstddef>
#include <string_view>
#include <type_traits>

#include "core/locked_file.h"
#include "streaming/renewal_notice.h"

/// One setting of a file: its key, the field of the file's record that holds its value, and the
/// value that it has while there is no file.
struct SettingField {
  std::string_view key;
  std::size_t offset;
  std::size_t capacity;  ///< of the field, the terminating NUL included
  std::string_view default_value;
};

/// The row for the field `name` of `Record`. A field is named as its key in the file.
#define SETTING_FIELD(Record, name, default_value) \
  SettingField { #name, offsetof(Record, name), sizeof(Record::name), default_value }

/// A file's settings, in the order of its lines.
struct SettingTable {
  const SettingField* fields;
  std::size_t count;

  [[nodiscard]] const SettingField* begin() const { return fields; }
  [[nodiscard]] const SettingField* end() const { return fields + count; }
};

/// A kind of settings file. `Record` is a plain structure of texts in arrays of fixed size, one per
/// setting; its table is built with `SETTING_FIELD`.
template <typename Record>
class SettingsFile {
  static_assert(std::is_trivially_copyable_v<Record> && std::is_standard_layout_v<Record> &&
                    alignof(Record) == 1,
                "a record consists of texts only");

 public:
  template <std::size_t Count>
  constexpr explicit SettingsFile(const SettingField (&fields)[Count]) : table_{fields, Count} {}

  /// Fills the record from the file. While there is none, or none that can be read, every setting
  /// has its default value. A setting that an existing file does not mention is empty; of two lines
  /// with the same key the later one counts. A value ends at its first blank and is cut to the
  /// field. The file is not created.
  void Read(const char* path, Record& record) const;

  /// Replaces the file with all settings of the record, empty ones included. When it cannot be
  /// written that is logged, and the command succeeds all the same.
  void Write(const char* path, const Record& record) const;

  /// Reads the file, lets `change` change the record and rewrites the file. Untouched settings keep
  /// their values. The file is locked meanwhile, so `change` must not use another settings file.
  template <typename Change>
  void Rewrite(const char* path, Change change) const {
    const LockedFile file(path, os::OpenForUpdate);
    Record record;
    Read(file, record);
    change(record);
    Write(file, record);
  }

  /// Rewrites the file and tells the control daemon: what every command does that sets something.
  template <typename Change>
  void Update(const char* path, Change change) const {
    Rewrite(path, change);
    RenewSetting(0);
  }

  /// The same, with `trace` called for the record before and after the change. It is passed the
  /// word for when: "bofore" is how people who read these logs know the line.
  template <typename Change, typename Trace>
  void UpdateTraced(const char* path, Change change, Trace trace) const {
    Update(path, [&](Record& record) {
      trace("bofore", record);
      change(record);
      trace("after", record);
    });
  }

 private:
  void Read(const LockedFile& file, Record& record) const;
  void Write(const LockedFile& file, const Record& record) const;

  SettingTable table_;
};

/// `SettingsFile` without the record's type: `record` is its first byte.
void ReadSettings(const SettingTable& table, const LockedFile& file, char* record);
void WriteSettings(const SettingTable& table, const LockedFile& file, const char* record);

template <typename Record>
void SettingsFile<Record>::Read(const LockedFile& file, Record& record) const {
  record = Record();
  ReadSettings(table_, file, reinterpret_cast<char*>(&record));
}

template <typename Record>
void SettingsFile<Record>::Write(const LockedFile& file, const Record& record) const {
  WriteSettings(table_, file, reinterpret_cast<const char*>(&record));
}

template <typename Record>
void SettingsFile<Record>::Read(const char* path, Record& record) const {
  Read(LockedFile(path, os::OpenForReading), record);
}

template <typename Record>
void SettingsFile<Record>::Write(const char* path, const Record& record) const {
  Write(LockedFile(path, os::OpenForUpdate), record);
}
