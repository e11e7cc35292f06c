#include "simulator/date_time.h"

#include <cstdio>
#include <ctime>

namespace simulator {

DateTime DateTimeOf(std::int64_t second) {
  const auto time = static_cast<std::time_t>(second);
  std::tm parts = {};
  gmtime_r(&time, &parts);
  return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
          parts.tm_hour,        parts.tm_min,     parts.tm_sec};
}

std::string DateText(std::int64_t second) {
  const auto time = static_cast<std::time_t>(second);
  std::tm parts = {};
  gmtime_r(&time, &parts);
  char text[32];
  return {text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &parts)};
}

std::optional<std::int64_t> ParseDate(const std::string& text) {
  std::tm parts = {};
  const char* const end = strptime(text.c_str(), "%Y-%m-%dT%H:%M:%S", &parts);
  if (end == nullptr || *end != '\0') {
    return std::nullopt;
  }
  const std::int64_t second = timegm(&parts);
  constexpr std::int64_t kEnd = 4102444800;  // 2100
  // Converting back also finds dates like June 31, and numbers with too few digits.
  if (second < 0 || second >= kEnd || DateText(second) != text) {
    return std::nullopt;
  }
  return second;
}

}  // namespace simulator
