#include "core/reply.h"

#include "core/dlog.h"
#include "core/os.h"
#include "core/text_builder.h"

const char HTTP_HEADER[] =
    "Content-type: application/json\n"
    "Pragma: no-cache\n"
    "Cache-Control: no-cache\n"
    "Expires: Thu, 01 Dec 1994 16:00:00 GMT\n"
    "Content-Length:";

void PrintReply(std::string_view json) {
  TextBuilder reply;
  reply.Reserve(sizeof HTTP_HEADER + sizeof "4294967295\n\n" + json.size());
  reply.Append(HTTP_HEADER);
  reply.AppendNumber(static_cast<std::int64_t>(json.size()));
  reply.Append("\n\n");
  reply.Append(json);
  if (!os::WriteOutput(reply.View())) {
    DLOG(1, "cannot write the reply");
  }
}
