#include "core/text.h"

#include <gtest/gtest.h>

namespace {

TEST(CopyText, TruncatesToTheArrayAndTerminates) {
  char text[4] = {'#', '#', '#', '#'};
  CopyText(text, "12345");
  EXPECT_STREQ(text, "123");
  CopyText(text, "12");
  EXPECT_STREQ(text, "12");
  CopyText(text, "");
  EXPECT_STREQ(text, "");
}

TEST(AppendText, TruncatesToTheArrayAndTerminates) {
  char text[6] = "ab";
  AppendText(text, "cd");
  EXPECT_STREQ(text, "abcd");
  AppendText(text, "");
  EXPECT_STREQ(text, "abcd");
  AppendText(text, "efg");
  EXPECT_STREQ(text, "abcde");
  AppendText(text, "h");
  EXPECT_STREQ(text, "abcde");
}

TEST(StartsWith, ComparesTheWholePrefix) {
  EXPECT_TRUE(StartsWith("server 2", "server"));
  EXPECT_TRUE(StartsWith("server", "server"));
  EXPECT_FALSE(StartsWith("serve", "server"));
  EXPECT_FALSE(StartsWith("", "server"));
}

TEST(ParseInt32, ReadsAsTheBoardDoes) {
  const struct {
    const char* text;
    std::int32_t value;
  } cases[] = {
      {"0", 0},
      {"17", 17},
      {"-17", -17},
      {"+17", 17},
      {" \t\n\v\f\r17", 17},
      {"17x", 17},
      {"0x10", 0},
      {"010", 10},
      {"1.9", 1},
      {"", 0},
      {"abc", 0},
      {"-", 0},
      {"+-5", 0},
      {"- 5", 0},
      {"2147483647", 2147483647},
      {"2147483648", 2147483647},
      {"-2147483648", -2147483647 - 1},
      {"-2147483649", -2147483647 - 1},
      {"99999999999999999999999999", 2147483647},
      {"-99999999999999999999999999", -2147483647 - 1},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(ParseInt32(row.text), row.value) << "[" << row.text << "]";
  }
}

TEST(TruncateToInt16, KeepsTheLow16BitsAsASignedNumber) {
  EXPECT_EQ(TruncateToInt16(0), 0);
  EXPECT_EQ(TruncateToInt16(32767), 32767);
  EXPECT_EQ(TruncateToInt16(32768), -32768);
  EXPECT_EQ(TruncateToInt16(65535), -1);
  EXPECT_EQ(TruncateToInt16(65536), 0);
  EXPECT_EQ(TruncateToInt16(70000), 4464);
  EXPECT_EQ(TruncateToInt16(-1), -1);
  EXPECT_EQ(TruncateToInt16(-32769), 32767);
}

TEST(ParseInt64, Reads64Bits) {
  const struct {
    const char* text;
    std::int64_t value;
  } cases[] = {
      {"0", 0},
      {" +17x", 17},
      {"", 0},
      {"-1", -1},
      {"4294967295", 4294967295},
      {"9223372036854775807", INT64_MAX},
      {"9223372036854775808", INT64_MAX},
      {"-9223372036854775808", INT64_MIN},
      {"-9223372036854775809", INT64_MIN},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(ParseInt64(row.text), row.value) << "[" << row.text << "]";
  }
}

TEST(DecimalText, PadsWithZerosToItsWidth) {
  const struct {
    std::int64_t number;
    std::size_t width;
    const char* text;
  } cases[] = {
      {0, 0, "0"},
      {0, 1, "0"},
      {0, 2, "00"},
      {7, 4, "0007"},
      {2023, 4, "2023"},
      {65535, 4, "65535"},
      {-5, 2, "-5"},
      {-5, 4, "-005"},
      {-128, 2, "-128"},
      {1, 20, "00000000000000000001"},
      {-1, 20, "-0000000000000000001"},
      {1, 21, "00000000000000000001"},
      {4294967295, 0, "4294967295"},
      {4294967296, 0, "4294967296"},
      {42949672950, 0, "42949672950"},
      {INT64_MAX, 0, "9223372036854775807"},
      {INT64_MIN, 20, "-9223372036854775808"},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(DecimalText(row.number, row.width).View(), row.text) << "width " << row.width;
  }
}

}  // namespace
