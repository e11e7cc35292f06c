// The camera control message, which the handler and the camera's daemons exchange.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace simulator {

using Bytes = std::vector<std::uint8_t>;

/// The header, little-endian: byte 1 message class, bytes 2-3 payload length, byte 4 command code,
/// bytes 8-11 process id of the sender; the other bytes are not read here.
constexpr std::size_t kHeaderSize = 12;

/// A request as received.
struct Message {
  std::uint8_t message_class = 0;
  std::uint8_t code = 0;
  Bytes payload;
  Bytes bytes;  ///< all of it, with the header
};

/// The payload length that a header announces. `received` holds at least `kHeaderSize` bytes.
std::size_t AnnouncedLength(const Bytes& received);

/// Takes the first message off `received`: its header and as much of the announced payload as
/// there is. `received` holds at least `kHeaderSize` bytes.
Message TakeMessage(Bytes& received);

/// A reply on the wire: a header that repeats the request's class and code and announces the
/// payload, then the payload, of which at most 65535 bytes are kept.
Bytes MakeReply(const Message& request, const Bytes& payload);

/// Read and write a big-endian number of 16 bits, as payloads have them.
std::size_t U16(const Bytes& bytes, std::size_t offset);
void PutU16(Bytes& bytes, std::size_t offset, int value);

/// Bytes as two hexadecimal digits each, without anything between.
std::string HexText(const Bytes& bytes);

}  // namespace simulator
