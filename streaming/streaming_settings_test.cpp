#include "streaming/streaming_settings.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "core/text.h"
#include "harness/files.h"

namespace {

/// One field of a record, as the files know it.
template <typename Record>
struct FieldCase {
  const char* key;
  std::size_t capacity;
  const char* default_value;
  const char* (*value)(const Record& record);
};

template <auto Field, typename Record>
const char* Value(const Record& record) {
  return record.*Field;
}

constexpr FieldCase<_STREAMING_SETTING> kStreamingCases[] = {
    {"resolution", 30, "0", Value<&_STREAMING_SETTING::resolution>},
    {"quality", 30, "0", Value<&_STREAMING_SETTING::quality>},
    {"server", 30, "0", Value<&_STREAMING_SETTING::server>},
    {"rfresolution", 30, "0", Value<&_STREAMING_SETTING::rfresolution>},
    {"cldstrmusername", 130, "0", Value<&_STREAMING_SETTING::cldstrmusername>},
    {"cldstrmpassword", 70, "0", Value<&_STREAMING_SETTING::cldstrmpassword>},
    {"serverurl", 256, "0", Value<&_STREAMING_SETTING::serverurl>},
};

constexpr FieldCase<_STREAMING_SERVER_SETTING> kServerCases[] = {
    {"str_alias", 256, "0", Value<&_STREAMING_SERVER_SETTING::str_alias>},
    {"type", 30, "0", Value<&_STREAMING_SERVER_SETTING::type>},
    {"udp_dst_address", 130, "0.0.0.0", Value<&_STREAMING_SERVER_SETTING::udp_dst_address>},
    {"udp_dst_port", 30, "0", Value<&_STREAMING_SERVER_SETTING::udp_dst_port>},
    {"udp_pcr_jitter", 30, "0", Value<&_STREAMING_SERVER_SETTING::udp_pcr_jitter>},
    {"tcp_dst_address", 130, "0.0.0.0", Value<&_STREAMING_SERVER_SETTING::tcp_dst_address>},
    {"tcp_dst_port", 30, "0", Value<&_STREAMING_SERVER_SETTING::tcp_dst_port>},
    {"zixi_dst_address", 130, "0", Value<&_STREAMING_SERVER_SETTING::zixi_dst_address>},
    {"zixi_dst_port", 30, "0", Value<&_STREAMING_SERVER_SETTING::zixi_dst_port>},
    {"zixi_stream_id", 70, "0", Value<&_STREAMING_SERVER_SETTING::zixi_stream_id>},
    {"zixi_username", 70, "0", Value<&_STREAMING_SERVER_SETTING::zixi_username>},
    {"zixi_password", 130, "0", Value<&_STREAMING_SERVER_SETTING::zixi_password>},
    {"zixi_latency", 30, "0", Value<&_STREAMING_SERVER_SETTING::zixi_latency>},
    {"zixi_adaptive_bitrate", 30, "0", Value<&_STREAMING_SERVER_SETTING::zixi_adaptive_bitrate>},
    {"rtsp_dst_port", 30, "0", Value<&_STREAMING_SERVER_SETTING::rtsp_dst_port>},
    {"rtsp_stream_id", 70, "0", Value<&_STREAMING_SERVER_SETTING::rtsp_stream_id>},
    {"rtsp_username", 70, "0", Value<&_STREAMING_SERVER_SETTING::rtsp_username>},
    {"rtsp_password", 40, "0", Value<&_STREAMING_SERVER_SETTING::rtsp_password>},
    {"rtmp_destination_url", 200, "0", Value<&_STREAMING_SERVER_SETTING::rtmp_destination_url>},
    {"rtmp_stream_key", 70, "0", Value<&_STREAMING_SERVER_SETTING::rtmp_stream_key>},
    {"rtp_dst_address", 130, "0", Value<&_STREAMING_SERVER_SETTING::rtp_dst_address>},
    {"rtp_dst_port", 30, "0", Value<&_STREAMING_SERVER_SETTING::rtp_dst_port>},
    {"rtp_smpte2022_fec", 30, "0", Value<&_STREAMING_SERVER_SETTING::rtp_smpte2022_fec>},
    {"rtp_fec_matrix_l", 30, "0", Value<&_STREAMING_SERVER_SETTING::rtp_fec_matrix_l>},
    {"rtp_fec_matrix_d", 30, "0", Value<&_STREAMING_SERVER_SETTING::rtp_fec_matrix_d>},
};

/// Each field has its default without a file, and its line fills only this field, truncated to its
/// capacity. All fields are written in the order of the cases.
template <typename Record, std::size_t Count>
void CheckFile(const SettingsFile<Record>& file, const FieldCase<Record> (&cases)[Count]) {
  constexpr char kPath[] = "/var/tmp/lighttpd/settings_under_test";
  Record record;
  file.Read(kPath, record);
  std::string expected;
  for (const auto& row : cases) {
    EXPECT_STREQ(row.value(record), row.default_value) << row.key;
    expected += std::string(row.key) + "\t" + row.default_value + "\n";
  }
  file.Write(kPath, record);
  EXPECT_EQ(harness::ReadFile(kPath), expected);

  for (const auto& row : cases) {
    SCOPED_TRACE(row.key);
    const std::string longest_on_a_line(255 - std::strlen(row.key) - 2, 'v');
    harness::WriteFile(kPath, std::string(row.key) + "\t" + longest_on_a_line + "\n");
    file.Read(kPath, record);
    for (const auto& other : cases) {
      EXPECT_EQ(other.value(record),
                other.key == row.key ? longest_on_a_line.substr(0, row.capacity - 1) : "")
          << other.key;
    }
  }
}

TEST(StreamingSettingFile, HasTheseKeysCapacitiesAndDefaults) {
  CheckFile(kStreamingFile, kStreamingCases);
  static_assert(sizeof(_STREAMING_SETTING) == 30 * 4 + 130 + 70 + 256);
}

TEST(StreamingServerSettingFile, HasTheseKeysCapacitiesAndDefaults) {
  CheckFile(kStreamingServerFile, kServerCases);
  static_assert(sizeof(_STREAMING_SERVER_SETTING) == 256 + 30 + 130 + 2 * 30 + 130 + 30 + 130 + 30 +
                                                         2 * 70 + 130 + 2 * 30 + 30 + 2 * 70 + 40 +
                                                         200 + 70 + 130 + 4 * 30);
}

TEST(StreamingSettingFile, IsReadFromItsPath) {
  harness::WriteFile("/var/tmp/lighttpd/streaming", "server\t2\nserverurl\thost\n");
  _STREAMING_SETTING setting;
  EXPECT_EQ(ReadStreamingSetting(&setting), 0);
  EXPECT_STREQ(setting.server, "2");
  EXPECT_STREQ(setting.serverurl, "host");
  EXPECT_STREQ(setting.resolution, "");
}

TEST(StreamingServerSettingFile, IsReadAndWrittenByItsPath) {
  const StreamingServerPath path(12);
  _STREAMING_SERVER_SETTING setting;
  EXPECT_EQ(ReadStreamingServerSetting(path.Text(), &setting), 0);
  CopyText(setting.str_alias, "Studio");
  EXPECT_EQ(WriteStreamingServerSetting(path.Text(), &setting), 0);
  EXPECT_EQ(harness::ReadFile("/var/tmp/lighttpd/streaming_server12").substr(0, 30),
            "str_alias\tStudio\ntype\t0\nudp_ds");
  EXPECT_EQ(ReadStreamingServerSetting(path.Text(), &setting), 0);
  EXPECT_STREQ(setting.str_alias, "Studio");
}

TEST(StreamingServerPath, EndsWithTheNumber) {
  EXPECT_STREQ(StreamingServerPath(1).Text(), "/var/tmp/lighttpd/streaming_server1");
  EXPECT_STREQ(StreamingServerPath(12).Text(), "/var/tmp/lighttpd/streaming_server12");
  EXPECT_STREQ(StreamingServerPath(-1).Text(), "/var/tmp/lighttpd/streaming_server-1");
  EXPECT_STREQ(StreamingServerPath(INT32_MIN).Text(),
               "/var/tmp/lighttpd/streaming_server-2147483648");
}

TEST(StreamingQuality, SplitsIntoBitrateCodeAndFramerate) {
  const struct {
    std::int32_t quality;
    std::int32_t bitrate_code;
    std::int32_t framerate;
  } rows[] = {{0, 0, 0},
              {42, 5, 2},
              {66, 8, 2},
              {107, 13, 3},
              {-1, 0, -1},
              {-42, -5, -2},
              {INT32_MAX, 268435455, 7},
              {INT32_MIN, -268435456, 0}};
  for (const auto& row : rows) {
    const StreamingQuality quality(row.quality);
    EXPECT_EQ(quality.bitrate_code, row.bitrate_code) << row.quality;
    EXPECT_EQ(quality.framerate, row.framerate) << row.quality;
    EXPECT_EQ(StreamingQuality(row.bitrate_code, row.framerate).Value(), row.quality);
  }
}

}  // namespace
