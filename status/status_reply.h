// The control daemon's reply to the status request: what it knows beside the camera status block.
#pragma once

#include "core/bytes.h"

namespace status_reply {

constexpr ByteField kRecording{2};
constexpr ByteField kCameraMode{3};
constexpr ByteField kRecordingMode{4};
constexpr ByteField kZooming{5};  ///< 0 idle
constexpr WordField kZoomPosition{6};
constexpr LongField kTimeCode{8};  ///< packed BCD
constexpr ByteField kBatteryInfo{24};
constexpr ByteField kBatteryLevel{25};
constexpr WordField kBatteryValue{26};
constexpr ByteField kAspectRatio{28};  ///< 1: 4:3
constexpr SignedByteField kPlanningMetadataAllowed{29};
constexpr SignedByteField kEditMetadataAllowed{30};
constexpr SignedByteField kViewRemoteAllowed{31};
constexpr SignedByteField kSettingAllowed{32};
constexpr ByteField kNetAdaptor{33};
constexpr ByteField kWebAccess{34};  ///< 0 off
constexpr SignedByteField kZoomDisplayValue{35};

/// A reply that has all of them.
constexpr std::size_t kSize = 38;

/// What the reply tells of one card slot.
struct SlotFields {
  ByteField status;
  ByteField protect;  ///< 0 unlocked
  WordField remain;   ///< recording time; `kRemainUnknown` when the camera cannot tell
  WordField clip_count;
  SignedByteField remain_warning;
};

constexpr SlotFields kSlotA{{12}, {13}, {14}, {16}, {36}};
constexpr SlotFields kSlotB{{18}, {19}, {20}, {22}, {37}};

constexpr std::uint16_t kRemainUnknown = 0xFFFF;

}  // namespace status_reply
