// The time in front of a message to the system log.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr std::size_t kLogStampSize = sizeof "Jan  1 00:00:00";

/// Writes a time as system logs have it, "Jan  1 00:00:00", in UTC.
/// @param now  seconds since the epoch
void WriteLogStamp(std::int64_t now, char (&stamp)[kLogStampSize]);
