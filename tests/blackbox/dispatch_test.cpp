#include <string>

#include "harness/camera_test.h"

// From the name of a command to its object: the names, the message header of each one, and the log.

namespace {

using namespace harness;
using testing::ElementsAre;

class DispatchTest : public CameraTest {};

TEST_F(DispatchTest, UnknownCommandsGetCommandErrorAndStatus1) {
  EXPECT_THAT(Post(Body("NoSuchCommand")),
              Replied("{\"Response\":{\"Result\":\"CommandError\"}}", 1));
  EXPECT_THAT(log_.Lines(), Logged(Error("command error = NoSuchCommand")));
}

TEST_F(DispatchTest, NamesMustMatchExactly) {
  for (const char* const name :
       {"GetGpsInfo", "GetSystemInf", "GetSystemInfoX", "getsysteminfo", "SETCAMCTRL", "Monitor",
        "SetStreamingServerSettingsTCP", "SetWebFtp5UploadASelect", "Command",
        "HeartBeatConfirmation", "MonitorStart.", "/MonitorStart"}) {
    SCOPED_TRACE(name);
    EXPECT_THAT(Post(Body(name)), Replied("{\"Response\":{\"Result\":\"CommandError\"}}", 1));
    EXPECT_THAT(log_.TakeLines(), Logged(Error(std::string("command error = ") + name)));
  }
}

TEST_F(DispatchTest, AnEmptyNameIsAnUnknownCommand) {
  EXPECT_THAT(Post(Body("")), Replied("{\"Response\":{\"Result\":\"CommandError\"}}", 1));
  EXPECT_THAT(log_.Lines(), Logged(Error("command error = ")));
}

TEST_F(DispatchTest, NamesAndTheLogLineAreTruncatedTo4999Characters) {
  EXPECT_THAT(Post(Body(std::string(6000, 'N'))),
              Replied("{\"Response\":{\"Result\":\"CommandError\"}}", 1));
  EXPECT_THAT(log_.Lines(), Logged(Error("command error = " + std::string(4999 - 16, 'N'))));
}

TEST_F(DispatchTest, TheSessionIsCheckedBeforeTheName) {
  EXPECT_THAT(Post(BodyWithSession("NoSuchCommand", "wrong")),
              Replied("{\"Response\":{\"Result\":\"SessionError\"}}"));
}

struct CommandRow {
  const char* name;
  int message_class;
  int code;
  int length;
};

// Without parameters the bare header is sent, with the length that belongs to the command.
constexpr CommandRow kMessageCommands[] = {
    {"MonitorStart", 5, 5, 0},
    {"MonitorStop", 5, 6, 0},
    {"SetZoomCtrl", 5, 14, 2},
    {"GetCamStatus", 5, 0, 0},
    {"SetCamCtrl", 5, 1, 1},
    {"SetClipInfo", 6, 16, 6},
    {"PageChange", 5, 15, 1},
    {"SetWebKeyEvent", 5, 17, 2},
    {"SetWebSliderEvent", 5, 18, 2},
    {"SetWebXYFieldEvent", 5, 19, 2},
    {"GetGPSInfo", 6, 29, 0},
    {"SetWebFtpUploadAll", 6, 108, 2},
    {"SetWebFtpUploadOkMarked", 6, 109, 2},
    {"SetWebFtp1UploadASelect", 6, 110, 500},
    {"SetWebFtp2UploadASelect", 6, 111, 500},
    {"SetWebFtp3UploadASelect", 6, 112, 500},
    {"SetWebFtp4UploadASelect", 6, 113, 500},
    {"SetWebFtp1UploadBSelect", 6, 114, 500},
    {"SetWebFtp2UploadBSelect", 6, 115, 500},
    {"SetWebFtp3UploadBSelect", 6, 116, 500},
    {"SetWebFtp4UploadBSelect", 6, 117, 500},
    {"WebFtpOperateResponse", 6, 107, 2},
    {"SetWebButtonEvent", 5, 17, 2},
    {"SetStreamingCtrl", 5, 17, 2},
    {"SetTallyLampPriority", 5, 17, 2},
    {"SetTallyLampCtrl", 5, 17, 2},
    {"JpegEncode", 5, 5, 0},
    {"SetIFBCtrl", 5, 17, 2},
    {"ZoomSwitchOperation", 5, 118, 0},
    {"SeesawSwitchOperation", 5, 119, 0},
    {"SetTallyControlWithPriority", 5, 17, 2},
    {"SystemRequest", 5, 17, 2},
    {"SetStudioTally", 5, 17, 2},
    {"SetStudioTallyWithoutSession", 5, 17, 2},
};

class MessageHeaderTest : public CameraTest, public testing::WithParamInterface<CommandRow> {};

TEST_P(MessageHeaderTest, CarriesTheCommandsClassCodeAndLength) {
  const CommandRow& row = GetParam();
  FakeDaemon daemon(Answer(ReplyMessage(Bytes({0}))));
  const Outcome outcome = Post(Body(row.name));
  EXPECT_EQ(outcome.exit_status, 0);
  EXPECT_THAT(outcome.output,
              testing::HasSubstr("{\"Response\":{\"Requested\":\"" + std::string(row.name) +
                                 "\",\"Result\":\"Success\""));
  const char class_byte = static_cast<char>(row.message_class);
  const char code_byte = static_cast<char>(row.code);
  const std::string low_and_high = {static_cast<char>(row.length % 256),
                                    static_cast<char>(row.length / 256)};
  const std::string head = std::string(1, '\0') + class_byte + low_and_high + code_byte;
  EXPECT_THAT(daemon.Received(),
              ElementsAre(head + Bytes({0, 0, 0}) + Le32(static_cast<std::uint32_t>(outcome.pid))));
}

INSTANTIATE_TEST_SUITE_P(Commands, MessageHeaderTest, testing::ValuesIn(kMessageCommands),
                         [](const auto& row) { return std::string(row.param.name); });

struct LevelRow {
  const char* name;
  LogLine (*line)(std::string);
};

constexpr LevelRow kTraceLevels[] = {
    {"MonitorStart", Error},
    {"MonitorStop", Error},
    {"GetSystemInfo", Info},
    {"GetStreamingSettings", Info},
    {"AvailableStreamingResolutionSettings", Info},
    {"AvailableStreamingFramerateSettings", Info},
    {"AvailableStreamingBitrateSettings", Info},
    {"GetIFBSettings", Info},
    {"GetNTPStatus", Info},
    {"JpegEncode", Debug},
    {"GetPresetZoomPosition", Error},
    {"GetCurrentStreamingServerID", Error},
};

class TraceLevelTest : public CameraTest, public testing::WithParamInterface<LevelRow> {};

TEST_P(TraceLevelTest, RequestAndReplyAreTracedAtTheCommandsLevel) {
  const LevelRow& row = GetParam();
  const FakeDaemon daemon(Answer(ReplyMessage(Bytes({0}))));
  WriteFile(kLogLevelFile, "cmd=7\n");
  const std::string body = Body(row.name);
  const Outcome outcome = Post(body);
  const std::string json = outcome.output.substr(outcome.output.find("\n\n") + 2);
  // Lines of the command itself may come between the two.
  const LogLines lines = log_.Lines();
  ASSERT_GE(lines.size(), 2U);
  EXPECT_EQ(lines.front(), row.line("rcv post_data = " + body));
  EXPECT_EQ(lines.back(), row.line("send res_str = " + json));
}

INSTANTIATE_TEST_SUITE_P(Commands, TraceLevelTest, testing::ValuesIn(kTraceLevels),
                         [](const auto& row) { return std::string(row.param.name); });

class TraceTest : public CameraTest {};

TEST_F(TraceTest, StatusPollingIsNeverTraced) {
  const FakeDaemon daemon(Answer(ReplyMessage(Bytes({0}))));
  WriteFile(kLogLevelFile, "cmd=7\n");
  EXPECT_EQ(Post(Body("GetCamStatus")).exit_status, 0);
  EXPECT_THAT(log_.Lines(), Logged());
}

TEST_F(TraceTest, OfAHeartbeatOnlyTheReplyIsTraced) {
  WriteFile(kLogLevelFile, "cmd=7\n");
  Post(BodyWithoutSession("HeartbeatConfirmation"));
  EXPECT_THAT(log_.Lines(),
              Logged(Debug("send res_str = {\"Response\":{\"Requested\":\"HeartbeatConfirmation\","
                           "\"Result\":\"Success\",\"Data\":{\"VideoOutput\":\"On\","
                           "\"StudioTally\":\"Off\"}}}")));
}

TEST_F(TraceTest, OfAStudioTallyWithoutSessionOnlyTheReplyIsTraced) {
  const FakeDaemon daemon(Answer(ReplyMessage(Bytes({0}))));
  Post(BodyWithoutSession("SetStudioTallyWithoutSession"));
  EXPECT_THAT(log_.Lines(),
              Logged(Error("send res_str = {\"Response\":{\"Requested\":"
                           "\"SetStudioTallyWithoutSession\",\"Result\":\"Success\"}}")));
}

TEST_F(TraceTest, TheWholeBodyIsTraced) {
  const FakeDaemon daemon(Answer(ReplyMessage(Bytes({0}))));
  const std::string body =
      "{\"Before\":1,\"Request\":{\"Command\":\"MonitorStop\",\"SessionID\":\"5f0c2a9e71d4\"}}tail";
  Post(body);
  EXPECT_THAT(log_.Lines(), Logged(Error("rcv post_data = " + body),
                                   Error("send res_str = {\"Response\":{\"Requested\":"
                                         "\"MonitorStop\",\"Result\":\"Success\"}}")));
}

class ParamsTest : public CameraTest {
 protected:
  FakeDaemon daemon_{Answer(ReplyMessage(Bytes({0, 0, 0, 0, 0})))};
};

TEST_F(ParamsTest, WithoutParamsNothingIsParsed) {
  const Outcome outcome = Post(Body("PageChange"));
  EXPECT_EQ(outcome.exit_status, 0);
  EXPECT_THAT(daemon_.Received(), ElementsAre(Message(5, 1, 15, outcome.pid)));
}

TEST_F(ParamsTest, TheTextAfterTheFirstParamsIsParsed) {
  const std::string body =
      "{\"Request\":{\"Page\":9,\"Command\":\"PageChange\",\"SessionID\":\"5f0c2a9e71d4\","
      "\"Params\":{\"Params\":{\"Page\":3}}}}";
  const Outcome outcome = Post(body);
  EXPECT_THAT(daemon_.Received(), ElementsAre(Message(5, 1, 15, outcome.pid, Bytes({3}))));
}

TEST_F(ParamsTest, MayBeAnywhereInTheBody) {
  const std::string body =
      "{\"Params\":{\"Page\":4},\"Command\":\"PageChange\",\"SessionID\":\"5f0c2a9e71d4\"}";
  const Outcome outcome = Post(body);
  EXPECT_THAT(daemon_.Received(), ElementsAre(Message(5, 1, 15, outcome.pid, Bytes({4}))));
}

TEST_F(ParamsTest, WithAnotherSpellingCountAsAbsent) {
  for (const char* const member : {"\"params\":{\"Page\":3}", "\"Params\"={\"Page\":3}"}) {
    SCOPED_TRACE(member);
    const Outcome outcome =
        Post(std::string("{\"Request\":{\"Command\":\"PageChange\",\"SessionID\":"
                         "\"5f0c2a9e71d4\",") +
             member + "}}");
    EXPECT_EQ(daemon_.Received().back(), Message(5, 1, 15, outcome.pid));
  }
}

TEST_F(ParamsTest, CommandsThatTakeNoneIgnoreThem) {
  const Outcome outcome = Post(Body("MonitorStart", "\"Any\":{\"Thing\":[1,2]}"));
  EXPECT_THAT(outcome, Replied("{\"Response\":{\"Requested\":\"MonitorStart\","
                               "\"Result\":\"Success\"}}"));
  EXPECT_THAT(daemon_.Received(), ElementsAre(Message(5, 0, 5, outcome.pid)));
}

TEST_F(ParamsTest, ThatAreRefusedGetRequestedErrorAndReachNoDaemon) {
  const std::string body = Body("PageChange", "\"Wrong\":1");
  EXPECT_THAT(Post(body), Replied("{\"Response\":{\"Result\":\"RequestedError\"}}"));
  EXPECT_THAT(daemon_.Received(), ElementsAre());
  EXPECT_THAT(log_.Lines(),
              Logged(Error("rcv post_data = " + body),
                     Error("error: json_parser() key [Page] does not appear\n"),
                     Error("requested error ret=-1, params=\"Params\":{\"Wrong\":1}}}")));
}

}  // namespace
