#include "simulator/date_time.h"

#include <gtest/gtest.h>

namespace {

using simulator::DateText;
using simulator::DateTime;
using simulator::DateTimeOf;
using simulator::ParseDate;

struct Date {
  std::int64_t second;
  const char* text;
};

constexpr Date kDates[] = {
    {0, "1970-01-01T00:00:00"},          {951782400, "2000-02-29T00:00:00"},
    {1777887000, "2026-05-04T09:30:00"}, {2147483647, "2038-01-19T03:14:07"},
    {2147483648, "2038-01-19T03:14:08"}, {4102444799, "2099-12-31T23:59:59"},
};

TEST(DateTimeTest, TextAndSecondsAgreeAlsoAfter2038) {
  for (const Date& row : kDates) {
    EXPECT_EQ(DateText(row.second), row.text);
    EXPECT_EQ(ParseDate(row.text), row.second) << row.text;
  }
}

TEST(DateTimeTest, HasItsParts) {
  const DateTime date = DateTimeOf(2147483648);
  EXPECT_EQ(date.year, 2038);
  EXPECT_EQ(date.month, 1);
  EXPECT_EQ(date.day, 19);
  EXPECT_EQ(date.hour, 3);
  EXPECT_EQ(date.minute, 14);
  EXPECT_EQ(date.second, 8);
}

TEST(DateTimeTest, RejectsWhatIsNoDate) {
  for (const char* text :
       {"", "2026-02-29T00:00:00", "2026-06-31T00:00:00", "2026-13-01T00:00:00",
        "2026-05-04T24:00:00", "2026-05-04T09:30:60", "2026-5-4T09:30:00", "2026-05-04 09:30:00",
        "2026-05-04T09:30:00Z", "1969-12-31T23:59:59", "2100-01-01T00:00:00"}) {
    EXPECT_FALSE(ParseDate(text)) << text;
  }
}

}  // namespace
