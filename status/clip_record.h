// The control daemon's reply to the clip list request.
#pragma once

#include <cstddef>

#include "core/bytes.h"

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
