// What the camera can stream: the names of streaming types, resolutions, frame rates and bit rates,
// and the tables of available combinations.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

// Names. Settings files and messages hold the index of a row.

constexpr std::size_t kCapabilityNameSize = 30;

constexpr std::size_t kStreamingTypeRows = 9;
constexpr std::size_t kResolutionRows = 7;
constexpr std::size_t kFramerateRows = 6;
constexpr std::size_t kBitrateRows = 10;

/// The transports of streaming servers' settings; the last three rows are unused.
inline constexpr char streaming_type_table[kStreamingTypeRows][kCapabilityNameSize] = {
    "UDP", "TCP", "RTSP", "ZIXI", "RTMP", "RTP", "", "", ""};

/// The transports that the capabilities distinguish.
inline constexpr char streaming_type_zixi_separate_table[kStreamingTypeRows][kCapabilityNameSize] =
    {"UDP", "UDPN", "UDPL", "TCP", "RTSP", "ZIXIM", "ZIXIL", "RTMP", "RTP"};

inline constexpr char resolution_table[kResolutionRows][kCapabilityNameSize] = {
    "1920x1080", "1440x1080", "1280x720", "720x480", "720x576", "480x270", "640x360"};

inline constexpr char framerate_table[kFramerateRows][kCapabilityNameSize] = {"60p", "50p", "60i",
                                                                              "50i", "30p", "25p"};

inline constexpr char bitrate_table[kBitrateRows][kCapabilityNameSize] = {
    "0.2M", "0.3M", "0.8M", "1.5M", "2.5M", "3.0M", "5.0M", "8.0M", "10M", "12M"};

/// The camera's codes for the rows of `bitrate_table`.
inline constexpr std::int32_t bitrate_translate_table[kBitrateRows] = {12, 10, 9, 8, 7,
                                                                       6,  5,  4, 3, 13};

/// Index of the first row that equals `name`, or the number of rows.
template <std::size_t Rows>
std::int32_t IndexOfName(const char (&table)[Rows][kCapabilityNameSize], const char* name) {
  std::int32_t index = 0;
  for (const char(&row)[kCapabilityNameSize] : table) {
    if (std::strcmp(row, name) == 0) {
      break;
    }
    ++index;
  }
  return index;
}

/// The name in a row; empty for an index that is not in the table.
template <std::size_t Rows>
constexpr std::string_view NameAt(const char (&table)[Rows][kCapabilityNameSize],
                                  std::int32_t index) {
  return index >= 0 && index < std::int32_t{Rows} ? table[index] : "";
}

/// Code of a row of `bitrate_table`; 0 for an index that is not in the table.
constexpr std::int32_t BitrateCodeAt(std::int32_t index) {
  // cppcheck-suppress arrayIndexOutOfBounds  // it does not see that the condition excludes this
  return index >= 0 && index < std::int32_t{kBitrateRows} ? bitrate_translate_table[index] : 0;
}

/// Index of the bit rate with a code, or the number of rows.
inline std::int32_t IndexOfBitrateCode(std::int32_t code) {
  std::int32_t index = 0;
  while (index < std::int32_t{kBitrateRows} && bitrate_translate_table[index] != code) {
    ++index;
  }
  return index;
}

// Availability. A flag is 1 if available, otherwise 0.

template <std::size_t Columns>
struct Flags {
  std::int32_t columns[Columns];
};

/// Columns 60p, 60i, 30p, 50p, 50i, 25p: the order of the reply, not of `framerate_table`.
using FramerateFlags = Flags<kFramerateRows>;
/// Columns 1920x1080, 1440x1080, 1280x720, 720x480, 720x576, 640x360, 480x270: the order of the
/// reply, not that of `resolution_table`.
using ResolutionFlags = Flags<kResolutionRows>;
/// Columns in the order of `bitrate_table`.
using BitrateFlags = Flags<kBitrateRows>;

template <std::size_t Rows, std::size_t Columns>
struct AvailabilityTable {
  Flags<Columns> rows[Rows];
};

/// Recording formats, 0 to 11, as the camera stores them in the streaming settings.
constexpr std::size_t kRecordingFormats = 12;

/// One row per recording format.
using FramerateTable = AvailabilityTable<kRecordingFormats, kFramerateRows>;
using ResolutionTable = AvailabilityTable<kRecordingFormats, kResolutionRows>;
/// One row per streaming type of `streaming_type_zixi_separate_table`.
using BitrateTable = AvailabilityTable<kStreamingTypeRows, kBitrateRows>;

extern const FramerateTable resolution_1920x1080_framerate_table_vb52r;
extern const FramerateTable resolution_1280x720_framerate_table_vb52r;
extern const FramerateTable resolution_720x480_framerate_table_vb52r;
extern const FramerateTable resolution_720x576_framerate_table_vb52r;
extern const FramerateTable resolution_640x360_framerate_table_vb52r;
extern const FramerateTable resolution_zero_framerate_table_vb52r;

extern const ResolutionTable available_resolution_table_vb52r;

/// Those with the suffix "_ifb" apply while return audio is active.
extern const BitrateTable resolution_1920x1080_60i50i_table_vb52r;
extern const BitrateTable resolution_1920x1080_60i50i_table_vb52r_ifb;
extern const BitrateTable resolution_1280x720_60p50p_table_vb52r;
extern const BitrateTable resolution_1280x720_60p50p_table_vb52r_ifb;
extern const BitrateTable resolution_1280x720_30p25p_table_vb52r;
extern const BitrateTable resolution_1280x720_30p25p_table_vb52r_ifb;
extern const BitrateTable resolution_720x480_60i_576_50i_table_vb52r;
extern const BitrateTable resolution_720x480_60i_576_50i_table_vb52r_ifb;
extern const BitrateTable resolution_640x360_60p50p_table_vb52r;
extern const BitrateTable resolution_640x360_60p50p_table_vb52r_ifb;
extern const BitrateTable resolution_640x360_30p25p_table_vb52r;
extern const BitrateTable resolution_640x360_30p25p_table_vb52r_ifb;
extern const BitrateTable resolution_zero_table;
