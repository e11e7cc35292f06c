#include "core/dispatch.h"

#include <cstring>

#include "core/command_table.h"
#include "core/dlog.h"
#include "core/reply.h"

namespace {

/// @return whether the parameters, if there are any, are accepted
bool ParseParameters(Command& command, const char* body) {
  constexpr char kParamsMember[] = "\"Params\":";
  const char* const member = std::strstr(body, kParamsMember);
  if (member == nullptr) {
    return true;
  }
  const int refusal = command.Parse(member + std::strlen(kParamsMember));
  if (refusal != 0) {
    DLOG(1, "requested error ret=%d, params=%s", refusal, member);
  }
  return refusal == 0;
}

}  // namespace

int Dispatch(const CommandRow* row, const char* name, const char* body) {
  if (row == nullptr) {
    DLOG(1, "command error = %s", name);
    PrintReply(kCommandErrorReply);
    return 1;
  }
  const std::unique_ptr<Command> command = row->create();
  command->Prepare(row->preset, name, !row->Has(kSilentReply));
  if (!row->Has(kSilentRequest)) {
    DLOG(command->LogLevel(), "rcv post_data = %s", body);
  }
  if (!ParseParameters(*command, body)) {
    PrintReply(kRequestedErrorReply);
    return 0;
  }
  command->Transmit();
  command->Output();
  return 0;
}
