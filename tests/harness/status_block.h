#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace harness {

inline constexpr char kMemoryFile[] = "/var/run/camera_memory";
inline constexpr std::size_t kStatusBlockOffset = 0x21e9d400 - 0x21e80000;  // in the memory image
inline constexpr std::size_t kStatusBlockSize = 1024;

/// Builds the camera's status block, all zeros at first, and stores it in the memory image. All
/// offsets are those in the block:
///
///   StatusBlock().SetByte(516, 3).SetText(228, "A1B2C3").Store();
class StatusBlock {
 public:
  StatusBlock() : bytes_(kStatusBlockSize, '\0') {}

  StatusBlock& SetByte(std::size_t offset, int value);
  StatusBlock& SetBytes(std::size_t offset, const std::string& bytes);
  /// The text's characters without a terminator; what follows keeps its value.
  StatusBlock& SetText(std::size_t offset, const std::string& text) {
    return SetBytes(offset, text);
  }
  /// A big-endian number.
  StatusBlock& SetBe16(std::size_t offset, std::uint16_t value);
  /// Every byte of the block.
  StatusBlock& Fill(int value);

  const std::string& bytes() const { return bytes_; }

  /// Writes the memory image, with the first `length` bytes of the block at its end.
  void Store(std::size_t length = kStatusBlockSize) const;

 private:
  std::string bytes_;
};

}  // namespace harness
