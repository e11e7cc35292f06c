// The camera control message, which the handler and the camera's daemons exchange.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

#include "core/bytes.h"

/// Header of every message and reply, little-endian. The handler sends it before the payload; of a
/// daemon's reply it reads only the payload length.
struct MessageHeader {
  std::uint8_t reserved0 = 0;
  std::uint8_t message_class = 0;
  LittleEndian16 payload_length;
  std::uint8_t command_code = 0;
  std::uint8_t streaming_flag = 0;  ///< 1 in cloud streaming messages and renewal notices
  std::uint8_t reserved6[2] = {};
  LittleEndian32 sender_process_id;
};

constexpr std::size_t kMessageHeaderSize = 12;
static_assert(sizeof(MessageHeader) == kMessageHeaderSize && alignof(MessageHeader) == 1);

/// Owns a number of bytes on the heap, initially zero.
class ByteBuffer {
 public:
  ByteBuffer() = default;
  explicit ByteBuffer(std::size_t size) : bytes_(new std::uint8_t[size]()), size_(size) {}

  /// Whether there is a buffer, which may have 0 bytes.
  [[nodiscard]] bool IsSet() const { return bytes_ != nullptr; }
  [[nodiscard]] std::uint8_t* Bytes() { return bytes_.get(); }
  [[nodiscard]] const std::uint8_t* Bytes() const { return bytes_.get(); }
  [[nodiscard]] std::size_t Size() const { return size_; }
  [[nodiscard]] ByteView View() const { return {bytes_.get(), size_}; }

  /// Drops all bytes after the first `size`.
  void Truncate(std::size_t size) { size_ = size < size_ ? size : size_; }

  void Release() {
    bytes_.reset();
    size_ = 0;
  }

 private:
  std::unique_ptr<std::uint8_t[]> bytes_;
  std::size_t size_ = 0;
};

/// An outgoing message: room for the header, then the payload.
class OutgoingMessage : public ByteBuffer {
 public:
  OutgoingMessage() = default;
  explicit OutgoingMessage(std::uint16_t payload_length)
      : ByteBuffer(kMessageHeaderSize + payload_length) {}

  [[nodiscard]] std::uint8_t* Payload() { return Bytes() + kMessageHeaderSize; }
  void SetHeader(const MessageHeader& header) { std::memcpy(Bytes(), &header, sizeof header); }
};
