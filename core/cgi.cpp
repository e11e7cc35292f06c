#include "core/cgi.h"

#include <cstring>

#include "core/command_table.h"
#include "core/dispatch.h"
#include "core/dlog.h"
#include "core/json_parser.h"
#include "core/os.h"
#include "core/reply.h"
#include "core/request_body.h"
#include "core/session.h"
#include "core/text.h"

namespace {

bool IsPost() {
  const char* const method = os::Environment("REQUEST_METHOD");
  return method != nullptr && std::strcmp(method, "POST") == 0;
}

std::int32_t AnnouncedLength() {
  const char* const length = os::Environment("CONTENT_LENGTH");
  return length != nullptr ? ParseInt32(length) : 0;
}

/// Checks that the request has a command and a valid session; prints the error reply if not.
bool MayProceed(const char* body, bool has_command) {
  const bool has_session_id = json_parser(body, "SessionID", web_id) != nullptr;
  if (!has_command || !has_session_id) {
    DLOG(1, "format error post data:%s json member num:%d", body,
         (has_command ? 1 : 0) + (has_session_id ? 1 : 0));
    PrintReply(kFormatErrorReply);
    return false;
  }
  if (!SessionIsValid()) {
    PrintReply(kSessionErrorReply);
    return false;
  }
  return true;
}

}  // namespace

int ServeRequest() {
  if (!IsPost()) {
    return 1;
  }
  TextBuilder body;
  ReadRequestBody(AnnouncedLength(), body);

  char name[kTextSize];
  const bool has_command = json_parser(body.Text(), "Command", name) != nullptr;
  const CommandRow* const row = FindCommand(name);
  const bool needs_session = row == nullptr || !row->Has(kNeedsNoSession);
  if (needs_session && !MayProceed(body.Text(), has_command)) {
    return 0;
  }
  return Dispatch(row, name, body.Text());
}
