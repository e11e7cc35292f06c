// Keys, buttons and switches of the web remote.
#pragma once

#include "simulator/daemon.h"

namespace simulator {

/// Byte 0: kind code, byte 1: key code. Keys that the simulated camera has no use for are accepted.
Reply PressKey(Camera& camera, const Bytes& payload);

/// Byte 0: kind code, bytes 1-2: position, signed, big-endian. The sliders of the zoom and of the
/// white paint move something.
Reply MoveSlider(Camera& camera, const Bytes& payload);

/// Byte 0: kind code, byte 1: X, byte 2: Y. Only the white paint's field moves something: X is red,
/// Y blue.
Reply MoveField(Camera& camera, const Bytes& payload);

/// Byte 0: 1 wide, 2 tele, anything else stops; byte 1: speed.
Reply OperateZoomSwitch(Camera& camera, const Bytes& payload);

/// Byte 0: kind code, byte 1: direction, byte 2: speed. Only the zoom's seesaw moves something.
Reply OperateSeesawSwitch(Camera& camera, const Bytes& payload);

}  // namespace simulator
