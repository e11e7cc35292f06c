// Canned requests from the command line.
#include <cstddef>
#include <string>
#include <vector>

#include "harness/camera_test.h"

namespace {

using namespace harness;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using Texts = std::vector<std::string>;

/// No client is logged in: the command line needs no session.
class CommandLineTest : public CameraTest {
 protected:
  CommandLineTest() { ResetPrivateWorld(); }

  static Outcome Run(const Texts& arguments) { return RunHandler(Request::CommandLine(arguments)); }
};

std::string Joined(const Texts& arguments) { return testing::PrintToString(arguments); }

/// A daemon whose only answer is "Success".
Script Success() { return Answer(ReplyMessage(Bytes({0}))); }

/// The lines that come before those of the command itself.
void ExpectLogBegins(const LogLines& lines, const LogLines& first) {
  ASSERT_GE(lines.size(), first.size());
  EXPECT_EQ(LogLines(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(first.size())),
            first);
}

constexpr char kClipList[] =
    R"({"Request":{"Command":"GetClipInfo","Params":{"Slot":"%c","StartIndexNo":%d,"ClipNum":%d}}})";
constexpr char kZoom[] = R"({"Request":{"Command":"SetZoomCtrl","Params":{"Position":%d}})";
constexpr char kPage[] = R"({"Request":{"Command":"PageChange","Params":{"Page":%d}})";
constexpr char kMark[] =
    R"({"Request":{"Command":"SetClipInfo","Params":{"Slot":"%c","IndexNo":%d,"OKMark":"%s"}}})";
constexpr char kKey[] =
    R"({"Request":{"Command":"SetWebKeyEvent","Params":{"Kind":"%s","Key":"%s"}}})";
constexpr char kSlider[] =
    R"({"Request":{"Command":"SetWebSliderEvent","Params":{"Kind":"%s","Position":%d}}})";
constexpr char kXYField[] =
    R"({"Request":{"Command":"SetWebXYFieldEvent","Params":{"Kind":"%s","XPosition":%d,"YPosition":%d}}})";

TEST_F(CommandLineTest, NumbersHaveTheirCannedRequests) {
  const struct {
    std::string number;
    std::string canned;
    std::string command;
  } rows[] = {
      {"0", R"({"Request":{"Command":"GetCamStatus"}})", "GetCamStatus"},
      {"1", R"({"Request":{"Command":"SetCamCtrl","Params":{"CamCtrl":"Rec"}}})", "SetCamCtrl"},
      {"2", R"({"Request":{"Command":"SetCamCtrl","Params":{"CamCtrl":"Stop"}}})", "SetCamCtrl"},
      {"5", R"({"Request":{"Command":"MonitorStart"}})", "MonitorStart"},
      {"6", R"({"Request":{"Command":"MonitorStop"}})", "MonitorStop"},
  };
  FakeDaemon daemon(Success());
  for (const auto& row : rows) {
    SCOPED_TRACE(row.number);
    const Outcome outcome = Run({row.number});
    EXPECT_EQ(outcome.exit_status, 0);
    EXPECT_THAT(outcome.output,
                HasSubstr(R"("Requested":")" + row.command + R"(","Result":"Success")"));
    ExpectLogBegins(log_.TakeLines(), {Info("INPUT_COMMAND(" + row.number + "):" + row.canned),
                                       Error("CMD post_data = " + row.canned)});
  }
}

TEST_F(CommandLineTest, CannedRequestsOfNoCommandAreUnknown) {
  const struct {
    std::string number;
    std::string canned;
    std::string command;
  } rows[] = {
      {"3", "", ""},
      {"4", "", ""},
      {"7", R"({"Request":{"Command":"GetImportMetadeta"}})", "GetImportMetadeta"},
      {"8", "", ""},
      {"9", "", ""},
      {"10", "", ""},
      {"12", "", ""},
      {"13", "", ""},
      {"20", R"({"Request":{"Command":"ResetSettingData"}})", "ResetSettingData"},
      {"21", "", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.number);
    EXPECT_THAT(Run({row.number}), Replied(ErrorJson("CommandError"), 1));
    EXPECT_THAT(log_.TakeLines(), Logged(Info("INPUT_COMMAND(" + row.number + "):" + row.canned),
                                         Error("CMD post_data = " + row.canned),
                                         Error("command error = " + row.command)));
  }
}

TEST_F(CommandLineTest, StatusNeedsNoSessionFile) {
  FakeDaemon daemon(Success());
  const Outcome outcome = Run({"0"});
  EXPECT_EQ(outcome.exit_status, 0);
  EXPECT_THAT(outcome.output, HasSubstr(R"({"Response":{"Requested":"GetCamStatus",)"
                                        R"("Result":"Success","Data":{"Status":"NoCard",)"));
  EXPECT_THAT(daemon.Received(), ElementsAre(Message(5, 0, 0, outcome.pid)));
  // The status report is not logged here either.
  EXPECT_THAT(log_.Lines(),
              Logged(Info(R"(INPUT_COMMAND(0):{"Request":{"Command":"GetCamStatus"}})"),
                     Error(R"(CMD post_data = {"Request":{"Command":"GetCamStatus"}})")));
}

TEST_F(CommandLineTest, RequestsWithoutArgumentsAreSent) {
  const struct {
    std::string number;
    std::string command;
    int code;
    std::string payload;
  } rows[] = {
      {"1", "SetCamCtrl", 1, Bytes({0})},
      {"2", "SetCamCtrl", 1, Bytes({1})},
      {"5", "MonitorStart", 5, ""},
      {"6", "MonitorStop", 6, ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.number);
    FakeDaemon daemon(Success());
    const Outcome outcome = Run({row.number});
    EXPECT_THAT(outcome, Replied(ResultJson(row.command)));
    EXPECT_THAT(daemon.Received(),
                ElementsAre(Message(5, row.payload.size(), row.code, outcome.pid, row.payload)));
  }
}

TEST_F(CommandLineTest, LogsEachStepOfARequest) {
  FakeDaemon daemon(Success());
  Run({"6"});
  const std::string request = R"({"Request":{"Command":"MonitorStop"}})";
  EXPECT_THAT(log_.Lines(), Logged(Info("INPUT_COMMAND(6):" + request),  //
                                   Error("CMD post_data = " + request),  //
                                   Error("rcv post_data = " + request),  //
                                   Error("send res_str = " + ResultJson("MonitorStop"))));
}

TEST_F(CommandLineTest, ShowsTheCannedRequestWhateverTheThreshold) {
  WriteFile(kLogLevelFile, "cmd=1\n");
  Run({"20"});
  const std::string request = R"({"Request":{"Command":"ResetSettingData"}})";
  EXPECT_THAT(log_.Lines(),
              Logged(Info("INPUT_COMMAND(20):" + request), Error("CMD post_data = " + request),
                     Error("command error = ResetSettingData")));
}

TEST_F(CommandLineTest, ArgumentsTakeTheirPlacesInTheRequest) {
  const auto clips = [](const std::string& slot, const std::string& start,
                        const std::string& count) {
    return R"({"Request":{"Command":"GetClipInfo","Params":{"Slot":")" + slot +
           R"(","StartIndexNo":)" + start + R"(,"ClipNum":)" + count + "}}}";
  };
  const auto zoom = [](const std::string& position) {
    return R"({"Request":{"Command":"SetZoomCtrl","Params":{"Position":)" + position + "}}";
  };
  const auto page = [](const std::string& number) {
    return R"({"Request":{"Command":"PageChange","Params":{"Page":)" + number + "}}";
  };
  const auto mark = [](const std::string& slot, const std::string& index, const std::string& word) {
    return R"({"Request":{"Command":"SetClipInfo","Params":{"Slot":")" + slot + R"(","IndexNo":)" +
           index + R"(,"OKMark":")" + word + R"("}}})";
  };
  const struct {
    const char* description;
    Texts arguments;
    const char* canned;
    std::string request;
  } rows[] = {
      {"clips of slot A", {"11", "a", "5", "10"}, kClipList, clips("A", "5", "10")},
      {"clips without arguments", {"11"}, kClipList, clips("B", "0", "0")},
      {"clips with a slot alone", {"11", "a"}, kClipList, clips("A", "0", "0")},
      {"a start index without count is none", {"11", "a", "5"}, kClipList, clips("A", "0", "0")},
      {"upper case is not slot A", {"11", "A", "5", "10"}, kClipList, clips("B", "5", "10")},
      {"more than a letter is not slot A",
       {"11", "ab", "5", "10"},
       kClipList,
       clips("B", "5", "10")},
      {"an empty slot", {"11", "", "5", "10"}, kClipList, clips("B", "5", "10")},
      {"numbers that are none", {"11", "a", "x", ""}, kClipList, clips("A", "0", "0")},
      {"more arguments than there are places",
       {"11", "a", "5", "10", "x", "y"},
       kClipList,
       clips("A", "5", "10")},
      {"zoom", {"14", "300"}, kZoom, zoom("300")},
      {"zoom without position", {"14"}, kZoom, zoom("0")},
      {"zoom to a negative position", {"14", " -7up"}, kZoom, zoom("-7")},
      {"numbers saturate", {"14", "99999999999999999999"}, kZoom, zoom("2147483647")},
      {"numbers saturate below, too", {"14", "-2147483649"}, kZoom, zoom("-2147483648")},
      {"page", {"15", "258"}, kPage, page("258")},
      {"page without number", {"15"}, kPage, page("0")},
      {"mark", {"16", "a", "7", "1"}, kMark, mark("A", "7", "Mark")},
      {"mark removed", {"16", "b", "7", "0"}, kMark, mark("B", "7", "NoMark")},
      {"a mark that is not a number counts as 0",
       {"16", "a", "7", "yes"},
       kMark,
       mark("A", "7", "NoMark")},
      {"a clip is marked unless told otherwise", {"16", "a", "7"}, kMark, mark("A", "7", "Mark")},
      {"mark without arguments", {"16"}, kMark, mark("B", "0", "Mark")},
  };
  FakeDaemon daemon(Success());
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.description) + " " + Joined(row.arguments));
    EXPECT_EQ(Run(row.arguments).exit_status, 0);
    ExpectLogBegins(log_.TakeLines(),
                    {Info("INPUT_COMMAND(" + row.arguments[0] + "):" + row.canned),
                     Error("CMD post_data = " + row.request)});
  }
}

TEST_F(CommandLineTest, ClipsOfSlotAFromIndex5) {
  FakeDaemon daemon(Answer(ReplyMessage(Bytes({0, 0, 0, 0}))));
  const Outcome outcome = Run({"11", "a", "5", "10"});
  EXPECT_THAT(outcome, Replied(DataJson("GetClipInfo", R"("ClipNum":0,"ClipInfo":[])")));
  EXPECT_THAT(daemon.Received(),
              ElementsAre(Message(6, 6, 11, outcome.pid, Bytes({0, 0, 0, 5, 0, 10}))));
}

TEST_F(CommandLineTest, ClipsWithoutArgumentsAreRefusedByTheirCommand) {
  FakeDaemon daemon(Success());
  EXPECT_THAT(Run({"11"}), Replied(ErrorJson("RequestedError")));
  EXPECT_THAT(daemon.Received(), IsEmpty());
  EXPECT_THAT(log_.Lines(),
              testing::Contains(Error("requested error ret=-2, params=\"Params\":"
                                      R"({"Slot":"B","StartIndexNo":0,"ClipNum":0}}})")));
}

TEST_F(CommandLineTest, RequestsWithoutTheirLastBraceAreAccepted) {
  FakeDaemon daemon(Success());
  daemon.Next(Success()).Next(Answer(ReplyMessage(Bytes({0, 1, 1, 0, 1}))));
  const Outcome zoom = Run({"14", "300"});
  EXPECT_THAT(zoom, Replied(ResultJson("SetZoomCtrl")));
  const Outcome page = Run({"15", "3"});
  EXPECT_THAT(page, Replied(DataJson("PageChange",
                                     R"("AllowedPage":{"PlanningMetadata":1,"EditMetadata":1,)"
                                     R"("ViewRemote":0,"CameraControl":0,"Setting":1})")));
  EXPECT_THAT(daemon.Received(), ElementsAre(Message(5, 2, 14, zoom.pid, Be16(300)),
                                             Message(5, 1, 15, page.pid, Bytes({3}))));
}

TEST_F(CommandLineTest, MarksAClip) {
  FakeDaemon daemon(Success());
  const Outcome outcome = Run({"16", "a", "258", "0"});
  EXPECT_THAT(outcome, Replied(ResultJson("SetClipInfo")));
  EXPECT_THAT(daemon.Received(),
              ElementsAre(Message(6, 6, 16, outcome.pid, Bytes({0, 0, 1, 2, 0, 0}))));
}

TEST_F(CommandLineTest, KeyEventsAreNamedByTheirNumbers) {
  const struct {
    const char* description;
    Texts arguments;
    const char* numbers;  // in the log
    int row;
    const char* kind;
    const char* key;
    std::string payload;
  } rows[] = {
      {"a key", {"17", "3", "7"}, "nKind=3 nKey=7", 11, "Iris", "Close3", Bytes({3, 7})},
      {"the key missing", {"17", "3"}, "nKind=3 nKey=0", 4, "Iris", "Manual", Bytes({3, 0})},
      {"codes out of row order",
       {"17", "6", "5"},
       "nKind=6 nKey=5",
       31,
       "Shutter",
       "Faster",
       Bytes({6, 5})},
      {"the first of two names",
       {"17", "5", "0"},
       "nKind=5 nKey=0",
       21,
       "AeLevel",
       "AeLevelUp",
       Bytes({5, 0})},
      {"the first of two kinds",
       {"17", "12", "6"},
       "nKind=12 nKey=6",
       89,
       "Disptv",
       "Right",
       Bytes({12, 6})},
      {"a bar's row",
       {"17", "17", "255"},
       "nKind=17 nKey=255",
       114,
       "ZoomBar",
       "",
       Bytes({17, 255})},
      {"the last key",
       {"17", "30", "0"},
       "nKind=30 nKey=0",
       132,
       "System",
       "Resume",
       Bytes({30, 0})},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.description) + " " + Joined(row.arguments));
    FakeDaemon daemon(Success());
    const Outcome outcome = Run(row.arguments);
    EXPECT_THAT(outcome, Replied(ResultJson("SetWebKeyEvent")));
    EXPECT_THAT(daemon.Received(), ElementsAre(Message(5, 2, 17, outcome.pid, row.payload)));
    ExpectLogBegins(
        log_.TakeLines(),
        {Info("INPUT_COMMAND(17):" + std::string(kKey)),
         Error("console " + std::string(row.numbers)),
         Error("console Hit!!! eventTable[" + std::to_string(row.row) + "] kind=" + row.kind +
               " key=" + row.key),
         Error(R"(CMD post_data = {"Request":{"Command":"SetWebKeyEvent","Params":{"Kind":")" +
               std::string(row.kind) + R"(","Key":")" + row.key + R"("}}})")});
  }
}

TEST_F(CommandLineTest, SlidersAreNamedByTheirNumbers) {
  const struct {
    const char* description;
    Texts arguments;
    const char* numbers;
    const char* hit;
    const char* params;
  } rows[] = {
      {"a bar",
       {"18", "17", "1000"},
       "nKind=17 nPosition=1000",
       "eventTable[114] kind=ZoomBar Pos=1000",
       R"({"Kind":"ZoomBar","Position":1000})"},
      {"a negative position",
       {"18", "20", "-5"},
       "nKind=20 nPosition=-5",
       "eventTable[117] kind=WhPaintR Pos=-5",
       R"({"Kind":"WhPaintR","Position":-5})"},
      {"the position missing",
       {"18", "19"},
       "nKind=19 nPosition=0",
       "eventTable[116] kind=IrisBar Pos=0",
       R"({"Kind":"IrisBar","Position":0})"},
      {"any kind will do, its first row counts",
       {"18", "11", "2"},
       "nKind=11 nPosition=2",
       "eventTable[76] kind=Disptv Pos=2",
       R"({"Kind":"Disptv","Position":2})"},
  };
  FakeDaemon daemon(Success());
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.description) + " " + Joined(row.arguments));
    const Outcome outcome = Run(row.arguments);
    EXPECT_THAT(outcome, Replied(ResultJson("SetWebSliderEvent")));
    ExpectLogBegins(
        log_.TakeLines(),
        {Info("INPUT_COMMAND(18):" + std::string(kSlider)),
         Error("console " + std::string(row.numbers)),
         Error("console Hit!!! " + std::string(row.hit)),
         Error(R"(CMD post_data = {"Request":{"Command":"SetWebSliderEvent","Params":)" +
               std::string(row.params) + "}}")});
  }
}

TEST_F(CommandLineTest, XYFieldsAreNamedByTheirNumbers) {
  const struct {
    const char* description;
    Texts arguments;
    const char* numbers;
    const char* hit;
    const char* params;
  } rows[] = {
      {"a field",
       {"19", "22", "100", "-200"},
       "nKind=22 nXPosition=100 nYPosition=-200",
       "eventTable[119] kind=WhPaintRB XPos=100 YPos=-200",
       R"({"Kind":"WhPaintRB","XPosition":100,"YPosition":-200})"},
      {"the positions missing",
       {"19", "22"},
       "nKind=22 nXPosition=0 nYPosition=0",
       "eventTable[119] kind=WhPaintRB XPos=0 YPos=0",
       R"({"Kind":"WhPaintRB","XPosition":0,"YPosition":0})"},
  };
  FakeDaemon daemon(Success());
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.description) + " " + Joined(row.arguments));
    const Outcome outcome = Run(row.arguments);
    EXPECT_THAT(outcome, Replied(ResultJson("SetWebXYFieldEvent")));
    ExpectLogBegins(
        log_.TakeLines(),
        {Info("INPUT_COMMAND(19):" + std::string(kXYField)),
         Error("console " + std::string(row.numbers)),
         Error("console Hit!!! " + std::string(row.hit)),
         Error(R"(CMD post_data = {"Request":{"Command":"SetWebXYFieldEvent","Params":)" +
               std::string(row.params) + "}}")});
  }
}

TEST_F(CommandLineTest, UnknownKeyAndKindNumbersMakeNoRequest) {
  const struct {
    const char* description;
    Texts arguments;
    const char* canned;
    const char* numbers;
    const char* miss;
  } rows[] = {
      {"no such key",
       {"17", "3", "9"},
       kKey,
       "nKind=3 nKey=9",
       "eventTable[133] kind=None key=None"},
      {"no such kind",
       {"17", "23", "0"},
       kKey,
       "nKind=23 nKey=0",
       "eventTable[133] kind=None key=None"},
      {"no arguments", {"17"}, kKey, "nKind=0 nKey=0", "eventTable[133] kind=None key=None"},
      {"the end row's own numbers",
       {"17", "0", "255"},
       kKey,
       "nKind=0 nKey=255",
       "eventTable[133] kind=None key=None"},
      {"numbers are not cut to a byte",
       {"17", "259", "7"},
       kKey,
       "nKind=259 nKey=7",
       "eventTable[133] kind=None key=None"},
      {"negative numbers",
       {"17", "-253", "-1"},
       kKey,
       "nKind=-253 nKey=-1",
       "eventTable[133] kind=None key=None"},
      {"no such slider",
       {"18", "31", "8"},
       kSlider,
       "nKind=31 nPosition=8",
       "eventTable[133] kind=None Pos=8"},
      {"a slider of kind 0",
       {"18"},
       kSlider,
       "nKind=0 nPosition=0",
       "eventTable[133] kind=None Pos=0"},
      {"no such field",
       {"19", "23", "8", "9"},
       kXYField,
       "nKind=23 nXPosition=8 nYPosition=9",
       "eventTable[133] kind=None XPos=8 YPos=9"},
      {"a field of kind 0",
       {"19", "0"},
       kXYField,
       "nKind=0 nXPosition=0 nYPosition=0",
       "eventTable[133] kind=None XPos=0 YPos=0"},
  };
  FakeDaemon daemon(Success());
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.description) + " " + Joined(row.arguments));
    EXPECT_THAT(Run(row.arguments), Replied(ErrorJson("CommandError"), 1));
    EXPECT_THAT(log_.TakeLines(),
                Logged(Info("INPUT_COMMAND(" + row.arguments[0] + "):" + row.canned),
                       Error("console " + std::string(row.numbers)),
                       Error("console Request is None!!! " + std::string(row.miss)),
                       Error("CMD post_data = "), Error("command error = ")));
  }
  EXPECT_THAT(daemon.Received(), IsEmpty());
}

TEST_F(CommandLineTest, ReservedNumbersMakeNoRequest) {
  for (int number = 108; number <= 117; ++number) {
    SCOPED_TRACE(number);
    EXPECT_THAT(Run({std::to_string(number), "a"}), Replied(ErrorJson("CommandError"), 1));
    EXPECT_THAT(log_.TakeLines(), Logged(Info("INPUT_COMMAND(" + std::to_string(number) + "):"),
                                         Error("CMD post_data = "), Error("command error = ")));
  }
}

TEST_F(CommandLineTest, RefusesOtherNumbersOnStandardError) {
  WriteFile(kLogLevelFile, "cmd=7\n");
  for (const std::string number : {"22", "-1", "99", "101", "107", "118", "256", "65536",
                                   "2147483647", "99999999999", "-99999999999"}) {
    SCOPED_TRACE(number);
    const Outcome outcome = Run({number, "a", "5", "10"});
    EXPECT_EQ(outcome.exit_status, 1);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors,
              "camera_remote.cgi: the first argument is 0 to 21, 100 or 108 to 117\n");
    EXPECT_THAT(log_.TakeLines(), Logged());
  }
}

TEST_F(CommandLineTest, TextThatIsNotANumberIsNumber0) {
  FakeDaemon daemon(Success());
  for (const std::string number : {"", "x", "--help", "+0", "00"}) {
    SCOPED_TRACE(number);
    EXPECT_THAT(Run({number}).output, HasSubstr(R"("Requested":"GetCamStatus")"));
  }
}

TEST_F(CommandLineTest, TakesAWholeRequest) {
  const std::string request = R"({"Request":{"Command":"GetSystemInfo"}})";
  EXPECT_THAT(Run({"100", request}),
              Replied(DataJson("GetSystemInfo", R"("Model":"RV130/140","Destination":"JP",)"
                                                R"("ApiVersion":"1.08.0","Serial":"")")));
  EXPECT_THAT(log_.Lines(), Logged(Error("CMD post_data = " + request)));
}

TEST_F(CommandLineTest, WholeRequestMayHoldParametersAndWhiteSpace) {
  FakeDaemon daemon(Success());
  const Outcome outcome =
      Run({"100", R"({"Request":{"Command":"SetZoomCtrl", "Params":{"Position":7} } })"});
  EXPECT_THAT(outcome, Replied(ResultJson("SetZoomCtrl")));
  EXPECT_THAT(daemon.Received(), ElementsAre(Message(5, 2, 14, outcome.pid, Be16(7))));
}

TEST_F(CommandLineTest, WholeRequestsBeginWithTheirCommand) {
  const struct {
    const char* description;
    std::string request;
    std::string name;
  } rows[] = {
      {"nothing", "", ""},
      {"something else first", R"({"Request":{"SessionID":"x","Command":"GetSystemInfo"}})", ""},
      {"white space in front", R"( {"Request":{"Command":"GetSystemInfo"}})", ""},
      {"an empty name", R"({"Request":{"Command":""}})", ""},
      {"no name at all", R"({"Request":{"Command":")", ""},
      {"the name goes up to the quote", R"({"Request":{"Command":"Get,}System%sInfo"}})",
       "Get,}System%sInfo"},
      {"a long name is cut", R"({"Request":{"Command":")" + std::string(300, 'n') + R"("}})",
       std::string(255, 'n')},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.description);
    EXPECT_THAT(Run({"100", row.request}), Replied(ErrorJson("CommandError"), 1));
    EXPECT_THAT(log_.TakeLines(), Logged(Error("CMD post_data = " + row.request),
                                         Error("command error = " + row.name)));
  }
}

TEST_F(CommandLineTest, NameNeedsNoClosingQuote) {
  EXPECT_THAT(
      Run({"100", R"({"Request":{"Command":"HeartbeatConfirmation)"}),
      Replied(DataJson("HeartbeatConfirmation", R"("VideoOutput":"On","StudioTally":"Off")")));
}

TEST_F(CommandLineTest, WholeRequestMissing) {
  EXPECT_THAT(Run({"100"}), Replied(ErrorJson("CommandError"), 1));
  EXPECT_THAT(log_.Lines(), Logged(Error("CMD post_data = "), Error("command error = ")));
}

TEST_F(CommandLineTest, WholeRequestIsTruncatedToItsBuffer) {
  // The value of the position would end at byte 5,000, which is cut off, so it counts as missing.
  const std::string head = R"({"Request":{"Command":"SetZoomCtrl","Filling":")";
  const std::string tail = R"(","Params":{"Position":7)";
  const std::string filling(4999 - head.size() - tail.size(), 'x');
  FakeDaemon daemon(Success());
  EXPECT_THAT(Run({"100", head + filling + tail + "}}}"}), Replied(ErrorJson("RequestedError")));
  EXPECT_THAT(daemon.Received(), IsEmpty());
  // With one byte less it is complete.
  EXPECT_THAT(Run({"100", head + filling.substr(1) + tail + "}}}"}),
              Replied(ResultJson("SetZoomCtrl")));
  EXPECT_EQ(daemon.Received().size(), 1U);
}

TEST_F(CommandLineTest, LongArgumentsAreHarmless) {
  FakeDaemon daemon(Success());
  const std::string digits(100000, '9');
  const std::string letters(100000, 'a');
  EXPECT_THAT(Run({"16", letters, digits, digits}), Replied(ResultJson("SetClipInfo")));
  EXPECT_THAT(log_.TakeLines(),
              testing::Contains(Error(R"(CMD post_data = {"Request":{"Command":"SetClipInfo",)"
                                      R"("Params":{"Slot":"B","IndexNo":2147483647,)"
                                      R"("OKMark":"Mark"}}})")));
  EXPECT_THAT(Run({"100", letters}), Replied(ErrorJson("CommandError"), 1));
  // Log lines end at 4,999 bytes.
  const std::string lead = "CMD post_data = ";
  EXPECT_THAT(log_.TakeLines(), Logged(Error(lead + letters.substr(0, 4999 - lead.size())),
                                       Error("command error = ")));
}

TEST_F(CommandLineTest, DirectivesInArgumentsAreNotExpanded) {
  const std::string request = R"({"Request":{"Command":"%n%s%d%%"}})";
  EXPECT_THAT(Run({"100", request}), Replied(ErrorJson("CommandError"), 1));
  EXPECT_THAT(log_.Lines(),
              Logged(Error("CMD post_data = " + request), Error("command error = %n%s%d%%")));
}

TEST_F(CommandLineTest, NeedsNoCgiVariablesAndReadsNoInput) {
  const Outcome outcome = RunHandler(Request::CommandLine({"100", "x"})
                                         .Set("REQUEST_METHOD", "GET")
                                         .Set("CONTENT_LENGTH", "100")
                                         .StandardInput(Input::kHeldOpen));
  EXPECT_THAT(outcome, Replied(ErrorJson("CommandError"), 1));
  EXPECT_LT(outcome.elapsed.count(), TimeMargin());
}

TEST_F(CommandLineTest, ArgumentsFromAWebServerAreIgnored) {
  WriteSession(kSession);
  const auto started = [](const std::string& body) {
    return Request(body).Arguments({"20"}).Set("GATEWAY_INTERFACE", "CGI/1.1");
  };
  EXPECT_THAT(
      RunHandler(started(BodyWithoutSession("HeartbeatConfirmation"))),
      Replied(DataJson("HeartbeatConfirmation", R"("VideoOutput":"On","StudioTally":"Off")")));
  EXPECT_THAT(RunHandler(started(BodyWithoutSession("MonitorStart"))),
              Replied(ErrorJson("FormatError")));
  EXPECT_THAT(RunHandler(started(Body("MonitorStart")).Set("REQUEST_METHOD", "GET")),
              EndedSilently(1));
  EXPECT_THAT(
      RunHandler(started(BodyWithoutSession("HeartbeatConfirmation")).Set("GATEWAY_INTERFACE", "")),
      Replied(DataJson("HeartbeatConfirmation", R"("VideoOutput":"On","StudioTally":"Off")")));
  EXPECT_THAT(log_.Lines(),
              Not(testing::Contains(testing::Field(&LogLine::text, HasSubstr("INPUT_COMMAND")))));
}

TEST_F(CommandLineTest, AbsentDaemonsEndTheRequest) {
  EXPECT_THAT(Run({"5"}), EndedSilently(1));
  EXPECT_THAT(log_.Lines(), testing::Contains(Error("cannot connect sockname.")));
}

TEST_F(CommandLineTest, NeverUsesTheSimulatedResponders) {
  WriteFile("/srv/www/htdocs/cam_status", "Status=3\nZoom=1\n");
  WriteFile(kLogLevelFile, "cmd=7\n");
  FakeDaemon daemon(Success());
  EXPECT_THAT(Run({"0"}).output, HasSubstr(R"("Status":"NoCard")"));
  EXPECT_THAT(Run({"14", "5"}), Replied(ResultJson("SetZoomCtrl")));
  EXPECT_EQ(ReadFile("/srv/www/htdocs/cam_status"), "Status=3\nZoom=1\n");
}

}  // namespace
