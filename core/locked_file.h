// Files of the settings folder, used by one handler at a time.
#pragma once

#include <string_view>

#include "core/os.h"

/// A file of the settings folder that is open during the lifetime of this object. No other handler
/// then has a file of the folder open, so no update is lost and no reader sees a file that is being
/// written. Other programs need not know about the lock.
///
/// The lock is on the folder, so it works without a file and when a file is replaced. If a process
/// cannot lock within a second, it continues without. Do not create a second object during the
/// lifetime of one: it would wait for the first.
class LockedFile {
 public:
  /// @param path  must outlive the object
  /// @param open  os::OpenForReading, or os::OpenForUpdate to call `Write` later
  LockedFile(const char* path, os::Descriptor (*open)(const char* path))
      : path_(path), file_(open(path)) {}

  /// Not open if the file is missing or inaccessible.
  [[nodiscard]] const os::Descriptor& File() const { return file_; }

  /// Replaces the file's whole contents; creates a missing file. A failure is logged at level 1.
  /// @return false on failure; the old contents are kept
  bool Write(std::string_view contents) const;

 private:
  struct FolderLock {
    FolderLock();
    os::Descriptor folder;
  };

  const char* path_;
  FolderLock lock_;  // taken before the file is opened, released after it is closed
  os::Descriptor file_;
};
