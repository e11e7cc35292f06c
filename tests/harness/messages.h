#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>

namespace harness {

/// A byte string from numbers 0 to 255 (or -128 to 127): Bytes({5, 0xff, -1}).
std::string Bytes(std::initializer_list<int> values);

std::string Be16(std::uint16_t value);
std::string Be32(std::uint32_t value);
std::string Le16(std::uint16_t value);
std::string Le32(std::uint32_t value);

/// A message to the control daemon: header and payload. `length` is the announced length, which may
/// differ from zero even without a payload.
std::string Message(int message_class, std::size_t length, int code, pid_t sender,
                    const std::string& payload = "");

/// A message to the streaming daemon: class 11, and a 1 at offset 5.
std::string CloudMessage(std::size_t length, int code, pid_t sender,
                         const std::string& payload = "");

/// The 13-byte notice that a settings file has changed; it carries no sender.
std::string RenewalNotice(int renew_reconnect = 0);

/// The 12-byte header of a daemon's reply that announces `length` payload bytes.
std::string ReplyHeader(std::size_t length);

/// A whole reply: header and payload, whose first byte is the result.
std::string ReplyMessage(const std::string& payload);

}  // namespace harness
