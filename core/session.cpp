#include "core/session.h"

#include <cstring>

#include "core/dlog.h"
#include "core/line_reader.h"
#include "core/os.h"
#include "core/text.h"
#include "core/text_builder.h"

const char SESSION_INFO_PATH[] = "/var/tmp/lighttpd/.session";
char web_id[kWebIdSize];

namespace {

constexpr std::size_t kLineSize = 256;
constexpr char kIdKey[] = "ID";

void ReadStoredId(char (&stored_id)[kLineSize]) {
  stored_id[0] = '\0';
  LineReader<kLineSize> lines(SESSION_INFO_PATH);
  while (const char* line = lines.Next()) {
    if (StartsWith(line, kIdKey)) {
      CopyText(stored_id, ValueAfterKey(line, kIdKey));
      return;
    }
  }
}

}  // namespace

bool SessionIsValid() {
  char stored_id[kLineSize];
  ReadStoredId(stored_id);
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
  const std::int64_t now = os::Now();
  TextBuilder file;
  file.Append("ID\t");
  file.Append(web_id);
  file.Append("\nlifetime\t");
  file.AppendNumber(now + seconds_left);
  file.Append("\nsessiontime\t");
  file.AppendNumber(now);
  file.Append('\n');
  return os::WriteFile(SESSION_INFO_PATH, file.View());
}
