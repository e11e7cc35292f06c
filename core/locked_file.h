// Files of the settings folder, each used by one handler at a time.
#pragma once

#include <string_view>

#include "core/os.h"

/// A file of the settings folder, open for as long as this object lives. Meanwhile no other handler
/// has such a file open, so nobody's update is lost and no reader meets a file that is being
/// written. Other programs need not know of the lock.
///
/// The lock is on the folder: no file has to exist for it, and replacing a file does not get around
/// it. A process that gets no lock within a second goes on without one. Never create a second
/// object while one lives: it would wait for the first.
class LockedFile {
 public:
  /// @param path  has to outlive the object
  /// @param open  os::OpenForReading, or os::OpenForUpdate to call `Write` later
  LockedFile(const char* path, os::Descriptor (*open)(const char* path))
      : path_(path), file_(open(path)) {}

  /// Not open when the file is missing or out of reach.
  [[nodiscard]] const os::Descriptor& File() const { return file_; }

  /// Replaces the file's whole contents; creates the file when it is missing.
  /// @return false, with a log line at level 1, when that fails; the old contents stay
  bool Write(std::string_view contents) const;

 private:
  class FolderLock {
   public:
    FolderLock();

   private:
    os::Descriptor folder_;
  };

  const char* path_;
  FolderLock lock_;  // taken before the file is opened, given back after it is closed
  os::Descriptor file_;
};
