// The control daemon's reply to the clip list request.
#pragma once

#include <cstddef>

#include "core/bytes.h"

/// One reply holds no more clips than these.
constexpr int kClipsPerExchange = 15;

constexpr WordField kReplyClipCount{2};
constexpr std::size_t kReplyFirstClip = 4;
constexpr std::size_t kClipRecordSize = 32;
constexpr std::size_t kClipReplySize = kReplyFirstClip + kClipsPerExchange * kClipRecordSize;

/// What the reply tells of one clip.
namespace clip_record {

constexpr WordField kIndexNo{0};
constexpr TextField kName{2, 10};
constexpr LongField kFirstTimeCode{12};  ///< packed BCD
constexpr LongField kLastTimeCode{16};
constexpr WordField kYear{20};
constexpr ByteField kMonth{22};  ///< from 0
constexpr ByteField kDay{23};
constexpr SignedByteField kHour{24};
constexpr ByteField kMinute{25};
constexpr ByteField kSecond{26};
constexpr ByteField kOkMark{27};
constexpr ByteField kAspectRatio{28};  ///< 0: 16:9
constexpr ByteField kEditLock{30};     ///< 0: can be edited

}  // namespace clip_record
