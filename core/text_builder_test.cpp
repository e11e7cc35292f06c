#include "core/text_builder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>

namespace {

TEST(TextBuilder, IsAnEmptyTextAtFirst) {
  const TextBuilder builder;
  EXPECT_STREQ(builder.Text(), "");
  EXPECT_EQ(builder.Length(), 0U);
}

TEST(TextBuilder, JoinsWhatIsAppended) {
  TextBuilder builder;
  builder.Append("ab");
  builder.Append('c');
  builder.Append("");
  builder.AppendNumber(-4);
  EXPECT_STREQ(builder.Text(), "abc-4");
  EXPECT_EQ(builder.Length(), 5U);
}

TEST(TextBuilder, GrowsToAnyLength) {
  TextBuilder builder;
  std::string expected;
  for (int i = 0; i < 5000; ++i) {
    builder.Append("0123456789abc");
    expected += "0123456789abc";
  }
  EXPECT_EQ(builder.View(), expected);
}

TEST(TextBuilder, PrintsEveryNumber) {
  const struct {
    std::int64_t number;
    const char* text;
  } cases[] = {
      {0, "0"},
      {9, "9"},
      {10, "10"},
      {-1, "-1"},
      {4294967295, "4294967295"},
      {INT64_MAX, "9223372036854775807"},
      {INT64_MIN, "-9223372036854775808"},
  };
  for (const auto& row : cases) {
    TextBuilder builder;
    builder.AppendNumber(row.number);
    EXPECT_STREQ(builder.Text(), row.text);
  }
}

TEST(TextBuilder, PrintsNumbersInAGivenWidth) {
  TextBuilder builder;
  builder.AppendNumber(5, 2);
  builder.AppendNumber(-5, 3);
  EXPECT_STREQ(builder.Text(), "05-05");
}

TEST(TextBuilder, PrintsBytesInHexadecimal) {
  TextBuilder builder;
  for (const std::uint8_t byte :
       std::initializer_list<std::uint8_t>{0x00, 0x09, 0x0A, 0x9F, 0xFF}) {
    builder.AppendHexByte(byte);
  }
  EXPECT_STREQ(builder.Text(), "00090A9FFF");
}

TEST(TextBuilder, KeepsItsPlaceWhenRoomWasReserved) {
  TextBuilder builder;
  builder.Reserve(10000);
  builder.Append("a");
  const char* const place = builder.Text();
  for (int i = 1; i < 10000; ++i) {
    builder.Append('b');
  }
  EXPECT_EQ(builder.Text(), place);
  EXPECT_EQ(builder.Length(), 10000U);
}

}  // namespace
