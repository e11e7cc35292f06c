#include "simulator/daemon.h"

#include <algorithm>
#include <utility>

namespace simulator {
namespace {

std::string ResultText(const Reply& reply) {
  if (!reply) {
    return "no reply";
  }
  switch (reply->empty() ? 0 : reply->front()) {
    case 0:
      return "success";
    case 1:
      return "requested error";
    case 2:
      return "disabled";
    default:
      return "result " + std::to_string(reply->front());
  }
}

}  // namespace

Reply ResultOnly(Result result) { return Bytes{static_cast<std::uint8_t>(result)}; }

Reply Accept(Camera&, const Bytes&) { return ResultOnly(Result::kSuccess); }

Daemon::Daemon(std::string name, std::vector<MessageRow> messages, Camera& camera,
               const Console& console)
    : name_(std::move(name)), messages_(std::move(messages)), camera_(camera), console_(console) {}

Reply Daemon::Answer(const Message& message) const {
  const MessageRow row = Find(message);
  const std::string before = camera_.Summary();
  Reply reply = message.payload.size() < row.payload_length ? ResultOnly(Result::kRequestedError)
                                                            : row.answer(camera_, message.payload);
  Show(row, message, reply);
  for (const std::string& news : camera_.TakeNews()) {
    console_.Line("camera: " + news);
  }
  if (const std::string after = camera_.Summary(); after != before) {
    console_.Line("camera: " + after);
  }
  return reply;
}

MessageRow Daemon::Find(const Message& message) const {
  const auto row =
      std::find_if(messages_.begin(), messages_.end(), [&message](const MessageRow& candidate) {
        return candidate.message_class == message.message_class && candidate.code == message.code;
      });
  return row != messages_.end()
             ? *row
             : MessageRow{message.message_class, message.code, "unknown message", 0, Accept};
}

void Daemon::Show(const MessageRow& row, const Message& message, const Reply& reply) const {
  std::string line = name_ + ": " + row.name + " (" + std::to_string(row.message_class) + "/" +
                     std::to_string(row.code) + ")";
  if (!message.payload.empty()) {
    line += " " + HexText(message.payload);
  }
  console_.Line(line + " -> " + ResultText(reply));
}

}  // namespace simulator
