// The shared memory area in which the camera firmware keeps the camera status block.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "simulator/camera.h"
#include "simulator/unique_fd.h"

namespace simulator {

/// The camera status block: one byte per mode or flag, texts padded with NUL, numbers big-endian.
using StatusBlock = std::array<std::uint8_t, 1024>;

/// The block that shows a camera's state.
StatusBlock MakeStatusBlock(const Camera& camera);

/// The file /var/run/camera_memory, an image of the shared area.
class StatusImage {
 public:
  /// Opens or creates the image and writes the camera's state into it.
  /// @throws std::system_error on failure
  explicit StatusImage(const Camera& camera);

  /// Rewrites the block in place if the camera's state has changed since.
  /// @throws std::system_error when that fails
  void Update(const Camera& camera);

 private:
  void Write(const StatusBlock& block) const;

  UniqueFd file_;
  StatusBlock written_;
};

}  // namespace simulator
