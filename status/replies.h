// The control daemon's replies to the requests for the status and for the clip list.
#pragma once

#include <cstddef>

#include "core/bytes.h"

/// The status: what is not in the camera status block.
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

// The clip list.

/// The most clips that one reply holds.
constexpr int kClipsPerExchange = 15;

constexpr U16Field kReplyClipCount{2};
constexpr std::size_t kReplyFirstClip = 4;
constexpr std::size_t kClipRecordSize = 32;
constexpr std::size_t kClipReplySize = kReplyFirstClip + kClipsPerExchange * kClipRecordSize;

/// Fields of one clip in the reply.
namespace clip_record {

constexpr U16Field kIndexNo{0};
constexpr TextField kName{2, 10};
constexpr U32Field kFirstTimeCode{12};  ///< packed BCD
constexpr U32Field kLastTimeCode{16};
constexpr U16Field kYear{20};
constexpr U8Field kMonth{22};  ///< from 0
constexpr U8Field kDay{23};
constexpr S8Field kHour{24};
constexpr U8Field kMinute{25};
constexpr U8Field kSecond{26};
constexpr U8Field kOkMark{27};
constexpr U8Field kAspectRatio{28};  ///< 0: 16:9
constexpr U8Field kEditLock{30};     ///< 0: can be edited

}  // namespace clip_record
