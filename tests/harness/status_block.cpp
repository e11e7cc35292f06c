#include "harness/status_block.h"

#include <stdexcept>

#include "harness/files.h"
#include "harness/messages.h"

namespace harness {

StatusBlock& StatusBlock::SetByte(std::size_t offset, int value) {
  bytes_.at(offset) = static_cast<char>(value);
  return *this;
}

StatusBlock& StatusBlock::SetBytes(std::size_t offset, const std::string& bytes) {
  if (offset + bytes.size() > kStatusBlockSize) {
    throw std::out_of_range("beyond the status block");
  }
  bytes_.replace(offset, bytes.size(), bytes);
  return *this;
}

StatusBlock& StatusBlock::SetBe16(std::size_t offset, std::uint16_t value) {
  return SetBytes(offset, Be16(value));
}

StatusBlock& StatusBlock::Fill(int value) {
  bytes_.assign(kStatusBlockSize, static_cast<char>(value));
  return *this;
}

void StatusBlock::Store(std::size_t length) const {
  WriteFile(kMemoryFile, std::string(kStatusBlockOffset, '\0') + bytes_.substr(0, length));
}

}  // namespace harness
