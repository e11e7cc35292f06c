#include "core/log_stamp.h"

#include <gtest/gtest.h>

namespace {

TEST(LogStamp, IsTheTimeInUtc) {
  const struct {
    const char* what;
    std::int64_t now;
    const char* stamp;
  } rows[] = {
      {"the epoch", 0, "Jan  1 00:00:00"},
      {"the last second of a day", 86399, "Jan  1 23:59:59"},
      {"the day before a leap day", 951695999, "Feb 27 23:59:59"},
      {"a leap day of a full century", 951782400, "Feb 29 00:00:00"},
      {"the day behind it", 951868800, "Mar  1 00:00:00"},
      {"a year without a leap day", 1677628799, "Feb 28 23:59:59"},
      {"its next second", 1677628800, "Mar  1 00:00:00"},
      {"the end of a year", 1798761599, "Dec 31 23:59:59"},
      {"every field with two digits", 1761746096, "Oct 29 13:54:56"},
      {"beyond 2038", 2147483648, "Jan 19 03:14:08"},
      {"a century without a leap day", 4107542400, "Mar  1 00:00:00"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    char stamp[kLogStampSize];
    WriteLogStamp(row.now, stamp);
    EXPECT_STREQ(stamp, row.stamp);
  }
}

}  // namespace
