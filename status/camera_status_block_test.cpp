#include "status/camera_status_block.h"

#include <gtest/gtest.h>

#include <string>

#include "harness/status_block.h"

namespace {

using namespace camera_status;

TEST(CameraStatusBlock, ReadsEveryByteFieldAtItsOffset) {
  const struct {
    U8Field field;
    int offset;
  } cases[] = {
      {kIfbActive, 19},
      {kNtpState, 46},
      {kFocusMode, 52},
      {kStudioTally, 53},
      {kFullauto, 62},
      {kIrisMode, 63},
      {kGainMode, 70},
      {kShutterMode, 88},
      {kWhiteBalanceMode, 98},
      {kDisplayHidden, 110},
      {kCameraControlAllowed, 115},
      {kAeLevelMode, 410},
      {kCharacterMixSdi, 416},
      {kCharacterMixHdmi, 417},
      {kCharacterMixVideo, 418},
      {kFtpPhase1, 420},
      {kFtpPhase2, 421},
      {kFtpPercent, 422},
      {kFtpError, 423},
      {kFtpServer, 424},
      {kFtpMessageType, 452},
      {kCloudLogin, 504},
      {kCloudEventList, 505},
      {kCloudStreamInfo, 506},
      {kCloudError, 507},
      {kModel, 516},
      {kDestination, 517},
  };
  for (const auto& row : cases) {
    harness::StatusBlock().SetByte(static_cast<std::size_t>(row.offset), 0xA5).Store();
    EXPECT_EQ(CameraStatusBlock()[row.field], 0xA5) << "offset " << row.offset;
  }
}

TEST(CameraStatusBlock, ReadsEveryTextFieldAtItsOffsetAndWidth) {
  const struct {
    TextField field;
    std::size_t offset;
    std::size_t width;
  } cases[] = {
      {kFocusLetter, 54, 8},
      {kIrisLetter, 64, 5},
      {kGainLetter, 71, 5},
      {kGainLabelL, 76, 4},
      {kGainLabelM, 80, 4},
      {kGainLabelH, 84, 4},
      {kShutterLetter, 90, 8},
      {kWhiteBalanceLetter, 100, 9},
      {kSerial, 228, 796},
      {kUserLabels[0], 238, 20},
      {kUserLabels[1], 258, 20},
      {kUserLabels[2], 278, 20},
      {kUserLabels[3], 298, 20},
      {kUserLabels[4], 318, 20},
      {kUserLabels[5], 338, 20},
      {kUserLabels[6], 358, 20},
      {kUserLabels[7], 520, 20},
      {kUserLabels[8], 540, 20},
      {kUserLabels[9], 560, 20},
      {kUserLabels[10], 580, 20},
      {kWhitePaintRedLetter, 390, 10},
      {kWhitePaintBlueLetter, 400, 10},
      {kAeLevelLetter, 412, 4},
      {kFtpMessage, 452, 30},
      {kMasterBlackLetter, 486, 5},
      {kDetailLetter, 491, 5},
      {kLensReturnLabel, 600, 20},
      {kWhiteBalanceLabelPreset, 620, 10},
      {kWhiteBalanceLabelA, 630, 10},
      {kWhiteBalanceLabelB, 640, 10},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.offset);
    std::string bytes(1024, '#');
    bytes.replace(row.offset, row.width, std::string(row.width, 'x'));
    harness::StatusBlock().SetBytes(0, bytes).Store();
    EXPECT_EQ(CameraStatusBlock()[row.field], std::string(row.width, 'x'));
    harness::StatusBlock().SetBytes(0, bytes).SetByte(row.offset + 1, 0).Store();
    EXPECT_EQ(CameraStatusBlock()[row.field], "x");
  }
}

TEST(CameraStatusBlock, ReadsBigEndianNumbers) {
  harness::StatusBlock()
      .SetBytes(382, std::string("\xFF\xFE\x00\x05\x80\x00\x7F\xFF", 8))
      .SetBytes(444, std::string("\x00\x00\x01\x2C\xFF\xFF\x01\x00", 8))
      .SetBytes(453, "ABCDEFGHIJKLMNOPQRSTU")
      .Store();
  const CameraStatusBlock block;
  EXPECT_EQ(block[kWhitePaintRedScale], -2);
  EXPECT_EQ(block[kWhitePaintBlueScale], 5);
  EXPECT_EQ(block[kWhitePaintRedPosition], -32768);
  EXPECT_EQ(block[kWhitePaintBluePosition], 32767);
  EXPECT_EQ(block[kFtpRemainingTime], 300U);
  EXPECT_EQ(block[kFtpTotalFiles], 65535);
  EXPECT_EQ(block[kFtpCurrentFile], 256);
  EXPECT_EQ(block[kFtpKey].Size(), 20U);
  EXPECT_EQ(block[kFtpKey].U8(0), 'A');
  EXPECT_EQ(block[kFtpKey].U8(19), 'T');
}

TEST(CameraStatusBlock, IsAllZeroWithoutSharedMemory) {
  const CameraStatusBlock block;
  EXPECT_EQ(block[kModel], 0);
  EXPECT_EQ(block[kSerial], "");
  EXPECT_EQ(block[kFtpRemainingTime], 0U);
}

TEST(CameraStatusBlock, IsZeroBeyondTheEndOfAShortImage) {
  harness::StatusBlock().Fill('x').Store(517);
  const CameraStatusBlock block;
  EXPECT_EQ(block[kModel], 'x');
  EXPECT_EQ(block[kDestination], 0);
}

}  // namespace
