// The camera's date and time: seconds since 1970 without a time zone.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace simulator {

/// A date and time in its parts.
struct DateTime {
  int year = 1970;
  int month = 1;  ///< from 1
  int day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

DateTime DateTimeOf(std::int64_t second);

/// "2026-05-04T09:30:00"
std::string DateText(std::int64_t second);

/// Reads what `DateText` writes, for the years 1970 to 2099; nothing if it is not that.
std::optional<std::int64_t> ParseDate(const std::string& text);

}  // namespace simulator
