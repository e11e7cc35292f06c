// Which of the camera's controls can be used now: one flag byte of the camera status block per
// control, 0 if disabled.
#pragma once

#include <initializer_list>

#include "status/camera_status_block.h"

namespace camera_status {

/// One control's flag.
struct EnableFlag {
  char key[12];  ///< name of the control in the status report
  U8Field flag;
};

/// The flags of one group of controls, in the order in which they are reported.
struct EnableGroup {
  char name[12];
  std::initializer_list<EnableFlag> flags;
};

/// All groups, in the order in which they are reported.
extern const EnableGroup kEnableTable[12];

}  // namespace camera_status
