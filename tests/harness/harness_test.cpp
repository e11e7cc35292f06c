#include <gtest/gtest.h>

#include "fuzz/scenario.h"
#include "harness/camera_test.h"

namespace harness {
namespace {

TEST(LogLineTest, SeparatesPriorityAndText) {
  EXPECT_EQ(ParseLogLine("<11>camera_remote.cgi: a: b\n"), Error("a: b\n"));
  EXPECT_EQ(ParseLogLine("<14>x: "), Info(""));
}

TEST(LogLineTest, ReturnsAMessageOfAnotherFormWhole) {
  for (const std::string message :
       {"no priority", "<11>", "<11>x", "<11>x:", "<11>x:y", "<3>no facility: a",
        "<19>another facility: a", "<11>Jan  2 03:04:05 time: a"}) {
    EXPECT_EQ(ParseLogLine(message), (LogLine{-1, message}));
  }
}

TEST(MessageTest, HeaderIsLittleEndian) {
  EXPECT_EQ(Message(5, 0x0102, 17, 0x01020304, "p"),
            Bytes({0, 5, 2, 1, 17, 0, 0, 0, 4, 3, 2, 1, 'p'}));
  EXPECT_EQ(ReplyMessage(Bytes({2, 9})), Bytes({0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 9}));
}

TEST(BodyTest, IsCompact) {
  EXPECT_EQ(BodyWithSession("A", "b", "\"C\":1"),
            "{\"Request\":{\"Command\":\"A\",\"SessionID\":\"b\",\"Params\":{\"C\":1}}}");
}

TEST(ScenarioTest, AValueIsOneLineWhateverItHolds) {
  EXPECT_EQ(scenario::Format({'n', "a\nb\\c"}), "na\\nb\\\\c\n");
  const std::string value = Bytes({0, '\n', '\\', 'n', '\\', 255, '\n'});
  const std::vector<scenario::Line> lines =
      scenario::Parse(scenario::Format({'B', value}) + scenario::Format({'R', ""}));
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].kind, 'B');
  EXPECT_EQ(lines[0].value, value);
  EXPECT_EQ(lines[1].kind, 'R');
  EXPECT_EQ(lines[1].value, "");
}

TEST(ScenarioTest, EveryTextHasLines) {
  EXPECT_EQ(scenario::Parse("").size(), 0U);
  EXPECT_EQ(scenario::Parse("\n\n").size(), 0U);
  const std::vector<scenario::Line> lines = scenario::Parse("\nBa\\\n\nC\\x");
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].value, "a\\");
  EXPECT_EQ(lines[1].value, "x");
}

}  // namespace
}  // namespace harness
