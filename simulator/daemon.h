// One resident daemon of the camera: a name, and a table of the messages that it understands.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "simulator/camera.h"
#include "simulator/console.h"
#include "simulator/message.h"

namespace simulator {

/// What is sent back for a message: the reply's payload, whose first byte is the result; nothing
/// for a message that gets no reply.
using Reply = std::optional<Bytes>;

/// A reply that carries only a result.
Reply ResultOnly(Result result);

/// Answers a message of which the simulated camera knows the name alone.
Reply Accept(Camera& camera, const Bytes& payload);

/// One message of a daemon.
struct MessageRow {
  std::uint8_t message_class;
  std::uint8_t code;
  const char* name;            ///< as shown on the console
  std::size_t payload_length;  ///< a message with a shorter payload is refused
  Reply (*answer)(Camera& camera, const Bytes& payload);
};

/// Finds the row of a message, has it answered, and shows both on the console.
class Daemon {
 public:
  Daemon(std::string name, std::vector<MessageRow> messages, Camera& camera,
         const Console& console);

  /// A message that stands in no row is accepted.
  Reply Answer(const Message& message) const;

 private:
  [[nodiscard]] MessageRow Find(const Message& message) const;
  void Show(const MessageRow& row, const Message& message, const Reply& reply) const;

  std::string name_;
  std::vector<MessageRow> messages_;
  Camera& camera_;
  const Console& console_;
};

}  // namespace simulator
