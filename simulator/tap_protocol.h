// The protocol of the tap and the simulated camera: MessagePack objects, each after its length in
// four bytes, little-endian.
//
// The tap sends an object when it is about to start a handler; the answer says how to change the
// handler's world. It sends another object when the handler has ended, and gets an answer when the
// journal has the request.
//
//   tap     {"pid": 17, "method": "POST", "client": "127.0.0.1", "body": binary}
//   camera  {"world": ["hide /run quonta_cp.sock", ...]}
//   tap     {"output": binary, "status": as wait() has it, "ms": 1.5}
//   camera  {}
#pragma once

#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <vector>

namespace simulator::tap {

inline constexpr char kSocket[] = "/run/simulator/tap.sock";
inline constexpr std::size_t kLengthSize = 4;
inline constexpr std::size_t kMaxLength = 256 << 20;

using Object = nlohmann::json;
using Frame = std::vector<std::uint8_t>;

inline Frame ToFrame(const Object& object) {
  const Frame packed = Object::to_msgpack(object);
  Frame frame;
  for (std::size_t i = 0; i < kLengthSize; ++i) {
    frame.push_back(static_cast<std::uint8_t>(packed.size() >> (8 * i)));
  }
  frame.insert(frame.end(), packed.begin(), packed.end());
  return frame;
}

/// The length of the object that a frame announces; `frame` holds at least `kLengthSize` bytes.
inline std::size_t LengthOf(const Frame& frame) {
  std::size_t length = 0;
  for (std::size_t i = 0; i < kLengthSize; ++i) {
    length |= std::size_t{frame[i]} << (8 * i);
  }
  return length;
}

/// Writes all of it to a blocking descriptor; false if that fails.
inline bool WriteAll(int fd, const std::uint8_t* data, std::size_t size) {
  while (size > 0) {
    const ssize_t count = write(fd, data, size);
    if (count < 0 && errno == EINTR) {
      continue;
    }
    if (count <= 0) {
      return false;
    }
    data += count;
    size -= static_cast<std::size_t>(count);
  }
  return true;
}

}  // namespace simulator::tap
