#include "core/locked_file.h"

#include "core/dlog.h"

LockedFile::FolderLock::FolderLock() : folder(os::OpenForReading("/var/tmp/lighttpd")) {
  if (folder.IsOpen()) {
    os::LockInTime(folder);
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
