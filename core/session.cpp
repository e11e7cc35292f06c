#include "core/session.h"

#include <cstring>

#include "core/dlog.h"
#include "core/line_reader.h"
#include "core/locked_file.h"
#include "core/os.h"
#include "core/text.h"
#include "core/text_builder.h"

const char SESSION_INFO_PATH[] = "/var/tmp/lighttpd/.session";
char web_id[kTextSize];

namespace {

constexpr char kIdKey[] = "ID";

void ReadStoredId(const os::Descriptor& file, char (&stored_id)[kSettingsLineSize]) {
  stored_id[0] = '\0';
  LineReader<kSettingsLineSize> lines(file);
  while (const char* line = lines.Next()) {
    if (StartsWith(line, kIdKey)) {
      CopyText(stored_id, ValueAfterKey(line, kIdKey));
      return;
    }
  }
}

}  // namespace

bool SessionIsValid() {
  // No lock is needed: a renewal overwrites the id with the same id.
  const os::Descriptor file = os::OpenForReading(SESSION_INFO_PATH);
  char stored_id[kSettingsLineSize];
  ReadStoredId(file, stored_id);
  if (stored_id[0] == '\0') {
    DLOG(1, "session error no file [%s]", SESSION_INFO_PATH);
    return false;
  }
  if (std::strcmp(web_id, stored_id) != 0) {
    DLOG(1, "session error web:[%s] server:[%s]", web_id, stored_id);
    return false;
  }
  return true;
}

bool RenewSession(std::int64_t seconds_left) {
  const LockedFile file(SESSION_INFO_PATH, os::OpenForUpdate);
  // The session may have ended since it was checked, and another one begun. The login component
  // replaces the file, so this cannot overwrite a session that begins after the id is read.
  const bool was_checked = web_id[0] != '\0';
  char stored_id[kSettingsLineSize];
  ReadStoredId(file.File(), stored_id);
  if (was_checked && std::strcmp(web_id, stored_id) != 0) {
    return false;
  }
  const std::int64_t now = os::Now();
  TextBuilder text;
  text.Append("ID\t");
  text.Append(web_id);
  text.Append("\nlifetime\t");
  text.AppendNumber(now + seconds_left);
  text.Append("\nsessiontime\t");
  text.AppendNumber(now);
  text.Append('\n');
  return file.Write(text.View());
}
