#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "harness/camera_test.h"

// The clip list: the exchanges of a request, and how the replies of the daemon are reported.

namespace {

using namespace harness;

/// A clip as the daemon describes it.
constexpr std::size_t kClipSize = 32;

std::string FirstClip() {
  return Bytes({0x00, 0x01}) + std::string("CLIP0001\0\0", 10) +
         Bytes({0x00, 0x00, 0x10, 0x00, 0x00, 0x01, 0x20, 0x12}) +  // time codes
         Bytes({0x07, 0xE7, 10, 23, 8, 5, 9}) +                     // 23 November 2023, 08:05:09
         Bytes({0, 0, 0xEE, 0, 0xEE});
}
constexpr char kFirstClip[] =
    R"({"IndexNo":1,"Name":"CLIP0001","TC":"00:00:10:00-00:01:20:12",)"
    R"("DateTime":"2023-11-23 T08:05:09","OKMark":"NoMark","AspectRaotp":"16:9","Edit":"Enable"})";

std::string SecondClip() {
  return Bytes({0xFF, 0xFF}) + "B-cam 0002" +  // a name without a terminator
         Bytes({0x01, 0x23, 0x45, 0x96, 0x23, 0x59, 0x59, 0xA9}) +
         Bytes({0x07, 0xB2, 0, 1, 23, 59, 58}) + Bytes({1, 1, 0, 1, 0});
}
constexpr char kSecondClip[] =
    R"({"IndexNo":65535,"Name":"B-cam 0002","TC":"01:23:45.16-23:59:59.29",)"
    R"("DateTime":"1970-01-01 T23:59:58","OKMark":"Mark","AspectRaotp":"4:3","Edit":"Disable"})";

// A clip that is all zero.
constexpr char kZeroClip[] =
    R"({"IndexNo":0,"Name":"","TC":"00:00:00:00-00:00:00:00",)"
    R"("DateTime":"0000-01-00 T00:00:00","OKMark":"NoMark","AspectRaotp":"16:9","Edit":"Enable"})";

/// The payload of a reply that announces `count` clips.
std::string Clips(std::uint16_t count, const std::string& clips, int result = 0) {
  return Bytes({result, 0xEE}) + Be16(count) + clips;
}

std::string Times(std::size_t count, const std::string& text, const std::string& between = "") {
  std::string all;
  for (std::size_t i = 0; i < count; ++i) {
    all += (i > 0 ? between : "") + text;
  }
  return all;
}

std::string ListJson(int count, const std::string& clips, const std::string& result = "Success") {
  return DataJson("GetClipInfo",
                  "\"ClipNum\":" + std::to_string(count) + ",\"ClipInfo\":[" + clips + "]", result);
}

std::string Params(const std::string& slot, const std::string& start, const std::string& count) {
  return R"("Slot":")" + slot + R"(","StartIndexNo":)" + start + R"(,"ClipNum":)" + count;
}

class ClipListTest : public CameraTest {
 protected:
  Outcome List(const std::string& params) { return Post(Body("GetClipInfo", params)); }

  FakeDaemon daemon_{Answer(ReplyMessage(Clips(0, "")))};
};

TEST_F(ClipListTest, PrintsEveryFieldOfAClip) {
  daemon_.Next(Answer(ReplyMessage(Clips(2, FirstClip() + SecondClip()))));
  const std::string body = Body("GetClipInfo", Params("A", "1", "2"));
  const Outcome outcome = Post(body);
  const std::string json = ListJson(2, std::string(kFirstClip) + "," + kSecondClip);
  EXPECT_THAT(outcome, Replied(json));
  EXPECT_THAT(daemon_.Received(),
              testing::ElementsAre(Message(6, 6, 11, outcome.pid, Bytes({0, 0, 0, 1, 0, 2}))));
  EXPECT_THAT(log_.Lines(),
              Logged(Error("rcv post_data = " + body), Error("send res_str = " + json)));
}

TEST_F(ClipListTest, AsksForFifteenClipsAtATime) {
  struct Row {
    const char* count;
    std::vector<std::string> payloads;
  };
  const Row rows[] = {
      {"1", {Bytes({1, 0, 0x01, 0x00, 0, 1})}},
      {"14", {Bytes({1, 0, 0x01, 0x00, 0, 14})}},
      {"15", {Bytes({1, 0, 0x01, 0x00, 0, 15})}},
      {"16", {Bytes({1, 0, 0x01, 0x00, 0, 15}), Bytes({1, 0, 0x01, 0x0F, 0, 1})}},
      {"30", {Bytes({1, 0, 0x01, 0x00, 0, 15}), Bytes({1, 0, 0x01, 0x0F, 0, 15})}},
      {"31",
       {Bytes({1, 0, 0x01, 0x00, 0, 15}), Bytes({1, 0, 0x01, 0x0F, 0, 15}),
        Bytes({1, 0, 0x01, 0x1E, 0, 1})}},
  };
  std::vector<std::string> messages;
  for (const Row& row : rows) {
    SCOPED_TRACE(row.count);
    const Outcome outcome = List(Params("B", "256", row.count));
    EXPECT_THAT(outcome, Replied(ListJson(0, "")));
    for (const std::string& payload : row.payloads) {
      messages.push_back(Message(6, 6, 11, outcome.pid, payload));
    }
    EXPECT_EQ(daemon_.Received(), messages);
  }
}

TEST_F(ClipListTest, AcceptsTheseParameters) {
  struct Row {
    const char* description;
    std::string params;
    std::string payload;
  };
  const Row rows[] = {
      {"quoted numbers", R"("Slot":"A","StartIndexNo":"7","ClipNum":"3")",
       Bytes({0, 0, 0, 7, 0, 3})},
      {"any order", R"("ClipNum":3,"StartIndexNo":7,"Slot":"B")", Bytes({1, 0, 0, 7, 0, 3})},
      {"only the slot's first character counts", Params("Ab", "7", "3"), Bytes({0, 0, 0, 7, 0, 3})},
      {"text after a number", R"("Slot":"B","StartIndexNo":"7th","ClipNum":"3.9")",
       Bytes({1, 0, 0, 7, 0, 3})},
      {"the highest start", Params("A", "32767", "1"), Bytes({0, 0, 0x7F, 0xFF, 0, 1})},
      {"numbers are cut to 16 bits", Params("A", "65537", "131075"), Bytes({0, 0, 0, 1, 0, 3})},
  };
  std::vector<std::string> messages;
  for (const Row& row : rows) {
    SCOPED_TRACE(row.description);
    const Outcome outcome = List(row.params);
    EXPECT_THAT(outcome, Replied(ListJson(0, "")));
    messages.push_back(Message(6, 6, 11, outcome.pid, row.payload));
    EXPECT_EQ(daemon_.Received(), messages);
  }
}

TEST_F(ClipListTest, RefusesTheseParameters) {
  struct Row {
    const char* description;
    std::string params;
    int refusal;
    const char* missing;  // the missing parameter
  };
  const Row rows[] = {
      {"no slot", R"("StartIndexNo":1,"ClipNum":1)", -1, "Slot"},
      {"no start", R"("Slot":"A","ClipNum":1)", -1, "StartIndexNo"},
      {"no count", R"("Slot":"A","StartIndexNo":1)", -1, "ClipNum"},
      {"no count after a bad start", R"("Slot":"A","StartIndexNo":0)", -1, "ClipNum"},
      {"slot in lower case", Params("a", "1", "1"), -1, nullptr},
      {"unknown slot", Params("C", "1", "1"), -1, nullptr},
      {"empty slot", Params("", "1", "1"), -1, nullptr},
      {"slot before start and count", Params("a", "0", "0"), -1, nullptr},
      {"start 0", Params("A", "0", "1"), -2, nullptr},
      {"negative start", Params("A", "-1", "1"), -2, nullptr},
      {"start that is not a number", R"("Slot":"A","StartIndexNo":"x","ClipNum":1)", -2, nullptr},
      {"start beyond signed 16 bits", Params("A", "32768", "1"), -2, nullptr},
      {"start before count", Params("A", "0", "0"), -2, nullptr},
      {"count 0", Params("A", "1", "0"), -3, nullptr},
      {"negative count", Params("B", "1", "-15"), -3, nullptr},
      {"count beyond signed 16 bits", Params("B", "1", "32768"), -3, nullptr},
      {"count cut to 0", Params("B", "1", "65536"), -3, nullptr},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.description);
    const std::string body = Body("GetClipInfo", row.params);
    EXPECT_THAT(Post(body), Replied(ErrorJson("RequestedError")));
    LogLines lines = {Error("rcv post_data = " + body)};
    if (row.missing != nullptr) {
      lines.push_back(
          Error("error: json_parser() key [" + std::string(row.missing) + "] does not appear\n"));
    }
    lines.push_back(Error("requested error ret=" + std::to_string(row.refusal) +
                          ", params=\"Params\":{" + row.params + "}}}"));
    EXPECT_EQ(log_.TakeLines(), lines);
  }
  EXPECT_THAT(daemon_.Received(), testing::IsEmpty());
}

TEST_F(ClipListTest, WithoutParametersSendsNothingAndListsNothing) {
  EXPECT_THAT(Post(Body("GetClipInfo")), Replied(ListJson(0, "")));
  EXPECT_THAT(daemon_.Received(), testing::IsEmpty());
}

TEST_F(ClipListTest, JoinsTheChunksIntoOneArray) {
  struct Row {
    const char* description;
    std::vector<std::string> payloads;
    int count;
    std::string clips;
  };
  const std::string first = kFirstClip;
  const std::string second = kSecondClip;
  const std::string full = Clips(15, Times(15, FirstClip()));
  const Row rows[] = {
      {"full, then one",
       {full, full, Clips(1, SecondClip())},
       31,
       Times(30, first, ",") + "," + second},
      {"nothing in the first",
       {Clips(0, ""), Clips(1, FirstClip()), Clips(1, SecondClip())},
       2,
       first + "," + second},
      {"nothing in the middle",
       {Clips(1, FirstClip()), Clips(0, ""), Clips(1, SecondClip())},
       2,
       first + "," + second},
      {"nothing in the last",
       {Clips(1, FirstClip()), Clips(1, SecondClip()), Clips(0, "")},
       2,
       first + "," + second},
      {"nothing at all", {Clips(0, ""), Clips(0, ""), Clips(0, "")}, 0, ""},
      {"a reply without a payload",
       {Clips(1, FirstClip()), "", Clips(1, SecondClip())},
       2,
       first + "," + second},
      {"clips after a count of 0", {Clips(0, FirstClip()), Clips(1, SecondClip()), ""}, 1, second},
      {"more clips than were asked for",
       {"", "", Clips(2, FirstClip() + SecondClip())},
       2,
       first + "," + second},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.description);
    for (const std::string& payload : row.payloads) {
      daemon_.Next(Answer(ReplyMessage(payload)));
    }
    EXPECT_THAT(List(Params("A", "1", "31")), Replied(ListJson(row.count, row.clips)));
  }
}

TEST_F(ClipListTest, ReportsTheResultOfTheLastReply) {
  struct Row {
    const char* description;
    std::string first;
    std::string last;
    const char* word;
    int count;
    std::string clips;
  };
  const std::string both = std::string(kFirstClip) + "," + kSecondClip;
  const Row rows[] = {
      {"error first", Clips(1, FirstClip(), 1), Clips(1, SecondClip(), 0), "Success", 2, both},
      {"error last", Clips(1, FirstClip(), 0), Clips(1, SecondClip(), 2), "DisableError", 2, both},
      {"nothing last", Clips(1, FirstClip(), 1), "", "RequestedError", 1, kFirstClip},
      {"unknown result", Clips(1, FirstClip(), 1), Clips(1, SecondClip(), 3), "Success", 2, both},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.description);
    daemon_.Next(Answer(ReplyMessage(row.first))).Next(Answer(ReplyMessage(row.last)));
    EXPECT_THAT(List(Params("A", "1", "16")), Replied(ListJson(row.count, row.clips, row.word)));
  }
}

TEST_F(ClipListTest, CountsAndPrintsNoMoreThanArrivedOrFits) {
  struct Row {
    const char* description;
    Script script;
    int count;
    std::string clips;
  };
  const std::string first = kFirstClip;
  const std::string fifteen = Times(15, FirstClip());
  // The end of the first clip is cut off after the high byte of its year, 0x07.
  const std::string cut = FirstClip().substr(0, 21);
  const std::string cut_json =
      R"({"IndexNo":1,"Name":"CLIP0001","TC":"00:00:10:00-00:01:20:12",)"
      R"("DateTime":"1792-01-00 T00:00:00","OKMark":"NoMark","AspectRaotp":"16:9",)"
      R"("Edit":"Enable"})";
  const Row rows[] = {
      {"16 counted, 15 there", Answer(ReplyMessage(Clips(16, fifteen))), 15, Times(15, first, ",")},
      {"16 counted, 16 there", Answer(ReplyMessage(Clips(16, fifteen + SecondClip()))), 15,
       Times(15, first, ",")},
      {"65535 counted", Answer(ReplyMessage(Clips(65535, fifteen))), 15, Times(15, first, ",")},
      {"3 counted, 1 there", Answer(ReplyMessage(Clips(3, FirstClip()))), 3,
       first + "," + kZeroClip + "," + kZeroClip},
      {"65535 counted, none there", Answer(ReplyMessage(Clips(65535, ""))), 15,
       Times(15, kZeroClip, ",")},
      {"cut in the middle of a clip", Answer(ReplyMessage(Clips(1, cut))), 1, cut_json},
      {"one clip and a piece", Answer(ReplyMessage(Clips(2, FirstClip() + cut))), 2,
       first + "," + cut_json},
      {"cut in the middle of the count", Answer(ReplyMessage(Bytes({0, 0, 1}))), 15,
       Times(15, kZeroClip, ",")},
      {"the result alone", Answer(ReplyMessage(Bytes({0}))), 0, ""},
      {"fewer bytes than announced", AnswerAndClose(ReplyHeader(484) + Clips(1, cut)), 1, cut_json},
      {"far more bytes announced than sent",
       AnswerAndClose(ReplyHeader(65535) + Clips(65535, FirstClip())), 15,
       first + "," + Times(14, kZeroClip, ",")},
      {"a header alone", AnswerAndClose(ReplyHeader(484)), 0, ""},
      {"no reply", CloseAfterReading(), 0, ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.description);
    daemon_.Next(row.script);
    EXPECT_THAT(List(Params("A", "1", "1")), Replied(ListJson(row.count, row.clips)));
  }
}

TEST_F(ClipListTest, FieldsAtTheirLimits) {
  const RepliesMayBreak may_break;
  struct Row {
    const char* description;
    std::size_t offset;
    std::string bytes;
    const char* before;  // in the zero clip
    const char* after;
  };
  const Row rows[] = {
      {"index", 0, Be16(32768), R"("IndexNo":0)", R"("IndexNo":32768)"},
      {"name at full width", 2, "0123456789", R"("Name":"")", R"("Name":"0123456789")"},
      {"name ends at its NUL", 2, std::string("ab\0cd", 5), R"("Name":"")", R"("Name":"ab")"},
      {"name is not escaped", 2, "\"\\%s", R"("Name":"")", R"("Name":""\%s")"},
      {"drop frame in the first time code", 15, Bytes({0x80}), "00:00:00:00-", "00:00:00.00-"},
      {"drop frame in the last time code", 19, Bytes({0x92}), "-00:00:00:00", "-00:00:00.12"},
      {"nibbles above 9", 12, std::string(8, '\xFF'), "00:00:00:00-00:00:00:00",
       "3f:7f:7f.7f-3f:7f:7f.7f"},
      {"year of one digit", 20, Be16(7), "0000-01", "0007-01"},
      {"year of five digits", 20, Be16(65535), "0000-01", "65535-01"},
      {"first month is 0", 22, Bytes({0}), "-01-", "-01-"},
      {"last month is 11", 22, Bytes({11}), "-01-", "-12-"},
      {"month of three digits", 22, Bytes({255}), "-01-", "-256-"},
      {"day", 23, Bytes({31}), "-00 T", "-31 T"},
      {"day of three digits", 23, Bytes({200}), "-00 T", "-200 T"},
      {"hour", 24, Bytes({127}), "T00:", "T127:"},
      {"hours are signed", 24, Bytes({0xFF}), "T00:", "T-1:"},
      {"lowest hour", 24, Bytes({0x80}), "T00:", "T-128:"},
      {"minute", 25, Bytes({255}), "T00:00:00", "T00:255:00"},
      {"second", 26, Bytes({128}), "T00:00:00", "T00:00:128"},
      {"OK mark 1", 27, Bytes({1}), "NoMark", "Mark"},
      {"OK mark 255", 27, Bytes({255}), "NoMark", "Mark"},
      {"aspect ratio 1", 28, Bytes({1}), "16:9", "4:3"},
      {"aspect ratio 2", 28, Bytes({2}), "16:9", "4:3"},
      {"edit lock 1", 30, Bytes({1}), "Enable", "Disable"},
      {"edit lock 128", 30, Bytes({128}), "Enable", "Disable"},
      {"bytes that mean nothing", 29, Bytes({255, 0, 255}), "Enable", "Enable"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.description);
    const std::string clip =
        std::string(kClipSize, '\0').replace(row.offset, row.bytes.size(), row.bytes);
    std::string json = kZeroClip;
    const std::size_t at = json.find(row.before);
    ASSERT_NE(at, std::string::npos);
    json.replace(at, std::string(row.before).size(), row.after);
    daemon_.Next(Answer(ReplyMessage(Clips(1, clip))));
    EXPECT_THAT(List(Params("B", "1", "1")), Replied(ListJson(1, json)));
  }
}

TEST_F(ClipListTest, WaitsLongerThanUsualForEachReply) {
  daemon_.Next(Script()
                   .AwaitMessage()
                   .Pause(std::chrono::milliseconds(5300))
                   .Send(ReplyMessage(Clips(1, FirstClip()))));
  EXPECT_THAT(List(Params("A", "1", "1")), Replied(ListJson(1, kFirstClip)));
}

// 300 clips need 20 exchanges. After the second one times out there is no third.
TEST_F(ClipListTest, AsksForNoFurtherClipsAfterATimeOut) {
  daemon_.Next(Answer(ReplyMessage(Clips(1, FirstClip(), 2)))).Next(Silent());
  const Outcome outcome = RunHandler(
      Request(Body("GetClipInfo", Params("A", "1", "300"))).Deadline(std::chrono::seconds(45)));
  EXPECT_THAT(outcome, Replied(ListJson(1, kFirstClip, "DisableError")));
  EXPECT_GE(outcome.elapsed.count(), 19.9);
  EXPECT_LT(outcome.elapsed.count(), 22.5 + TimeMargin());
  EXPECT_EQ(daemon_.Received().size(), 2U);
}

TEST_F(ClipListTest, EndsSilentlyWhenTheDaemonIsGone) {
  LeaveDeadSocket();
  EXPECT_THAT(List(Params("A", "1", "1")), EndedSilently(1));
}

/// A clip of the longest list, by its number from 0.
std::string NumberedClip(int number) {
  const std::string tail = FirstClip().substr(2);
  return Be16(static_cast<std::uint16_t>(32767 + number)) + tail;
}

std::string NumberedClipJson(int number) {
  const std::string tail = std::string(kFirstClip).substr(std::string(R"({"IndexNo":1)").size());
  return R"({"IndexNo":)" + std::to_string((32767 + number) % 65536) + tail;
}

class LongestClipListTest : public ClipListTest {
 protected:
  static constexpr int kClips = 32767;
  static constexpr int kExchanges = 2185;  // 2184 of 15 clips, one of 7

  static Outcome ListAll() {
    return RunHandler(Request(Body("GetClipInfo", Params("A", "32767", "32767")))
                          .Deadline(std::chrono::seconds(60)));
  }
};

TEST_F(LongestClipListTest, IsRequestedToItsEnd) {
  const Outcome outcome = ListAll();
  EXPECT_THAT(outcome, Replied(ListJson(0, "")));
  const std::vector<std::string> messages = daemon_.Received();
  ASSERT_EQ(messages.size(), std::size_t{kExchanges});
  EXPECT_EQ(messages[0], Message(6, 6, 11, outcome.pid, Bytes({0, 0, 0x7F, 0xFF, 0, 15})));
  EXPECT_EQ(messages[1], Message(6, 6, 11, outcome.pid, Bytes({0, 0, 0x80, 0x0E, 0, 15})));
  EXPECT_EQ(messages[2183], Message(6, 6, 11, outcome.pid, Bytes({0, 0, 0xFF, 0xE8, 0, 15})));
  EXPECT_EQ(messages[2184], Message(6, 6, 11, outcome.pid, Bytes({0, 0, 0xFF, 0xF7, 0, 7})));
}

TEST_F(LongestClipListTest, TakesNoMemoryForClipsThatAreOnlyAskedFor) {
  // The replies of all exchanges together would not fit.
  constexpr std::size_t kMemory = 2 << 20;
  EXPECT_THAT(RunHandler(Request(Body("GetClipInfo", Params("A", "32767", "32767")))
                             .LimitMemory(kMemory)
                             .Deadline(std::chrono::seconds(60))),
              Replied(ListJson(0, "")));
}

TEST_F(LongestClipListTest, IsComplete) {
  std::string clips;
  for (int number = 0; number < kClips;) {
    std::string chunk;
    int count = 0;
    for (; count < 15 && number < kClips; ++count, ++number) {
      chunk += NumberedClip(number);
      clips += (number > 0 ? "," : "") + NumberedClipJson(number);
    }
    daemon_.Next(Answer(ReplyMessage(Clips(static_cast<std::uint16_t>(count), chunk))));
  }
  const Outcome outcome = ListAll();
  EXPECT_EQ(outcome.exit_status, 0);
  EXPECT_TRUE(outcome.output == Reply(ListJson(kClips, clips))) << outcome.output.size();
}

}  // namespace
