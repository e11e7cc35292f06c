#include "core/cmd/command.h"

#include <algorithm>
#include <iterator>

#include "core/daemon_socket.h"
#include "core/dlog.h"
#include "core/reply.h"
#include "core/text.h"

void Command::Prepare(const CommandPreset& preset, const char* name, bool log_reply) {
  request_header_.message_class = preset.message_class;
  request_header_.command_code = preset.command_code;
  request_header_.payload_length = preset.payload_length;
  timeout_ = {preset.timeout_seconds, 0};
  log_level_ = preset.log_level;
  CopyText(requested_name_, name);
  log_reply_ = log_reply;
}

void Command::Transmit() {
  request_header_.sender_process_id = os::ProcessId();
  daemon_timed_out_ = !ExchangeMessages(daemon_path_, timeout_, request_header_, message_, reply_);
  // Without a payload the result of the previous exchange is kept, initially "Success".
  if (Reply().Size() > 0) {
    result_ = Reply().U8(0);
  }
}

void Command::Output() {
  if (reply_json_.View().empty()) {
    BeginReply();
  } else {
    reply_json_.EndObject();  // the data
  }
  reply_json_.EndObject();
  reply_json_.EndObject();
  PrintReply(reply_json_.View());
  if (log_reply_) {
    DLOG(log_level_, "send res_str = %s", reply_json_.View().data());
  }
}

void Command::BeginReply() {
  // Daemons return more codes than clients know names for; all of those mean success.
  const char* const result = RESULT_STR[result_ < std::size(RESULT_STR) ? result_ : 0];
  reply_json_.BeginElement();
  reply_json_.BeginObject("Response");
  reply_json_.Text("Requested", requested_name_);
  reply_json_.Text("Result", result);
}

void Command::MakeTCString(std::uint32_t tc, char (&out)[kTimeCodeSize]) {
  constexpr char kDigits[] = "0123456789abcdef";
  constexpr std::uint32_t kDropFrame = 0x80;
  const std::uint32_t parts[] = {tc >> 24 & 0x3F, tc >> 16 & 0x7F, tc >> 8 & 0x7F, tc & 0x7F};
  const char separators[] = {':', ':', (tc & kDropFrame) != 0 ? '.' : ':', '\0'};
  char* next = out;
  for (std::size_t i = 0; i < std::size(parts); ++i) {
    *next++ = kDigits[parts[i] >> 4];
    *next++ = kDigits[parts[i] & 0x0F];
    *next++ = separators[i];
  }
}

void Command::SetPayload(std::initializer_list<std::uint8_t> payload) {
  std::copy(payload.begin(), payload.end(), NewPayload(static_cast<std::uint16_t>(payload.size())));
}

std::uint8_t* Command::NewPayload(std::uint16_t length) {
  request_header_.payload_length = length;
  message_ = OutgoingMessage(length);
  return message_.Payload();
}

JsonWriter& Command::AddData() {
  BeginReply();
  reply_json_.BeginObject("Data");
  return reply_json_;
}
