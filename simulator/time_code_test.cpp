#include "simulator/time_code.h"

#include <gtest/gtest.h>

namespace {

using simulator::Counting;
using simulator::FrameOf;
using simulator::FramesIn;
using simulator::ParseTimeCode;
using simulator::TimeCode;
using simulator::TimeCodeOf;
using simulator::TimeCodeText;

struct TimeCodeRow {
  std::int64_t frame;
  Counting counting;
  const char* text;
};

// Minute 0 of drop-frame counting has 1800 frames, each of the next nine 1798.
constexpr TimeCodeRow kTimeCodes[] = {
    {0, Counting::k30Drop, "00:00:00.00"},       {1799, Counting::k30Drop, "00:00:59.29"},
    {1800, Counting::k30Drop, "00:01:00.02"},    {3597, Counting::k30Drop, "00:01:59.29"},
    {3598, Counting::k30Drop, "00:02:00.02"},    {17981, Counting::k30Drop, "00:09:59.29"},
    {17982, Counting::k30Drop, "00:10:00.00"},   {107892, Counting::k30Drop, "01:00:00.00"},
    {2589407, Counting::k30Drop, "23:59:59.29"}, {1799, Counting::k30, "00:00:59:29"},
    {1800, Counting::k30, "00:01:00:00"},        {2591999, Counting::k30, "23:59:59:29"},
    {24, Counting::k25, "00:00:00:24"},          {25, Counting::k25, "00:00:01:00"},
    {1500, Counting::k25, "00:01:00:00"},        {2159999, Counting::k25, "23:59:59:24"},
};

TEST(TimeCodeTest, CountsFramesInEachWay) {
  for (const TimeCodeRow& row : kTimeCodes) {
    EXPECT_EQ(TimeCodeText(TimeCodeOf(row.frame, row.counting)), row.text);
    EXPECT_EQ(FrameOf(*ParseTimeCode(row.text), row.counting), row.frame) << row.text;
  }
}

TEST(TimeCodeTest, StartsAgainAfterADay) {
  EXPECT_EQ(TimeCodeText(TimeCodeOf(2589408, Counting::k30Drop)), "00:00:00.00");
  EXPECT_EQ(TimeCodeText(TimeCodeOf(2592000, Counting::k30)), "00:00:00:00");
  EXPECT_EQ(TimeCodeText(TimeCodeOf(2160001, Counting::k25)), "00:00:00:01");
}

TEST(TimeCodeTest, RunsBackwardsIntoTheDayBefore) {
  EXPECT_EQ(TimeCodeText(TimeCodeOf(-1, Counting::k30Drop)), "23:59:59.29");
  EXPECT_EQ(TimeCodeText(TimeCodeOf(-25, Counting::k25)), "23:59:59:00");
}

TEST(TimeCodeTest, ANumberThatIsLeftOutCountsAsTheNextOne) {
  EXPECT_EQ(FrameOf(*ParseTimeCode("00:01:00.00"), Counting::k30Drop), 1800);
  EXPECT_EQ(FrameOf(*ParseTimeCode("00:01:00.01"), Counting::k30Drop), 1800);
  EXPECT_EQ(FrameOf(*ParseTimeCode("00:10:00.01"), Counting::k30Drop), 17983);
}

TEST(TimeCodeTest, EveryFrameOfADayHasANumberOfItsOwn) {
  for (std::int64_t frame = 0; frame < 2589408; ++frame) {
    ASSERT_EQ(FrameOf(TimeCodeOf(frame, Counting::k30Drop), Counting::k30Drop), frame);
  }
}

TEST(TimeCodeTest, CountsWholeFramesInATime) {
  EXPECT_EQ(FramesIn(39, Counting::k25), 0);
  EXPECT_EQ(FramesIn(40, Counting::k25), 1);
  EXPECT_EQ(FramesIn(33, Counting::k30), 0);
  EXPECT_EQ(FramesIn(34, Counting::k30), 1);
  EXPECT_EQ(FramesIn(1000, Counting::k30), 29);  // 29.97 frames per second
  EXPECT_EQ(FramesIn(1001, Counting::k30Drop), 30);
  EXPECT_EQ(FramesIn(3600000, Counting::k30Drop), 107892);
}

TEST(TimeCodeTest, IsPackedAsDecimalDigitsWithAMarkForDropFrame) {
  EXPECT_EQ(*ParseTimeCode("12:34:56.28"), (TimeCode{0x12, 0x34, 0x56, 0xa8}));
  EXPECT_EQ(*ParseTimeCode("12:34:56:28"), (TimeCode{0x12, 0x34, 0x56, 0x28}));
}

TEST(TimeCodeTest, RejectsWhatIsNoTimeCode) {
  for (const char* text :
       {"", "24:00:00:00", "00:60:00:00", "00:00:60:00", "00:00:00:30", "1:00:00:00", "01-00:00:00",
        "01:00:00;00", "0a:00:00:00", "01:00:00:000", " 1:00:00:00"}) {
    EXPECT_FALSE(ParseTimeCode(text)) << text;
  }
}

}  // namespace
