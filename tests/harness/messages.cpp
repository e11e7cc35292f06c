#include "harness/messages.h"

namespace harness {
namespace {

char Byte(std::uint32_t value) { return static_cast<char>(static_cast<unsigned char>(value)); }

std::string Header(int message_class, std::size_t length, int code, int flag, pid_t sender) {
  return Bytes({0, message_class}) + Le16(static_cast<std::uint16_t>(length)) +
         Bytes({code, flag, 0, 0}) + Le32(static_cast<std::uint32_t>(sender));
}

}  // namespace

std::string Bytes(std::initializer_list<int> values) {
  std::string bytes;
  for (const int value : values) {
    bytes += static_cast<char>(value);
  }
  return bytes;
}

std::string Be16(std::uint16_t value) { return Be32(value).substr(2); }

std::string Be32(std::uint32_t value) {
  return {Byte(value >> 24U), Byte(value >> 16U), Byte(value >> 8U), Byte(value)};
}

std::string Le16(std::uint16_t value) { return Le32(value).substr(0, 2); }

std::string Le32(std::uint32_t value) {
  return {Byte(value), Byte(value >> 8U), Byte(value >> 16U), Byte(value >> 24U)};
}

std::string Message(int message_class, std::size_t length, int code, pid_t sender,
                    const std::string& payload) {
  return Header(message_class, length, code, 0, sender) + payload;
}

std::string CloudMessage(std::size_t length, int code, pid_t sender, const std::string& payload) {
  return Header(11, length, code, 1, sender) + payload;
}

std::string RenewalNotice(int renew_reconnect) {
  return Bytes({0, 1, 1, 0, 1, 1, 0, 0, 0, 0, 0, 0, renew_reconnect});
}

std::string ReplyHeader(std::size_t length) { return Header(0, length, 0, 0, 0); }

std::string ReplyMessage(const std::string& payload) {
  return ReplyHeader(payload.size()) + payload;
}

}  // namespace harness
