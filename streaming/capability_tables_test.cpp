#include "streaming/capability_tables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

template <std::size_t Rows>
std::vector<std::string> Names(const char (&table)[Rows][kCapabilityNameSize]) {
  return {std::begin(table), std::end(table)};
}

TEST(CapabilityNames, HaveTheIndexesThatFilesAndMessagesUse) {
  EXPECT_THAT(Names(streaming_type_table),
              ElementsAre("UDP", "TCP", "RTSP", "ZIXI", "RTMP", "RTP", "", "", ""));
  EXPECT_THAT(Names(streaming_type_zixi_separate_table),
              ElementsAre("UDP", "UDPN", "UDPL", "TCP", "RTSP", "ZIXIM", "ZIXIL", "RTMP", "RTP"));
  EXPECT_THAT(Names(resolution_table), ElementsAre("1920x1080", "1440x1080", "1280x720", "720x480",
                                                   "720x576", "480x270", "640x360"));
  EXPECT_THAT(Names(framerate_table), ElementsAre("60p", "50p", "60i", "50i", "30p", "25p"));
  EXPECT_THAT(Names(bitrate_table), ElementsAre("0.2M", "0.3M", "0.8M", "1.5M", "2.5M", "3.0M",
                                                "5.0M", "8.0M", "10M", "12M"));
}

TEST(CapabilityNames, AreFoundExactly) {
  EXPECT_EQ(IndexOfName(resolution_table, "1920x1080"), 0);
  EXPECT_EQ(IndexOfName(resolution_table, "640x360"), 6);
  EXPECT_EQ(IndexOfName(resolution_table, "640X360"), 7);
  EXPECT_EQ(IndexOfName(resolution_table, "640x36"), 7);
  EXPECT_EQ(IndexOfName(resolution_table, ""), 7);
  EXPECT_EQ(IndexOfName(framerate_table, "60"), 6);
  EXPECT_EQ(IndexOfName(bitrate_table, "12m"), 10);
  EXPECT_EQ(IndexOfName(streaming_type_zixi_separate_table, "ZIXI"), 9);
}

TEST(CapabilityNames, AreEmptyOutsideOfTheTable) {
  EXPECT_EQ(NameAt(framerate_table, 0), "60p");
  EXPECT_EQ(NameAt(framerate_table, 5), "25p");
  EXPECT_EQ(NameAt(framerate_table, 6), "");
  EXPECT_EQ(NameAt(framerate_table, -1), "");
  EXPECT_EQ(NameAt(framerate_table, INT32_MAX), "");
  EXPECT_EQ(NameAt(framerate_table, INT32_MIN), "");
}

// In a constant expression, reading beyond a table would not compile.
TEST(CapabilityNames, AreNotReadFromBeyondTheTable) {
  static_assert(NameAt(framerate_table, 6).empty());
  static_assert(NameAt(framerate_table, -1).empty());
}

TEST(BitrateCodes, AreNotReadFromBeyondTheTable) {
  static_assert(BitrateCodeAt(10) == 0);
  static_assert(BitrateCodeAt(-1) == 0);
}

TEST(BitrateCodes, BelongToTheirBitRates) {
  const struct {
    std::int32_t index;
    const char* name;
    std::int32_t code;
  } rows[] = {{0, "0.2M", 12}, {1, "0.3M", 10}, {2, "0.8M", 9}, {3, "1.5M", 8}, {4, "2.5M", 7},
              {5, "3.0M", 6},  {6, "5.0M", 5},  {7, "8.0M", 4}, {8, "10M", 3},  {9, "12M", 13}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(IndexOfName(bitrate_table, row.name), row.index);
    EXPECT_EQ(BitrateCodeAt(row.index), row.code);
    EXPECT_EQ(IndexOfBitrateCode(row.code), row.index);
  }
}

TEST(BitrateCodes, AreZeroOutsideTheTableAndUnknownOnesGiveTheNumberOfRows) {
  for (const std::int32_t index : {-1, 10, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(BitrateCodeAt(index), 0) << index;
  }
  for (const std::int32_t code : {0, 1, 2, 11, 14, -13, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(IndexOfBitrateCode(code), 10) << code;
  }
}

/// The names of a row's columns whose flag is 1; a flag that is neither 0 nor 1 shows as a number.
template <std::size_t Columns>
std::string Offered(const Flags<Columns>& flags, const char* const (&columns)[Columns]) {
  std::string names;
  for (std::size_t i = 0; i < Columns; ++i) {
    if (flags.columns[i] != 0) {
      names += names.empty() ? "" : " ";
      names += columns[i];
      names += flags.columns[i] == 1 ? "" : "=" + std::to_string(flags.columns[i]);
    }
  }
  return names;
}

template <std::size_t Rows, std::size_t Columns>
void ExpectRows(const char* table_name, const AvailabilityTable<Rows, Columns>& table,
                const char* const (&columns)[Columns], const char* const (&expected)[Rows]) {
  for (std::size_t row = 0; row < Rows; ++row) {
    EXPECT_EQ(Offered(table.rows[row], columns), expected[row]) << table_name << " row " << row;
  }
}

#define EXPECT_ROWS(table, columns, expected) ExpectRows(#table, table, columns, expected)

TEST(FramerateTables, OfferWhatEachRecordingFormatAllows) {
  constexpr const char* kColumns[] = {"60p", "60i", "30p", "50p", "50i", "25p"};
  constexpr const char* k1920x1080[] = {"60i", "60i", "60i", "50i", "50i", "50i",
                                        "",    "",    "",    "",    "",    ""};
  constexpr const char* k1280x720[] = {"60p 30p", "30p",     "30p", "50p 25p", "25p", "25p",
                                       "60p 30p", "50p 25p", "30p", "25p",     "",    ""};
  constexpr const char* k720x480[] = {"60i", "60i", "60i", "", "",    "",
                                      "60i", "",    "60i", "", "60i", ""};
  constexpr const char* k720x576[] = {"", "",    "", "50i", "50i", "50i",
                                      "", "50i", "", "50i", "",    "50i"};
  constexpr const char* k640x360[] = {"60p 30p", "30p",     "30p", "50p 25p", "25p", "25p",
                                      "60p 30p", "50p 25p", "30p", "25p",     "30p", "25p"};
  constexpr const char* kNone[12] = {"", "", "", "", "", "", "", "", "", "", "", ""};
  EXPECT_ROWS(resolution_1920x1080_framerate_table_vb52r, kColumns, k1920x1080);
  EXPECT_ROWS(resolution_1280x720_framerate_table_vb52r, kColumns, k1280x720);
  EXPECT_ROWS(resolution_720x480_framerate_table_vb52r, kColumns, k720x480);
  EXPECT_ROWS(resolution_720x576_framerate_table_vb52r, kColumns, k720x576);
  EXPECT_ROWS(resolution_640x360_framerate_table_vb52r, kColumns, k640x360);
  EXPECT_ROWS(resolution_zero_framerate_table_vb52r, kColumns, kNone);
}

TEST(ResolutionTable, OffersWhatEachRecordingFormatAllows) {
  constexpr const char* kColumns[] = {"1920x1080", "1440x1080", "1280x720", "720x480",
                                      "720x576",   "640x360",   "480x270"};
  constexpr const char* kExpected[] = {
      "1920x1080 1280x720 720x480 640x360",  // 0
      "1920x1080 1280x720 720x480 640x360",  // 1
      "1920x1080 1280x720 720x480 640x360",  // 2
      "1920x1080 1280x720 720x576 640x360",  // 3
      "1920x1080 1280x720 720x576 640x360",  // 4
      "1920x1080 1280x720 720x576 640x360",  // 5
      "1280x720 720x480 640x360",            // 6
      "1280x720 720x576 640x360",            // 7
      "1280x720 720x480 640x360",            // 8
      "1280x720 720x576 640x360",            // 9
      "720x480 640x360",                     // 10
      "720x576 640x360",                     // 11
  };
  EXPECT_ROWS(available_resolution_table_vb52r, kColumns, kExpected);
}

constexpr const char* kBitrates[] = {"0.2M", "0.3M", "0.8M", "1.5M", "2.5M",
                                     "3.0M", "5.0M", "8.0M", "10M",  "12M"};

TEST(BitrateTables, OfferWhatEachStreamingTypeCarries) {
  constexpr const char* k1920x1080[] = {
      "3.0M 5.0M 8.0M 12M",  // UDP
      "3.0M 5.0M 8.0M 12M",  // UDPN
      "3.0M 5.0M 8.0M 12M",  // UDPL
      "",                    // TCP
      "3.0M 5.0M",           // RTSP
      "3.0M 5.0M",           // ZIXIM
      "3.0M",                // ZIXIL
      "3.0M",                // RTMP
      "3.0M 5.0M",           // RTP
  };
  EXPECT_ROWS(resolution_1920x1080_60i50i_table_vb52r, kBitrates, k1920x1080);
  EXPECT_ROWS(resolution_1280x720_60p50p_table_vb52r, kBitrates, k1920x1080);

  constexpr const char* k1280x720Low[] = {
      "1.5M 3.0M 5.0M 8.0M",  // UDP
      "1.5M 3.0M 5.0M 8.0M",  // UDPN
      "1.5M 3.0M 5.0M 8.0M",  // UDPL
      "",                     // TCP
      "1.5M 3.0M 5.0M",       // RTSP
      "1.5M 3.0M 5.0M",       // ZIXIM
      "1.5M 3.0M",            // ZIXIL
      "1.5M 3.0M",            // RTMP
      "1.5M 3.0M 5.0M",       // RTP
  };
  EXPECT_ROWS(resolution_1280x720_30p25p_table_vb52r, kBitrates, k1280x720Low);

  constexpr const char* k720[] = {
      "0.3M 0.8M 1.5M 3.0M 5.0M 8.0M",  // UDP
      "0.3M 0.8M 1.5M 3.0M 5.0M 8.0M",  // UDPN
      "0.3M 0.8M 1.5M 3.0M 5.0M 8.0M",  // UDPL
      "",                               // TCP
      "0.3M 0.8M 1.5M 3.0M 5.0M",       // RTSP
      "0.3M 0.8M 1.5M 3.0M 5.0M",       // ZIXIM
      "0.3M 0.8M 1.5M 3.0M",            // ZIXIL
      "0.3M 0.8M 1.5M 3.0M",            // RTMP
      "0.3M 0.8M 1.5M 3.0M 5.0M",       // RTP
  };
  EXPECT_ROWS(resolution_720x480_60i_576_50i_table_vb52r, kBitrates, k720);

  constexpr const char* k640x360High[] = {
      "1.5M 3.0M",  // UDP
      "1.5M 3.0M",  // UDPN
      "1.5M 3.0M",  // UDPL
      "",           // TCP
      "1.5M 3.0M",  // RTSP
      "1.5M 3.0M",  // ZIXIM
      "1.5M 3.0M",  // ZIXIL
      "1.5M 3.0M",  // RTMP
      "1.5M 3.0M",  // RTP
  };
  EXPECT_ROWS(resolution_640x360_60p50p_table_vb52r, kBitrates, k640x360High);

  constexpr const char* k640x360Low[] = {
      "0.3M 0.8M 1.5M 3.0M",  // UDP
      "0.3M 0.8M 1.5M 3.0M",  // UDPN
      "0.3M 0.8M 1.5M 3.0M",  // UDPL
      "",                     // TCP
      "0.3M 0.8M 1.5M 3.0M",  // RTSP
      "0.3M 0.8M 1.5M 3.0M",  // ZIXIM
      "0.3M 0.8M 1.5M 3.0M",  // ZIXIL
      "0.3M 0.8M 1.5M 3.0M",  // RTMP
      "0.3M 0.8M 1.5M 3.0M",  // RTP
  };
  EXPECT_ROWS(resolution_640x360_30p25p_table_vb52r, kBitrates, k640x360Low);

  constexpr const char* kNone[9] = {"", "", "", "", "", "", "", "", ""};
  EXPECT_ROWS(resolution_zero_table, kBitrates, kNone);
}

TEST(BitrateTables, OfferLessWhileReturnAudioIsActive) {
  constexpr const char* k1920x1080[] = {
      "3.0M",            // UDP
      "3.0M",            // UDPN
      "3.0M 5.0M 8.0M",  // UDPL
      "",                // TCP
      "3.0M",            // RTSP
      "3.0M",            // ZIXIM
      "3.0M",            // ZIXIL
      "",                // RTMP
      "3.0M 5.0M",       // RTP
  };
  EXPECT_ROWS(resolution_1920x1080_60i50i_table_vb52r_ifb, kBitrates, k1920x1080);
  EXPECT_ROWS(resolution_1280x720_60p50p_table_vb52r_ifb, kBitrates, k1920x1080);

  constexpr const char* k1280x720Low[] = {
      "1.5M 3.0M",            // UDP
      "1.5M 3.0M",            // UDPN
      "1.5M 3.0M 5.0M 8.0M",  // UDPL
      "",                     // TCP
      "1.5M 3.0M",            // RTSP
      "1.5M 3.0M",            // ZIXIM
      "1.5M 3.0M",            // ZIXIL
      "1.5M",                 // RTMP
      "1.5M 3.0M 5.0M",       // RTP
  };
  EXPECT_ROWS(resolution_1280x720_30p25p_table_vb52r_ifb, kBitrates, k1280x720Low);

  constexpr const char* k720[] = {
      "0.3M 0.8M 1.5M 3.0M",            // UDP
      "0.3M 0.8M 1.5M 3.0M",            // UDPN
      "0.3M 0.8M 1.5M 3.0M 5.0M 8.0M",  // UDPL
      "",                               // TCP
      "0.3M 0.8M 1.5M 3.0M",            // RTSP
      "0.3M 0.8M 1.5M 3.0M",            // ZIXIM
      "0.3M 0.8M 1.5M 3.0M",            // ZIXIL
      "0.3M 0.8M 1.5M",                 // RTMP
      "0.3M 0.8M 1.5M 3.0M 5.0M",       // RTP
  };
  EXPECT_ROWS(resolution_720x480_60i_576_50i_table_vb52r_ifb, kBitrates, k720);

  constexpr const char* k640x360High[] = {
      "1.5M 3.0M",  // UDP
      "1.5M 3.0M",  // UDPN
      "1.5M 3.0M",  // UDPL
      "",           // TCP
      "1.5M 3.0M",  // RTSP
      "1.5M 3.0M",  // ZIXIM
      "1.5M 3.0M",  // ZIXIL
      "1.5M",       // RTMP
      "1.5M 3.0M",  // RTP
  };
  EXPECT_ROWS(resolution_640x360_60p50p_table_vb52r_ifb, kBitrates, k640x360High);

  constexpr const char* k640x360Low[] = {
      "0.3M 0.8M 1.5M 3.0M",  // UDP
      "0.3M 0.8M 1.5M 3.0M",  // UDPN
      "0.3M 0.8M 1.5M 3.0M",  // UDPL
      "0.3M 0.8M 1.5M 3.0M",  // TCP, here alone
      "0.3M 0.8M 1.5M 3.0M",  // RTSP
      "0.3M 0.8M 1.5M 3.0M",  // ZIXIM
      "0.3M 0.8M 1.5M 3.0M",  // ZIXIL
      "0.3M 0.8M 1.5M",       // RTMP
      "0.3M 0.8M 1.5M 3.0M",  // RTP
  };
  EXPECT_ROWS(resolution_640x360_30p25p_table_vb52r_ifb, kBitrates, k640x360Low);
}

}  // namespace
