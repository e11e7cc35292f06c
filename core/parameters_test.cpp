#include "core/parameters.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(ReadParameter, TruncatesATextToTheArray) {
  char text[4];
  EXPECT_TRUE(ReadParameter(R"({"A":"xyz","B":"wxyz","C":""})", "A", text));
  EXPECT_STREQ(text, "xyz");
  EXPECT_TRUE(ReadParameter(R"({"A":"xyz","B":"wxyz","C":""})", "B", text));
  EXPECT_STREQ(text, "wxy");
  EXPECT_TRUE(ReadParameter(R"({"A":"xyz","B":"wxyz","C":""})", "C", text));
  EXPECT_STREQ(text, "");
}

TEST(ReadParameter, LeavesAMissingTextEmpty) {
  char text[4] = "abc";
  EXPECT_FALSE(ReadParameter(R"({"A":"xyz"})", "B", text));
  EXPECT_STREQ(text, "");
}

TEST(ReadParameter, ConvertsNumbersAsTheBoardDoes) {
  const struct {
    const char* what;
    std::string value;
    std::int32_t number;
  } cases[] = {
      {"plain", "300", 300},
      {"quoted", "\"-300\"", -300},
      {"digits and a tail", "12abc", 12},
      {"no number", "\"abc\"", 0},
      {"empty", "\"\"", 0},
      {"largest", "2147483647", INT32_MAX},
      {"beyond the largest", "2147483648", INT32_MAX},
      {"smallest", "-2147483648", INT32_MIN},
      {"beyond the smallest", "-2147483649", INT32_MIN},
      {"beyond 64 bits", "99999999999999999999999", INT32_MAX},
      {"leading zeros", std::string(4900, '0') + "17", 17},
      {"beyond the buffer", std::string(6000, '9'), INT32_MAX},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.what);
    std::int32_t number = 1;
    EXPECT_TRUE(ReadParameter(("{\"A\":" + row.value + "}").c_str(), "A", number));
    EXPECT_EQ(number, row.number);
  }
}

TEST(ReadParameter, LeavesTheNumberAloneWhenItIsMissing) {
  std::int32_t number = 42;
  EXPECT_FALSE(ReadParameter(R"({"A":1})", "B", number));
  EXPECT_EQ(number, 42);
}

}  // namespace
