// Which of the camera's controls can be used now: one flag byte of the camera status block per
// control, 0 if disabled.
#pragma once

#include "status/camera_status_block.h"

namespace camera_status {

/// One control's flag.
struct EnableFlag {
  char key[12];  ///< name of the control in the status report
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
