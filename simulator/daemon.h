// One resident daemon of the camera: a name, and a table of the messages that it understands.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "simulator/camera.h"
#include "simulator/message.h"
#include "simulator/result.h"

namespace simulator {

/// The payload of the reply to a message, whose first byte is the result; nothing for a message
/// that has no reply.
using Reply = std::optional<Bytes>;

/// A reply that carries only a result.
Reply ResultOnly(Result result);

/// Whether a message only asks: see `MessageRow::asks`.
constexpr bool kActs = false;
constexpr bool kAsks = true;

/// One message of a daemon.
struct MessageRow {
  std::uint8_t message_class;
  std::uint8_t code;
  const char* name;            ///< for users
  std::size_t payload_length;  ///< a message with a shorter payload is refused
  Reply (*answer)(Camera& camera, const Bytes& payload);
  /// The message in words; null if its name is enough.
  std::string (*describe)(const Bytes& payload) = nullptr;
  bool asks = false;  ///< it changes nothing
  /// Whether the message is refused now. Null: it never is.
  Refusal (*refuse)(const State& state, const Bytes& payload) = nullptr;
};

/// What a daemon did with a message.
struct Answered {
  Reply reply;
  std::vector<std::string> changes;  ///< of the camera's state, for its user
  std::string why;                   ///< why it was not carried out; empty: it was
};

/// Finds the row of a message and answers it.
class Daemon {
 public:
  Daemon(std::string name, std::vector<MessageRow> messages, Camera& camera);

  [[nodiscard]] const std::string& name() const { return name_; }

  /// A message without a row is refused.
  [[nodiscard]] Answered Answer(const Message& message) const;

  /// The message in words: "iris close 3".
  [[nodiscard]] std::string Describe(const Message& message) const;

 private:
  /// Null for a message that the daemon does not know.
  [[nodiscard]] const MessageRow* Find(const Message& message) const;

  std::string name_;
  std::vector<MessageRow> messages_;
  Camera& camera_;
};

}  // namespace simulator
