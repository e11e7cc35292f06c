#include "simulator/message.h"

#include <algorithm>

namespace simulator {
namespace {

constexpr std::size_t kClassOffset = 1;
constexpr std::size_t kLengthOffset = 2;
constexpr std::size_t kCodeOffset = 4;
constexpr std::size_t kMaxPayload = 0xffff;

}  // namespace

std::size_t AnnouncedLength(const Bytes& received) {
  return received[kLengthOffset] | std::size_t{received[kLengthOffset + 1]} << 8;
}

Message TakeMessage(Bytes& received) {
  Message message;
  message.message_class = received[kClassOffset];
  message.code = received[kCodeOffset];
  const std::size_t end = std::min(received.size(), kHeaderSize + AnnouncedLength(received));
  const auto payload = received.begin() + kHeaderSize;
  const auto rest = received.begin() + static_cast<std::ptrdiff_t>(end);
  message.payload.assign(payload, rest);
  message.bytes.assign(received.begin(), rest);
  received.erase(received.begin(), rest);
  return message;
}

Bytes MakeReply(const Message& request, const Bytes& payload) {
  const std::size_t length = std::min(payload.size(), kMaxPayload);
  Bytes reply(kHeaderSize + length);
  reply[kClassOffset] = request.message_class;
  reply[kLengthOffset] = static_cast<std::uint8_t>(length);
  reply[kLengthOffset + 1] = static_cast<std::uint8_t>(length >> 8);
  reply[kCodeOffset] = request.code;
  std::copy_n(payload.begin(), length, reply.begin() + kHeaderSize);
  return reply;
}

std::size_t U16(const Bytes& bytes, std::size_t offset) {
  return static_cast<std::size_t>(bytes[offset]) << 8 | bytes[offset + 1];
}

void PutU16(Bytes& bytes, std::size_t offset, int value) {
  bytes[offset] = static_cast<std::uint8_t>(value >> 8);
  bytes[offset + 1] = static_cast<std::uint8_t>(value);
}

std::string HexText(const Bytes& bytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (const std::uint8_t byte : bytes) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0xf];
  }
  return text;
}

}  // namespace simulator
