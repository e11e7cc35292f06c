// The keys, buttons, sliders and switches of the web remote: what each does, and when it can be
// used.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "simulator/daemon.h"
#include "simulator/settings_files.h"
#include "simulator/state.h"

namespace simulator {

// These functions carry out messages. Call them only for messages that are not refused.

/// Byte 0: kind code, byte 1: key code.
Reply PressKey(Camera& camera, const Bytes& payload);

/// Byte 0: kind code, bytes 1-2: position, signed, big-endian.
Reply MoveSlider(Camera& camera, const Bytes& payload);

/// Byte 0: kind code, byte 1: X, byte 2: Y, each 0 to twice the white paint's scale.
Reply MoveField(Camera& camera, const Bytes& payload);

/// Byte 0: 1 wide, 2 tele, anything else stops; byte 1: speed.
Reply OperateZoomSwitch(Camera& camera, const Bytes& payload);

/// Byte 0: kind code, byte 1: direction, byte 2: speed.
Reply OperateSeesawSwitch(Camera& camera, const Bytes& payload);

// Whether the messages are refused now: the control does not exist or cannot be used.
Refusal RefuseKey(const State& state, const Bytes& payload);
Refusal RefuseSlider(const State& state, const Bytes& payload);
Refusal RefuseField(const State& state, const Bytes& payload);
Refusal RefuseZoomSwitch(const State& state, const Bytes& payload);
Refusal RefuseSeesaw(const State& state, const Bytes& payload);

// The messages in words: "iris close 3", "zoom bar to 300".
std::string DescribeKey(const Bytes& payload);
std::string DescribeSlider(const Bytes& payload);
std::string DescribeField(const Bytes& payload);
std::string DescribeZoomSwitch(const Bytes& payload);
std::string DescribeSeesaw(const Bytes& payload);

/// A button enable flag of the camera status block.
struct EnableFlag {
  std::size_t offset;
  bool enabled;
};

/// Every flag that the status report shows, some of them more than once.
std::vector<EnableFlag> EnableFlags(const State& state, const SettingsFiles& settings);

}  // namespace simulator
