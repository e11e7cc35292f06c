#include <gtest/gtest.h>

#include "harness/camera_test.h"

namespace harness {
namespace {

TEST(LogLineTest, TakesPriorityAndTextApart) {
  EXPECT_EQ(ParseLogLine("<11>Jan  2 03:04:05 camera_remote.cgi: a: b\n"), Error("a: b\n"));
  EXPECT_EQ(ParseLogLine("<14>Dec 31 23:59:59 x: "), Info(""));
  EXPECT_EQ(ParseLogLine("no priority"), (LogLine{-1, "no priority"}));
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

}  // namespace
}  // namespace harness
