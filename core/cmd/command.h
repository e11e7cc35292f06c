// The base class of all commands.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "core/daemon_socket.h"
#include "core/json_writer.h"
#include "core/message.h"
#include "core/os.h"

constexpr std::uint8_t kDefaultLogLevel = 1;

/// What the command table holds about a command: its message header, time-out and log level.
struct CommandPreset {
  std::uint8_t message_class;
  std::uint8_t command_code;
  std::uint16_t payload_length;
  std::uint8_t timeout_seconds;  ///< for each exchange with the daemon
  std::uint8_t log_level;        ///< of the request and reply traces
};

/// Handles one request. `Dispatch` creates an object of the command's class and calls `Parse`,
/// `Transmit` and `Output`, in this order. The base class is a complete command: it sends a bare
/// header and replies with the daemon's result.
class Command {
 public:
  Command() = default;
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;

  /// Reads the parameters and builds the payload; called only if the request has "Params".
  /// @param params  the request's text after "Params":
  /// @return 0; any other value rejects the request
  virtual int Parse(const char* /*params*/) { return 0; }

  /// Performs the action. The default sends the message to the daemon and takes the result from the
  /// reply.
  virtual void Transmit();

  /// Prints the reply: the requested name, the name of the result and, if an override added some,
  /// the data.
  virtual void Output();

  virtual ~Command() = default;

  /// Called once, before `Parse`.
  /// @param name       the command's name as requested; truncated to 99 characters
  /// @param log_reply  whether `Output` traces the reply
  void Prepare(const CommandPreset& preset, const char* name, bool log_reply);

  [[nodiscard]] int LogLevel() const { return log_level_; }

  /// Size of a time code's text with its terminating NUL.
  static constexpr std::size_t kTimeCodeSize = sizeof "hh:mm:ss:ff";

  /// Prints a packed time code as hh:mm:ss:ff, or as hh:mm:ss.ff when it counts in drop frames.
  /// @param tc   four BCD bytes: hours (most significant), minutes, seconds, frames. The top bit of
  ///             the frames is the drop-frame flag; the unused top bits of the others are ignored
  /// @param out  nibbles above 9 are printed as hexadecimal digits
  static void MakeTCString(std::uint32_t tc, char (&out)[kTimeCodeSize]);

 protected:
  /// Builds the outgoing message from its payload and sets the length in the header.
  void SetPayload(std::initializer_list<std::uint8_t> payload);

  /// Makes room for a payload of `length` zero bytes and sets the length in the header.
  /// @return the first byte of the payload
  std::uint8_t* NewPayload(std::uint16_t length);

  /// Begins the reply with an empty data object. Set `result_` before: the reply contains it.
  JsonWriter& AddData();

  /// The payload of the last reply; bytes that did not arrive read as zero.
  [[nodiscard]] ByteView Reply() const { return reply_.View(); }

  MessageHeader request_header_;
  OutgoingMessage message_;
  ByteBuffer reply_;
  std::uint8_t result_ = 0;
  const char* daemon_path_ = kControlDaemonPath;
  os::Timeout timeout_ = {kDefaultTimeoutSeconds, 0};
  char requested_name_[100] = {};
  int log_level_ = kDefaultLogLevel;
  bool log_reply_ = true;
  /// Whether the last exchange timed out. A command with several exchanges then makes no more of
  /// them, because each could take as long.
  bool daemon_timed_out_ = false;

 private:
  /// Begins the reply, up to the result.
  void BeginReply();

  JsonWriter reply_json_;
};

/// Base of the commands that send no message: they only report what `Output` reads.
struct LocalCommand : Command {
  void Transmit() override {}
};
