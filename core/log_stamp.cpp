#include "core/log_stamp.h"

#include "core/text.h"

namespace {

constexpr char kMonths[][4] = {"Mar", "Apr", "May", "Jun", "Jul", "Aug",
                               "Sep", "Oct", "Nov", "Dec", "Jan", "Feb"};

struct MonthAndDay {
  std::uint32_t month;  ///< from 0, March
  std::uint32_t day;    ///< from 1
};

/// Counted in years that begin in March, the leap day is the last day of its year, and months are
/// 153 days in five.
MonthAndDay DateOf(std::uint32_t days_since_epoch) {
  constexpr std::uint32_t kDaysBeforeEpoch = 719468;  // since the 1st of March of the year 0
  constexpr std::uint32_t kDaysIn400Years = 146097;
  const std::uint32_t day = (days_since_epoch + kDaysBeforeEpoch) % kDaysIn400Years;
  const std::uint32_t year = (day - day / 1460 + day / 36524 - day / 146096) / 365;
  const std::uint32_t day_of_year = day - (365 * year + year / 4 - year / 100);
  const std::uint32_t month = (5 * day_of_year + 2) / 153;
  return {month, day_of_year - (153 * month + 2) / 5 + 1};
}

void WriteTwoDigits(std::uint32_t number, char* text) {
  text[0] = static_cast<char>('0' + number / 10);
  text[1] = static_cast<char>('0' + number % 10);
}

}  // namespace

void WriteLogStamp(std::int64_t now, char (&stamp)[kLogStampSize]) {
  constexpr std::int64_t kSecondsPerDay = 86400;
  const auto second = static_cast<std::uint32_t>(now % kSecondsPerDay);
  const MonthAndDay date = DateOf(static_cast<std::uint32_t>(now / kSecondsPerDay));
  CopyText(stamp, kMonths[date.month]);
  stamp[3] = ' ';
  WriteTwoDigits(date.day, stamp + 4);
  if (stamp[4] == '0') {
    stamp[4] = ' ';
  }
  stamp[6] = ' ';
  WriteTwoDigits(second / 3600, stamp + 7);
  stamp[9] = ':';
  WriteTwoDigits(second / 60 % 60, stamp + 10);
  stamp[12] = ':';
  WriteTwoDigits(second % 60, stamp + 13);
  stamp[15] = '\0';
}
