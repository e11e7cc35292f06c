#include "core/locked_file.h"

#include "core/dlog.h"

LockedFile::FolderLock::FolderLock() : folder_(os::OpenForReading("/var/tmp/lighttpd")) {
  if (folder_.IsOpen()) {
    os::LockInTime(folder_);
  }
}

bool LockedFile::Write(std::string_view contents) const {
  const bool written =
      file_.IsOpen() ? os::Rewrite(file_, contents) : os::WriteFile(path_, contents);
  if (!written) {
    DLOG(1, "cannot write [%s]", path_);
  }
  return written;
}
