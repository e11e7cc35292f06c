#include <string>

#include "harness/camera_test.h"

// System information, heartbeat and page permissions.

namespace {

using namespace harness;
using testing::ElementsAre;

constexpr std::size_t kModel = 516;
constexpr std::size_t kDestination = 517;
constexpr std::size_t kSerial = 228;
constexpr std::size_t kStudioTally = 53;
constexpr std::size_t kCameraControlAllowed = 115;

struct CodeRow {
  int code;
  const char* word;
};

class SystemInfoTest : public CameraTest {
 protected:
  static std::string Json(const std::string& model, const std::string& destination,
                          const std::string& serial) {
    return "{\"Response\":{\"Requested\":\"GetSystemInfo\",\"Result\":\"Success\",\"Data\":{"
           "\"Model\":\"" +
           model + "\",\"Destination\":\"" + destination +
           "\",\"ApiVersion\":\"1.08.0\",\"Serial\":\"" + serial + "\"}}}";
  }
};

TEST_F(SystemInfoTest, EveryModelCodeHasItsName) {
  constexpr CodeRow kRows[] = {
      {0, "RV130/140"},   {1, "RV110"},      {2, "RV120"},       {3, "RV130"},
      {4, "RV140"},       {5, "RV150"},      {6, "RV160"},       {7, "RV170"},
      {8, "RV180"},       {9, "RV190"},      {10, "RV210"},      {11, "RV220"},
      {12, "RV130/140"},  {13, "RV130/140"}, {127, "RV130/140"}, {128, "RV130/140"},
      {255, "RV130/140"},
  };
  for (const CodeRow& row : kRows) {
    SCOPED_TRACE(row.code);
    StatusBlock().SetByte(kModel, row.code).Store();
    EXPECT_THAT(Post(Body("GetSystemInfo")), Replied(Json(row.word, "JP", "")));
  }
}

TEST_F(SystemInfoTest, EveryDestinationCodeHasItsName) {
  constexpr CodeRow kRows[] = {
      {0, "JP"},  {1, "US"},  {2, "KR"},  {3, "EU"},  {4, "ER"},  {5, "AC"},   {6, "AA"},
      {7, "AG"},  {8, "TW"},  {9, "AS"},  {10, "UC"}, {11, "UA"}, {12, "UB"},  {13, "EZ"},
      {14, "EY"}, {15, "EK"}, {16, "EY"}, {17, "AH"}, {18, "UN"}, {128, "UN"}, {255, "UN"},
  };
  for (const CodeRow& row : kRows) {
    SCOPED_TRACE(row.code);
    StatusBlock().SetByte(kDestination, row.code).Store();
    EXPECT_THAT(Post(Body("GetSystemInfo")), Replied(Json("RV130/140", row.word, "")));
  }
}

TEST_F(SystemInfoTest, TheSerialEndsAtItsNul) {
  StatusBlock().Fill('x').SetBytes(kSerial, "SN-0042" + Bytes({0})).Store();
  EXPECT_THAT(Post(Body("GetSystemInfo")), Replied(Json("RV130/140", "UN", "SN-0042")));
}

TEST_F(SystemInfoTest, ASerialWithoutANulEndsWithTheBlock) {
  StatusBlock().Fill('x').Store();
  EXPECT_THAT(Post(Body("GetSystemInfo")),
              Replied(Json("RV130/140", "UN", std::string(1024 - 228, 'x'))));
}

TEST_F(SystemInfoTest, TheSerialIsPrintedUnchanged) {
  const RepliesMayBreak may_break;
  StatusBlock().SetText(kSerial, "a\"b\\c%s\x01\xff").Store();
  EXPECT_THAT(Post(Body("GetSystemInfo")), Replied(Json("RV130/140", "JP", "a\"b\\c%s\x01\xff")));
}

TEST_F(SystemInfoTest, WithoutAStatusBlockEverythingIsZero) {
  EXPECT_THAT(Post(Body("GetSystemInfo")), Replied(Json("RV130/140", "JP", "")));
}

TEST_F(SystemInfoTest, MissingBytesOfAShortStatusBlockAreZero) {
  StatusBlock().SetText(kSerial, "S1").SetByte(kModel, 3).SetByte(kDestination, 3).Store(517);
  EXPECT_THAT(Post(Body("GetSystemInfo")), Replied(Json("RV130", "JP", "S1")));
}

TEST_F(SystemInfoTest, AnEmptyMemoryImageIsAllZero) {
  WriteFile(kMemoryFile, "");
  EXPECT_THAT(Post(Body("GetSystemInfo")), Replied(Json("RV130/140", "JP", "")));
}

TEST_F(SystemInfoTest, SendsNoMessage) {
  FakeDaemon daemon;
  Post(Body("GetSystemInfo", "\"Any\":1"));
  EXPECT_THAT(daemon.Received(), ElementsAre());
}

class HeartbeatTest : public CameraTest {
 protected:
  static std::string Json(const std::string& tally) {
    return "{\"Response\":{\"Requested\":\"HeartbeatConfirmation\",\"Result\":\"Success\",\"Data\":"
           "{\"VideoOutput\":\"On\",\"StudioTally\":\"" +
           tally + "\"}}}";
  }
};

TEST_F(HeartbeatTest, EveryStudioTallyStateHasItsWord) {
  constexpr CodeRow kRows[] = {
      {0, "Off"}, {1, "Program"}, {2, "Preview"}, {3, "Off"}, {128, "Off"}, {255, "Off"},
  };
  for (const CodeRow& row : kRows) {
    SCOPED_TRACE(row.code);
    StatusBlock().SetByte(kStudioTally, row.code).Store();
    EXPECT_THAT(Post(BodyWithoutSession("HeartbeatConfirmation")), Replied(Json(row.word)));
  }
  EXPECT_THAT(log_.Lines(), Logged());
}

TEST_F(HeartbeatTest, TheVideoOutputIsAlwaysOn) {
  StatusBlock().Fill(255).Store();
  EXPECT_THAT(Post(BodyWithoutSession("HeartbeatConfirmation")), Replied(Json("Off")));
}

TEST_F(HeartbeatTest, SendsNoMessageAndTakesParams) {
  FakeDaemon daemon;
  EXPECT_THAT(Post(BodyWithoutSession("HeartbeatConfirmation", "\"Any\":1")), Replied(Json("Off")));
  EXPECT_THAT(daemon.Received(), ElementsAre());
}

class PageChangeTest : public CameraTest {
 protected:
  static std::string Json(const std::string& result, int planning, int edit, int view, int control,
                          int setting) {
    return "{\"Response\":{\"Requested\":\"PageChange\",\"Result\":\"" + result +
           "\",\"Data\":{\"AllowedPage\":{\"PlanningMetadata\":" + std::to_string(planning) +
           ",\"EditMetadata\":" + std::to_string(edit) + ",\"ViewRemote\":" + std::to_string(view) +
           ",\"CameraControl\":" + std::to_string(control) +
           ",\"Setting\":" + std::to_string(setting) + "}}}}";
  }
};

TEST_F(PageChangeTest, SendsThePageAndReportsThePermissions) {
  StatusBlock().SetByte(kCameraControlAllowed, 5).Store();
  FakeDaemon daemon(Answer(ReplyMessage(Bytes({0, 1, 2, 3, 4}))));
  const std::string body = Body("PageChange", "\"Page\":2");
  const Outcome outcome = Post(body);
  EXPECT_THAT(outcome, Replied("{\"Response\":{\"Requested\":\"PageChange\",\"Result\":\"Success\","
                               "\"Data\":{\"AllowedPage\":{\"PlanningMetadata\":1,"
                               "\"EditMetadata\":2,\"ViewRemote\":3,\"CameraControl\":5,"
                               "\"Setting\":4}}}}"));
  EXPECT_THAT(daemon.Received(),
              ElementsAre(Bytes({0, 5, 1, 0, 15, 0, 0, 0}) +
                          Le32(static_cast<std::uint32_t>(outcome.pid)) + Bytes({2})));
  EXPECT_THAT(log_.Lines(), Logged(Error("rcv post_data = " + body),
                                   Error("send res_str = " + Json("Success", 1, 2, 3, 5, 4))));
}

TEST_F(PageChangeTest, PermissionsAreSignedButThatOfTheCameraControlIsNot) {
  StatusBlock().SetByte(kCameraControlAllowed, 255).Store();
  FakeDaemon daemon;
  daemon.Next(Answer(ReplyMessage(Bytes({0, 0xff, 0x80, 0x7f, 0xfe}))));
  EXPECT_THAT(Post(Body("PageChange", "\"Page\":1")),
              Replied(Json("Success", -1, -128, 127, 255, -2)));
}

TEST_F(PageChangeTest, TheResultComesFromTheDaemon) {
  FakeDaemon daemon;
  const CodeRow kRows[] = {
      {1, "RequestedError"}, {2, "DisableError"}, {3, "Success"}, {255, "Success"}};
  for (const CodeRow& row : kRows) {
    SCOPED_TRACE(row.code);
    daemon.Next(Answer(ReplyMessage(Bytes({row.code, 1, 1, 1, 1}))));
    EXPECT_THAT(Post(Body("PageChange", "\"Page\":1")), Replied(Json(row.word, 1, 1, 1, 0, 1)));
  }
}

TEST_F(PageChangeTest, PermissionsThatDidNotArriveAreZero) {
  struct Row {
    const char* description;
    std::string answer;
    std::string json;
  };
  const Row kRows[] = {
      {"no answer", "", Json("Success", 0, 0, 0, 0, 0)},
      {"an empty payload", ReplyHeader(0), Json("Success", 0, 0, 0, 0, 0)},
      {"only the result", ReplyMessage(Bytes({1})), Json("RequestedError", 0, 0, 0, 0, 0)},
      {"two of four", ReplyMessage(Bytes({0, 7, -7})), Json("Success", 7, -7, 0, 0, 0)},
      {"two of four, though all are announced", ReplyHeader(5) + Bytes({2, 7, -7}),
       Json("DisableError", 7, -7, 0, 0, 0)},
      {"more than four", ReplyMessage(Bytes({0, 1, 2, 3, 4, 5, 6})),
       Json("Success", 1, 2, 3, 0, 4)},
      {"the longest payload", ReplyMessage(Bytes({0}) + std::string(65534, '\x05')),
       Json("Success", 5, 5, 5, 0, 5)},
  };
  FakeDaemon daemon;
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.description);
    daemon.Next(AnswerAndClose(row.answer));
    EXPECT_THAT(Post(Body("PageChange", "\"Page\":1")), Replied(row.json));
  }
}

TEST_F(PageChangeTest, WithoutParamsTheBareHeaderIsSent) {
  FakeDaemon daemon(Answer(ReplyMessage(Bytes({0, 1, 1, 1, 1}))));
  const Outcome outcome = Post(Body("PageChange"));
  EXPECT_THAT(outcome, Replied(Json("Success", 1, 1, 1, 0, 1)));
  EXPECT_THAT(daemon.Received(), ElementsAre(Message(5, 1, 15, outcome.pid)));
}

TEST_F(PageChangeTest, AnAbsentDaemonIsFatal) {
  const std::string body = Body("PageChange", "\"Page\":1");
  EXPECT_THAT(Post(body), EndedSilently(1));
  EXPECT_THAT(log_.Lines(),
              Logged(Error("rcv post_data = " + body), Error("cannot connect sockname.")));
}

}  // namespace
