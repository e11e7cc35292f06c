#include "remote_test.h"

// What all commands that operate the camera have in common.

namespace {

using namespace harness;
using testing::ElementsAre;

class RemoteCommandsTest : public RemoteTest {};

/// A request of each command that the camera accepts, and its traces at level 2.
struct CommandCase {
  const char* command;
  int code;
  int preset_length;  // of the payload, announced also when there is none
  const char* params;
  std::vector<std::string> steps;
};

const std::vector<CommandCase>& AllCommands() {
  static const std::vector<CommandCase> kCases = {
      {"SetWebKeyEvent",
       17,
       2,
       R"("Kind":"Rec","Key":"Stop")",
       {R"(##### SetWebKeyEvent Parse() params={"Kind":"Rec","Key":"Stop"}}})",
        "command Hit!!! eventTable[1] kind=Rec button=Stop", "send param kind=Rec(1) key=Stop(1)"}},
      {"SetWebButtonEvent",
       17,
       2,
       R"("Kind":"Rec","Button":"Stop")",
       {R"(##### SetWebButtonEvent Parse() params={"Kind":"Rec","Button":"Stop"}}})",
        "command Hit!!! eventTable[1] kind=Rec button=Stop",
        "send param kind=Rec(1) button=Stop(1)"}},
      {"SystemRequest",
       17,
       2,
       R"("Request":"Resume")",
       {"##### SystemRequest Parse()", "command Hit!!! eventTable[132] kind=System button=Resume",
        "send param kind=System(30) button=Resume(0)"}},
      {"SetIFBCtrl",
       17,
       2,
       R"("Streaming":"Stop")",
       {R"(##### SetIFBCtrl Parse() params={"Streaming":"Stop"}}})",
        "command Hit!!! eventTable[111] kind=IFBStreaming button=Stop"}},
      {"SetStreamingCtrl",
       17,
       2,
       R"("Streaming":"Off")",
       {R"(##### SetStreamingCtrl Parse() params={"Streaming":"Off"}}})",
        "command Hit!!! eventTable[109] kind=Streaming button=Stop"}},
      {"SetTallyLampPriority",
       17,
       2,
       R"("Priority":"Camera")",
       {"##### SetTallyLampPriority Parse() m_priority=Camera",
        "command Hit!!! eventTable[99] kind=Tally button=Camera",
        "send param kind=Tally(14) button=Camera(0)"}},
      {"SetTallyLampCtrl",
       17,
       2,
       R"("Sw":"On")",
       {R"(##### SetTallyLampCtrl Parse() params={"Sw":"On"}}})",
        "command Hit!!! eventTable[101] kind=Tally button=On"}},
      {"SetTallyControlWithPriority",
       17,
       2,
       R"("Sw":"Off")",
       {R"(##### SetTallyControlWithPriority Parse() params={"Sw":"Off"}}})",
        "command Hit!!! eventTable[104] kind=Tally button=OffWeb",
        "send param kind=Tally(14) button=OffWeb(5)"}},
      {"SetStudioTally",
       17,
       2,
       R"("Indication":"Off")",
       {R"(##### SetStudioTally Parse() params={"Indication":"Off"}}})",
        "command Hit!!! eventTable[105] kind=StudioTally button=Off",
        "send param kind=StudioTally(15) button=Off(0)"}},
      {"SetWebSliderEvent",
       18,
       2,
       R"("Kind":"FocusBar","Position":2)",
       {R"(##### SetWebSliderEvent Parse() params={"Kind":"FocusBar","Position":2}}})",
        "command Hit!!! eventTable[115] kind=FocusBar",
        "send param kind=FocusBar(18) position=512"}},
      {"SetWebXYFieldEvent",
       19,
       2,
       R"("Kind":"WhPaintRB","XPosition":1,"YPosition":2)",
       {R"(##### SetWebXYFieldEvent Parse() )"
        R"(params={"Kind":"WhPaintRB","XPosition":1,"YPosition":2}}})",
        "command Hit!!! eventTable[119] kind=WhPaintRB",
        "send param kind=WhPaintRB(22) position=513(x=1,y=2)"}},
      {"SeesawSwitchOperation",
       119,
       0,
       R"("Kind":"IrisSeesaw","Direction":"Close","Speed":1)",
       {"##### SeesawSwitchOperation Parse() Kind=IrisSeesaw dir=Close Spead=1",
        "command Hit!!! eventTable[121] kind=IrisSeesaw button=Close",
        "send param kind=IrisSeesaw(27) dir=Close(2) speed=1"}},
      {"ZoomSwitchOperation",
       118,
       0,
       R"("Direction":"Wide","Speed":1)",
       {"##### ZoomSwitchOperation Parse() Zoom=Wide Spead=1", "send param dir=Wide(1) speed=1"}},
      {"SetCamCtrl",
       1,
       1,
       R"("CamCtrl":"Stop")",
       {R"(params={"CamCtrl":"Stop"}}})", "ctrl=Stop(1)"}},
      {"SetZoomCtrl",
       14,
       2,
       R"("Position":499)",
       {R"(##### SetZoomCtrl Parse() params={"Position":499}}})", "pos=499 position=499"}},
      {"JpegEncode",
       5,
       0,
       R"("Operate":"Start")",
       {R"(##### JpegEncode Parse() params={"Operate":"Start"}}})", "send param operate=Start"}},
  };
  return kCases;
}

bool IsPolled(const CommandCase& row) { return std::string(row.command) == "JpegEncode"; }

LogLines Infos(const std::vector<std::string>& texts) {
  LogLines lines;
  for (const std::string& text : texts) {
    lines.push_back(Info(text));
  }
  return lines;
}

TEST_F(RemoteCommandsTest, WithoutParametersTheBareHeaderAnnouncesThePresetLength) {
  for (const CommandCase& row : AllCommands()) {
    SCOPED_TRACE(row.command);
    const Exchange exchange = Serve(Body(row.command));
    EXPECT_THAT(exchange.outcome, Replied(ResultJson(row.command)));
    EXPECT_THAT(exchange.messages,
                ElementsAre(Message(5, static_cast<std::size_t>(row.preset_length), row.code,
                                    exchange.outcome.pid)));
  }
}

TEST_F(RemoteCommandsTest, ReportsTheResultOfTheDaemon) {
  for (const CommandCase& row : AllCommands()) {
    SCOPED_TRACE(row.command);
    const std::string body = Body(row.command, row.params);
    EXPECT_THAT(Serve(body, 1).outcome, Replied(ResultJson(row.command, "RequestedError")));
    EXPECT_THAT(Serve(body, 2).outcome, Replied(ResultJson(row.command, "DisableError")));
    EXPECT_THAT(Serve(body, 3).outcome, Replied(ResultJson(row.command, "Success")));
  }
}

TEST_F(RemoteCommandsTest, ParameterTracesAreOfLevel2) {
  for (const CommandCase& row : AllCommands()) {
    for (const char* const threshold : {"cmd=2\n", "cmd=4\n", "cmd=7\n"}) {
      SCOPED_TRACE(std::string(row.command) + " at " + threshold);
      WriteFile(kLogLevelFile, threshold);
      const LogLines lines = Serve(Body(row.command, row.params)).lines;
      if (!IsPolled(row)) {
        EXPECT_EQ(lines, Answered(row.command, row.params, Infos(row.steps)));
      } else if (std::string(threshold) != "cmd=7\n") {
        EXPECT_EQ(lines, Infos(row.steps));
      }
    }
  }
}

TEST_F(RemoteCommandsTest, AtLevel1OnlyRequestAndReplyAreTraced) {
  WriteFile(kLogLevelFile, "cmd=1\n");
  for (const CommandCase& row : AllCommands()) {
    SCOPED_TRACE(row.command);
    const LogLines lines = Serve(Body(row.command, row.params)).lines;
    EXPECT_EQ(lines, IsPolled(row) ? LogLines{} : Answered(row.command, row.params, {}));
  }
}

TEST_F(RemoteCommandsTest, WithoutTheDaemonThereIsNoReply) {
  for (const CommandCase& row : AllCommands()) {
    SCOPED_TRACE(row.command);
    EXPECT_THAT(Post(Body(row.command, row.params)), EndedSilently(1));
    EXPECT_THAT(log_.TakeLines(), testing::Contains(Error("cannot connect sockname.")));
  }
}

}  // namespace
