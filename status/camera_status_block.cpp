#include "status/camera_status_block.h"

#include "platform/read_data.h"

namespace camera_status {

CameraStatusBlock::CameraStatusBlock() {
  constexpr std::uint32_t kSharedAreaAddress = 0x21e80000;
  constexpr std::uint32_t kStatusBlockAddress = 0x21e9d400;
  read_data(kSharedAreaAddress, kStatusBlockAddress, kBlockSize, bytes_);
}

}  // namespace camera_status
