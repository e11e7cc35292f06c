#include "core/command_table.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace {

struct Row {
  const char* name;
  int message_class;
  int code;
  int length;
  int timeout;
  int level;
};

// In matching order.
constexpr Row kRows[] = {
    {"MonitorStart", 5, 5, 0, 5, 1},
    {"MonitorStop", 5, 6, 0, 5, 1},
    {"SetZoomCtrl", 5, 14, 2, 5, 1},
    {"GetCamStatus", 5, 0, 0, 5, 7},
    {"SetCamCtrl", 5, 1, 1, 5, 1},
    {"GetClipInfo", 6, 11, 0, 20, 1},
    {"SetClipInfo", 6, 16, 6, 5, 1},
    {"PageChange", 5, 15, 1, 5, 1},
    {"SetWebKeyEvent", 5, 17, 2, 5, 1},
    {"SetWebSliderEvent", 5, 18, 2, 5, 1},
    {"SetWebXYFieldEvent", 5, 19, 2, 5, 1},
    {"GetGPSInfo", 6, 29, 0, 5, 1},
    {"SetWebFtpUploadAll", 6, 108, 2, 5, 1},
    {"SetWebFtpUploadOkMarked", 6, 109, 2, 5, 1},
    {"SetWebFtp1UploadASelect", 6, 110, 500, 5, 1},
    {"SetWebFtp2UploadASelect", 6, 111, 500, 5, 1},
    {"SetWebFtp3UploadASelect", 6, 112, 500, 5, 1},
    {"SetWebFtp4UploadASelect", 6, 113, 500, 5, 1},
    {"SetWebFtp1UploadBSelect", 6, 114, 500, 5, 1},
    {"SetWebFtp2UploadBSelect", 6, 115, 500, 5, 1},
    {"SetWebFtp3UploadBSelect", 6, 116, 500, 5, 1},
    {"SetWebFtp4UploadBSelect", 6, 117, 500, 5, 1},
    {"WebFtpOperateResponse", 6, 107, 2, 5, 1},
    {"SetWebButtonEvent", 5, 17, 2, 5, 1},
    {"GetSystemInfo", 5, 0, 0, 5, 4},
    {"SetStreamingCtrl", 5, 17, 2, 5, 1},
    {"SessionRenewal", 0, 0, 0, 5, 1},
    {"GetPresetZoomPosition", 0, 0, 0, 5, 1},
    {"SetPresetZoomPosition", 0, 0, 0, 5, 1},
    {"GetStreamingSettings", 0, 0, 0, 5, 4},
    {"SetStreamingSettings", 0, 0, 0, 5, 1},
    {"SetStreamingResolution", 0, 0, 0, 5, 1},
    {"SetStreamingFramerate", 0, 0, 0, 5, 1},
    {"SetStreamingBitrate", 0, 0, 0, 5, 1},
    {"GetStreamingServerSettings", 0, 0, 0, 5, 1},
    {"SetStreamingServerSettingsUDP", 0, 0, 0, 5, 1},
    {"SetStreamingServerSettingsRTSP", 0, 0, 0, 5, 1},
    {"SetStreamingServerSettingsZIXI", 0, 0, 0, 5, 1},
    {"SetStreamingServerSettingsRTMP", 0, 0, 0, 5, 1},
    {"SetStreamingServerSettingsRTP", 0, 0, 0, 5, 1},
    {"GetCurrentStreamingServerID", 0, 0, 0, 5, 1},
    {"SetCurrentStreamingServerID", 0, 0, 0, 5, 1},
    {"AvailableStreamingResolutionSettings", 0, 0, 0, 5, 4},
    {"AvailableStreamingFramerateSettings", 0, 0, 0, 5, 4},
    {"AvailableStreamingBitrateSettings", 0, 0, 0, 5, 4},
    {"SetTallyLampPriority", 5, 17, 2, 5, 1},
    {"SetTallyLampCtrl", 5, 17, 2, 5, 1},
    {"JpegEncode", 5, 5, 0, 5, 7},
    {"SetCldstrmLogin", 11, 99, 320, 5, 1},
    {"SetCldstrmLogout", 11, 100, 0, 5, 1},
    {"SetCldstrmEventListObtain", 11, 101, 0, 5, 1},
    {"GetCldstrmEventList", 11, 102, 0, 5, 1},
    {"SetCldstrmStreamInfoObtain", 11, 104, 4, 5, 1},
    {"SetCldstrmStreamInfoToStrmsrv", 11, 105, 4, 5, 1},
    {"SetCldstrmClearStatus", 11, 106, 4, 5, 1},
    {"SetIFBCtrl", 5, 17, 2, 5, 1},
    {"GetIFBSettings", 0, 0, 0, 5, 4},
    {"SetIFBSettings", 0, 0, 0, 5, 1},
    {"ZoomSwitchOperation", 5, 118, 0, 5, 1},
    {"SeesawSwitchOperation", 5, 119, 0, 5, 1},
    {"HeartbeatConfirmation", 0, 0, 0, 5, 7},
    {"SetTallyControlWithPriority", 5, 17, 2, 5, 1},
    {"SystemRequest", 5, 17, 2, 5, 1},
    {"SetStudioTally", 5, 17, 2, 5, 1},
    {"SetStudioTallyWithoutSession", 5, 17, 2, 5, 1},
    {"GetNTPStatus", 0, 0, 0, 5, 4},
    {"SetNTPServer", 0, 0, 0, 5, 1},
    {"SetNTPSettings", 0, 0, 0, 5, 1},
};
static_assert(std::size(kRows) == 68);

TEST(CommandTable, HasEveryCommandWithItsHeaderTimeoutAndLevel) {
  const std::initializer_list<CommandRow> table = AllCommands();
  ASSERT_EQ(table.size(), std::size(kRows));
  for (std::size_t i = 0; i < std::size(kRows); ++i) {
    const Row& expected = kRows[i];
    const CommandRow& row = table.begin()[i];
    SCOPED_TRACE(expected.name);
    EXPECT_STREQ(row.name, expected.name);
    EXPECT_EQ(row.preset.message_class, expected.message_class);
    EXPECT_EQ(row.preset.command_code, expected.code);
    EXPECT_EQ(row.preset.payload_length, expected.length);
    EXPECT_EQ(row.preset.timeout_seconds, expected.timeout);
    EXPECT_EQ(row.preset.log_level, expected.level);
    EXPECT_EQ(FindCommand(expected.name), &row);
  }
}

TEST(CommandTable, ThreeCommandsNeedNoSession) {
  std::string names;
  for (const CommandRow& row : AllCommands()) {
    names += row.Has(kNeedsNoSession) ? std::string(row.name) + " " : "";
  }
  EXPECT_EQ(names,
            "HeartbeatConfirmation SetTallyControlWithPriority SetStudioTallyWithoutSession ");
}

TEST(CommandTable, PolledCommandsAreNotTraced) {
  std::string requests;
  std::string replies;
  for (const CommandRow& row : AllCommands()) {
    requests += row.Has(kSilentRequest) ? std::string(row.name) + " " : "";
    replies += row.Has(kSilentReply) ? std::string(row.name) + " " : "";
  }
  EXPECT_EQ(requests, "GetCamStatus HeartbeatConfirmation SetStudioTallyWithoutSession ");
  EXPECT_EQ(replies, "GetCamStatus ");
}

TEST(CommandTable, NamesAreComparedExactly) {
  for (const char* name : {"GetGpsInfo", "getcamstatus", "GetCamStatu", "GetCamStatus2", "",
                           "SetStreamingServerSettingsTCP", "ResetSettingData"}) {
    EXPECT_EQ(FindCommand(name), nullptr) << name;
  }
}

}  // namespace
