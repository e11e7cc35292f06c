// How much room the report reserves. The black-box tests cover its text.
#include <gtest/gtest.h>

#include <string>

#include "core/cmd/status.h"
#include "harness/fake_daemon.h"
#include "harness/messages.h"
#include "harness/status_block.h"

namespace {

using harness::Bytes;

/// Every field has its longest name or number.
std::string LongestReply() {
  const std::string slot =
      Bytes({4, 0}) + harness::Be16(65534) + harness::Be16(65535);  // "NoSelectRec", "Unlock"
  return Bytes({0, 0, 4, 5, 4, 0}) + harness::Be16(65535) +         // "RecPause", "EditMetadata"
         Bytes({0, 0, 0, 0}) + slot + slot +                        //
         Bytes({1, 255}) + harness::Be16(65535) +                   // "Capacity"
         Bytes({0, 0x80, 0x80, 0x80, 0x80, 5, 0}) +                 // -128, "Connecting" "WLAN_P2P"
         Bytes({0x80, 0x80, 0x80});
}

void StoreLongestBlock() {
  const struct {
    std::size_t offset;
    int code;
  } codes[] = {
      {52, 2},                        // "MFOnePush"
      {62, 0},                        // "Off"
      {70, 4},                        // "AlcAELock"
      {88, 3},                        // "EeiAELock"
      {410, 2},                       // "AeOnFace"
      {416, 0},  {417, 0}, {418, 0},  // "Off"
      {420, 9},                       // shows a key, which is longer than a message
      {421, 12},                      // "RELEASE_SLOT"
      {504, 2},  {505, 2}, {506, 2},  // "Finished"
      {507, 3},                       // "Authorization"
  };
  harness::StatusBlock block;
  block.Fill('x');  // texts fill their fields, numbers have all their digits
  for (const auto& row : codes) {
    block.SetByte(row.offset, row.code);
  }
  for (const std::size_t white_paint : {382U, 384U, 386U, 388U}) {
    block.SetBe16(white_paint, 0x8000);  // -32768
  }
  block.Store();
}

TEST(GetCamStatus, ReservesTheLengthOfTheLongestReport) {
  harness::FakeDaemon daemon(harness::Answer(harness::ReplyMessage(LongestReply())));
  StoreLongestBlock();
  GetCamStatus command;
  command.Transmit();
  testing::internal::CaptureStdout();
  command.Output();
  const std::string output = testing::internal::GetCapturedStdout();
  const std::string before = R"("Data":{)";
  const std::size_t start = output.find(before) + before.size();
  const std::size_t end = output.size() - std::string("}}}").size();
  EXPECT_EQ(end - start, GetCamStatus::kMaxReport);
}

}  // namespace
