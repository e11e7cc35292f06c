// The camera status block: the camera's live state, as its firmware shares it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/bytes.h"

namespace camera_status {

constexpr std::size_t kBlockSize = 1024;

// The fields that the handler reads. The firmware defines the layout.

constexpr U8Field kIfbActive{19};    ///< non-zero: return audio is on
constexpr U8Field kNtpState{46};     ///< 0 master, 1 not synchronized, 2 synchronized
constexpr U8Field kFocusMode{52};    ///< face AF, AF, one-push MF, MF, face MF
constexpr U8Field kStudioTally{53};  ///< 1 program, 2 preview, others off
constexpr TextField kFocusLetter{54, 8};
constexpr U8Field kFullauto{62};  ///< 0 off
constexpr U8Field kIrisMode{63};  ///< manual, auto, auto with AE lock
constexpr TextField kIrisLetter{64, 5};
constexpr U8Field kGainMode{70};  ///< manual L, M, H, ALC, ALC with AE lock, low light
constexpr TextField kGainLetter{71, 5};
constexpr TextField kGainLabelL{76, 4};
constexpr TextField kGainLabelM{80, 4};
constexpr TextField kGainLabelH{84, 4};
constexpr U8Field kShutterMode{88};  ///< off, manual, EEI, EEI with AE lock, step, variable
constexpr TextField kShutterLetter{90, 8};
constexpr U8Field kWhiteBalanceMode{98};  ///< preset, A, B, full auto, full auto with AE lock
constexpr TextField kWhiteBalanceLetter{100, 9};
constexpr U8Field kDisplayHidden{110};         ///< 0: the on-screen display is shown
constexpr U8Field kCameraControlAllowed{115};  ///< clients may use the camera control page
constexpr TextField kSerial{228, kBlockSize - 228};
constexpr TextField kUserLabels[] = {{238, 20}, {258, 20}, {278, 20}, {298, 20},
                                     {318, 20}, {338, 20}, {358, 20}, {520, 20},
                                     {540, 20}, {560, 20}, {580, 20}};
constexpr S16Field kWhitePaintRedScale{382};
constexpr S16Field kWhitePaintBlueScale{384};
constexpr S16Field kWhitePaintRedPosition{386};
constexpr S16Field kWhitePaintBluePosition{388};
constexpr TextField kWhitePaintRedLetter{390, 10};
constexpr TextField kWhitePaintBlueLetter{400, 10};
constexpr U8Field kAeLevelMode{410};  ///< 1 on, 2 on with face detection, others off
constexpr TextField kAeLevelLetter{412, 4};
constexpr U8Field kCharacterMixSdi{416};  ///< 0 off
constexpr U8Field kCharacterMixHdmi{417};
constexpr U8Field kCharacterMixVideo{418};
constexpr U8Field kFtpPhase1{420};  ///< phase of the first FTP job
constexpr U8Field kFtpPhase2{421};
constexpr U8Field kFtpPercent{422};
constexpr U8Field kFtpError{423};
constexpr U8Field kFtpServer{424};          ///< 0 to 3: the first to the fourth server
constexpr U32Field kFtpRemainingTime{444};  ///< in seconds
constexpr U16Field kFtpTotalFiles{448};
constexpr U16Field kFtpCurrentFile{450};
constexpr U8Field kFtpMessageType{452};    ///< of the key: 1 20 bytes, 2 16 bytes
constexpr TextField kFtpMessage{452, 30};  ///< unless the first job asks for trust in a key
constexpr BytesField kFtpKey{453, 20};     ///< the key that the first job asks about
constexpr TextField kMasterBlackLetter{486, 5};
constexpr TextField kDetailLetter{491, 5};
constexpr U8Field kCloudLogin{504};  ///< idle, in progress, finished, failed
constexpr U8Field kCloudEventList{505};
constexpr U8Field kCloudStreamInfo{506};
constexpr U8Field kCloudError{507};  ///< none, SSL, time-out, authorization, server, URL, other
constexpr U8Field kModel{516};
constexpr U8Field kDestination{517};
constexpr TextField kLensReturnLabel{600, 20};
constexpr TextField kWhiteBalanceLabelPreset{620, 10};
constexpr TextField kWhiteBalanceLabelA{630, 10};
constexpr TextField kWhiteBalanceLabelB{640, 10};

/// A copy of the block, read once; all zeros without shared memory. Every byte may have any value.
class CameraStatusBlock {
 public:
  CameraStatusBlock();

  /// The value of one of the fields above.
  template <typename Field>
  auto operator[](Field field) const {
    return ByteView(bytes_, sizeof bytes_)[field];
  }

 private:
  std::uint8_t bytes_[kBlockSize] = {};
};

}  // namespace camera_status
