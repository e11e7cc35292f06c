#include "simulator/daemon.h"

#include <algorithm>
#include <utility>

#include "simulator/state_fields.h"

namespace simulator {
namespace {

constexpr Refusal kUnknownMessage = {"there is no such message", Result::kRequestedError};
constexpr Refusal kIncompleteMessage = {"its payload is too short", Result::kRequestedError};

}  // namespace

Reply ResultOnly(Result result) { return Bytes{static_cast<std::uint8_t>(result)}; }

Daemon::Daemon(std::string name, std::vector<MessageRow> messages, Camera& camera)
    : name_(std::move(name)), messages_(std::move(messages)), camera_(camera) {}

Answered Daemon::Answer(const Message& message) const {
  const MessageRow* const row = Find(message);
  const Refusal refusal = row == nullptr                                 ? kUnknownMessage
                          : message.payload.size() < row->payload_length ? kIncompleteMessage
                          : row->refuse != nullptr ? row->refuse(camera_.state(), message.payload)
                                                   : Refusal{};
  if (refusal.why != nullptr) {
    return {ResultOnly(refusal.result), {}, refusal.why};
  }
  if (row->asks) {
    return {row->answer(camera_, message.payload), {}, ""};
  }
  // A copy on purpose: the answer changes the original.
  // cppcheck-suppress redundantCopyLocalConst
  const State before = camera_.state();
  Answered answered{row->answer(camera_, message.payload), camera_.TakeNews(), ""};
  for (std::string& difference : Differences(before, camera_.state())) {
    answered.changes.push_back(std::move(difference));
  }
  return answered;
}

std::string Daemon::Describe(const Message& message) const {
  const MessageRow* const row = Find(message);
  if (row == nullptr) {
    return "unknown message " + std::to_string(message.message_class) + "/" +
           std::to_string(message.code);
  }
  if (message.payload.size() < row->payload_length) {
    return std::string(row->name) + ", incomplete";
  }
  return row->describe != nullptr ? row->describe(message.payload) : row->name;
}

const MessageRow* Daemon::Find(const Message& message) const {
  const auto row =
      std::find_if(messages_.begin(), messages_.end(), [&message](const MessageRow& candidate) {
        return candidate.message_class == message.message_class && candidate.code == message.code;
      });
  return row != messages_.end() ? &*row : nullptr;
}

}  // namespace simulator
