// Which of the camera's remote controls can be used right now: one flag byte of the camera status
// block per control, 0 for disabled.
#pragma once

#include "status/camera_status_block.h"

namespace camera_status {

/// One control's flag.
struct EnableFlag {
  char key[12];  ///< as the status report names the control
  U8Field flag;
};

/// The flags of one group of controls, in the order in which they are reported.
struct EnableGroup {
  const char* name;
  const EnableFlag* flags;
  std::uint8_t count;

  [[nodiscard]] const EnableFlag* begin() const { return flags; }
  [[nodiscard]] const EnableFlag* end() const { return flags + count; }
};

constexpr std::size_t kEnableGroupCount = 12;

/// All groups, in the order in which they are reported.
extern const EnableGroup kEnableTable[kEnableGroupCount];

}  // namespace camera_status
