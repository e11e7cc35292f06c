// The control daemon's reply to the status request: the state that is not in the camera status
// block.
#pragma once

#include "core/bytes.h"

namespace status_reply {

constexpr U8Field kRecording{2};
constexpr U8Field kCameraMode{3};
constexpr U8Field kRecordingMode{4};
constexpr U8Field kZooming{5};  ///< 0 idle
constexpr U16Field kZoomPosition{6};
constexpr U32Field kTimeCode{8};  ///< packed BCD
constexpr U8Field kBatteryInfo{24};
constexpr U8Field kBatteryLevel{25};
constexpr U16Field kBatteryValue{26};
constexpr U8Field kAspectRatio{28};  ///< 1: 4:3
constexpr S8Field kPlanningMetadataAllowed{29};
constexpr S8Field kEditMetadataAllowed{30};
constexpr S8Field kViewRemoteAllowed{31};
constexpr S8Field kSettingAllowed{32};
constexpr U8Field kNetAdaptor{33};
constexpr U8Field kWebAccess{34};  ///< 0 off
constexpr S8Field kZoomDisplayValue{35};

/// Size of a complete reply.
constexpr std::size_t kSize = 38;

/// The fields of one card slot.
struct SlotFields {
  U8Field status;
  U8Field protect;  ///< 0 unlocked
  U16Field remain;  ///< recording time; `kRemainUnknown` when the camera cannot tell
  U16Field clip_count;
  S8Field remain_warning;
};

constexpr SlotFields kSlotA{{12}, {13}, {14}, {16}, {36}};
constexpr SlotFields kSlotB{{18}, {19}, {20}, {22}, {37}};

constexpr std::uint16_t kRemainUnknown = 0xFFFF;

}  // namespace status_reply
