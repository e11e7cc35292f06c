// The streaming servers' settings files: the five Set commands, one for each transport that clients
// can choose, and the command that reads a server back.
#include <sys/stat.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "harness/camera_test.h"

namespace {

using namespace harness;
using testing::ElementsAre;
using testing::IsEmpty;

/// Every key of a server's file, in the order of its lines, with its value while there is no file.
constexpr const char* kKeys[][2] = {
    {"str_alias", "0"},
    {"type", "0"},
    {"udp_dst_address", "0.0.0.0"},
    {"udp_dst_port", "0"},
    {"udp_pcr_jitter", "0"},
    {"tcp_dst_address", "0.0.0.0"},
    {"tcp_dst_port", "0"},
    {"zixi_dst_address", "0"},
    {"zixi_dst_port", "0"},
    {"zixi_stream_id", "0"},
    {"zixi_username", "0"},
    {"zixi_password", "0"},
    {"zixi_latency", "0"},
    {"zixi_adaptive_bitrate", "0"},
    {"rtsp_dst_port", "0"},
    {"rtsp_stream_id", "0"},
    {"rtsp_username", "0"},
    {"rtsp_password", "0"},
    {"rtmp_destination_url", "0"},
    {"rtmp_stream_key", "0"},
    {"rtp_dst_address", "0"},
    {"rtp_dst_port", "0"},
    {"rtp_smpte2022_fec", "0"},
    {"rtp_fec_matrix_l", "0"},
    {"rtp_fec_matrix_d", "0"},
};

using Settings = std::map<std::string, std::string>;

/// A server's file with these settings; all others have their default.
std::string ServerFile(const Settings& settings) {
  std::string file;
  for (const auto& [key, default_value] : kKeys) {
    const auto setting = settings.find(key);
    file += key;
    file += '\t';
    file += setting != settings.end() ? setting->second : default_value;
    file += '\n';
  }
  return file;
}

/// A server's file in which the value of every setting, except the type, is its key.
Settings Distinct(const std::string& type) {
  Settings settings;
  for (const auto& key : kKeys) {
    settings[key[0]] = std::string("old_") + key[0];
  }
  settings["type"] = type;
  return settings;
}

std::string Path(const std::string& server) {
  return "/var/tmp/lighttpd/streaming_server" + server;
}

/// One Set command with all its parameters, and what it sets.
struct TransportCase {
  std::string transport;
  std::vector<std::pair<std::string, std::string>> params;  // in the order in which they are read
  Settings set;
};

const std::vector<TransportCase>& Transports() {
  static const std::vector<TransportCase> transports = {
      {"UDP",
       {{"ID", "1"},
        {"Alias", "\"Van\""},
        {"DstAddress", "\"10.0.0.5\""},
        {"DstPort", "6000"},
        {"PcrJitter", "15"}},
       {{"str_alias", "Van"},
        {"type", "0"},
        {"udp_dst_address", "10.0.0.5"},
        {"udp_dst_port", "6000"},
        {"udp_pcr_jitter", "15"}}},
      {"RTSP",
       {{"ID", "1"}, {"Alias", "\"Van\""}, {"Password", "\"secret\""}},
       {{"str_alias", "Van"}, {"type", "2"}, {"rtsp_password", "secret"}}},
      {"ZIXI",
       {{"ID", "1"},
        {"Alias", "\"Van\""},
        {"DstAddress", "\"zixi.example\""},
        {"DstPort", "2088"},
        {"StreamId", "\"cam1\""},
        {"Password", "\"secret\""},
        {"Latency", "500"},
        {"AdaptiveBitrate", "1"}},
       {{"str_alias", "Van"},
        {"type", "3"},
        {"zixi_dst_address", "zixi.example"},
        {"zixi_dst_port", "2088"},
        {"zixi_stream_id", "cam1"},
        {"zixi_password", "secret"},
        {"zixi_latency", "500"},
        {"zixi_adaptive_bitrate", "1"}}},
      {"RTMP",
       {{"ID", "1"},
        {"Alias", "\"Van\""},
        {"DstUrl", "\"rtmp://host/live\""},
        {"StreamKey", "\"abcd-1234\""}},
       {{"str_alias", "Van"},
        {"type", "4"},
        {"rtmp_destination_url", "rtmp://host/live"},
        {"rtmp_stream_key", "abcd-1234"}}},
      {"RTP",
       {{"ID", "1"},
        {"Alias", "\"Van\""},
        {"DstAddress", "\"10.0.0.6\""},
        {"DstPort", "6002"},
        {"Smpte2022Fec", "1"},
        {"FecMatrixL", "10"},
        {"FecMatrixD", "5"}},
       // The address is stored in the key of UDP's address.
       {{"str_alias", "Van"},
        {"type", "5"},
        {"udp_dst_address", "10.0.0.6"},
        {"rtp_dst_port", "6002"},
        {"rtp_smpte2022_fec", "1"},
        {"rtp_fec_matrix_l", "10"},
        {"rtp_fec_matrix_d", "5"}}},
  };
  return transports;
}

std::string CommandOf(const TransportCase& row) {
  return "SetStreamingServerSettings" + row.transport;
}

/// The parameters as JSON members, without the one named `left_out`.
std::string Params(const TransportCase& row, const std::string& left_out = "") {
  std::string params;
  for (const auto& [name, value] : row.params) {
    if (name != left_out) {
      params += params.empty() ? "\"" : ",\"";
      params += name;
      params += "\":";
      params += value;
    }
  }
  return params;
}

class StreamingServersTest : public CameraTest {};

TEST_F(StreamingServersTest, EachTransportWritesItsSettingsIntoANewFile) {
  for (const TransportCase& row : Transports()) {
    SCOPED_TRACE(row.transport);
    ResetPrivateWorld();
    WriteSession(kSession);
    FakeDaemon daemon;
    EXPECT_THAT(Post(Body(CommandOf(row), Params(row))), Replied(ResultJson(CommandOf(row))));
    EXPECT_EQ(ReadFile(Path("1")), ServerFile(row.set));
    EXPECT_THAT(daemon.Received(), ElementsAre(RenewalNotice()));
  }
}

TEST_F(StreamingServersTest, EachTransportKeepsAllOtherSettings) {
  FakeDaemon daemon;
  for (const TransportCase& row : Transports()) {
    SCOPED_TRACE(row.transport);
    Settings settings = Distinct("1");
    WriteFile(Path("1"), ServerFile(settings));
    EXPECT_THAT(Post(Body(CommandOf(row), Params(row))), Replied(ResultJson(CommandOf(row))));
    for (const auto& [key, value] : row.set) {
      settings[key] = value;
    }
    EXPECT_EQ(ReadFile(Path("1")), ServerFile(settings));
  }
}

TEST_F(StreamingServersTest, EachTransportTracesItsParameters) {
  FakeDaemon daemon;
  for (const TransportCase& row : Transports()) {
    SCOPED_TRACE(row.transport);
    const std::string body = Body(CommandOf(row), Params(row));
    Post(body);
    LogLines expected = {
        Error("rcv post_data = " + body),
        Info("##### " + CommandOf(row) + " Parse() params={" + Params(row) + "}}}"),
        Info("##### RenewSetting socket_send_msg() renew_reconnect 0"),
        Error("send res_str = " + ResultJson(CommandOf(row)))};
    if (row.transport == "ZIXI") {
      expected.insert(expected.begin() + 2,
                      Info("##### SetStreamingServerSettingsZIXI Transmit() m_server_no=1 "
                           "m_alias=Van m_type=3 m_ip=zixi.example m_port=2088 m_sid=cam1 "
                           "m_pas=secret m_lat=500 m_abt=1"));
    }
    EXPECT_EQ(log_.TakeLines(), expected);
  }
}

TEST_F(StreamingServersTest, EveryParameterIsNeeded) {
  FakeDaemon daemon;
  for (const TransportCase& row : Transports()) {
    for (const auto& param : row.params) {
      const std::string& left_out = param.first;
      SCOPED_TRACE(row.transport + " without " + left_out);
      const std::string params = Params(row, left_out);
      const std::string body = Body(CommandOf(row), params);
      EXPECT_THAT(Post(body), Replied(ErrorJson("RequestedError")));
      EXPECT_FALSE(Exists(Path("1")));
      EXPECT_THAT(log_.TakeLines(),
                  Logged(Error("rcv post_data = " + body),
                         Error("error: json_parser() key [" + left_out + "] does not appear\n"),
                         Error("requested error ret=-1, params=\"Params\":{" + params + "}}}")));
    }
  }
  EXPECT_THAT(daemon.Received(), IsEmpty());
}

TEST_F(StreamingServersTest, WithoutParamsServer0GetsZerosAndEmptyTexts) {
  const struct {
    const char* transport;
    Settings set;
  } rows[] = {
      {"UDP", {{"udp_dst_address", ""}, {"udp_dst_port", "0"}, {"udp_pcr_jitter", "0"}}},
      {"RTSP", {{"rtsp_password", ""}}},
      {"ZIXI",
       {{"zixi_dst_address", ""},
        {"zixi_dst_port", "0"},
        {"zixi_stream_id", ""},
        {"zixi_password", ""},
        {"zixi_latency", "0"},
        {"zixi_adaptive_bitrate", "0"}}},
      {"RTMP", {{"rtmp_destination_url", ""}, {"rtmp_stream_key", ""}}},
      {"RTP",
       {{"udp_dst_address", ""},
        {"rtp_dst_port", "0"},
        {"rtp_smpte2022_fec", "0"},
        {"rtp_fec_matrix_l", "0"},
        {"rtp_fec_matrix_d", "0"}}},
  };
  FakeDaemon daemon;
  std::vector<std::string> notices;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.transport);
    const std::string command = std::string("SetStreamingServerSettings") + row.transport;
    Settings settings = Distinct("3");
    WriteFile(Path("0"), ServerFile(settings));
    EXPECT_THAT(Post(Body(command)), Replied(ResultJson(command)));
    settings["str_alias"] = "";
    settings["type"] = "0";
    for (const auto& [key, value] : row.set) {
      settings[key] = value;
    }
    EXPECT_EQ(ReadFile(Path("0")), ServerFile(settings));
    notices.push_back(RenewalNotice());
  }
  EXPECT_EQ(daemon.Received(), notices);
}

TEST_F(StreamingServersTest, AnyServerNumberNamesItsFile) {
  const struct {
    const char* id;
    const char* path;
  } rows[] = {{"12", "12"}, {"\"3\"", "3"},
              {"-1", "-1"}, {"\"x\"", "0"},
              {"1.9", "1"}, {"2147483648", "2147483647"},
              {"007", "7"}, {"-99999999999", "-2147483648"}};
  FakeDaemon daemon;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.id);
    const std::string params =
        std::string("\"ID\":") + row.id + R"(,"Alias":"Van","Password":"secret")";
    EXPECT_THAT(Post(Body("SetStreamingServerSettingsRTSP", params)),
                Replied(ResultJson("SetStreamingServerSettingsRTSP")));
    EXPECT_EQ(ReadFile(Path(row.path)),
              ServerFile({{"str_alias", "Van"}, {"type", "2"}, {"rtsp_password", "secret"}}));
  }
}

TEST_F(StreamingServersTest, NumbersAreStoredAsDecimalNumbersWhateverTheyAre) {
  const struct {
    const char* given;
    const char* stored;
  } rows[] = {{"\"6000\"", "6000"},
              {"-20", "-20"},
              {"\"+5\"", "5"},
              {"\"abc\"", "0"},
              {"\"\"", "0"},
              {"70000", "70000"},
              {"99999999999", "2147483647"},
              {"-99999999999", "-2147483648"},
              {"12abc", "12"}};
  FakeDaemon daemon;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.given);
    const std::string given = row.given;
    Post(Body("SetStreamingServerSettingsUDP",
              "\"ID\":1,\"Alias\":\"Van\",\"DstAddress\":\"a\","
              "\"DstPort\":" +
                  given + ",\"PcrJitter\":" + given));
    EXPECT_EQ(ReadFile(Path("1")), ServerFile({{"str_alias", "Van"},
                                               {"udp_dst_address", "a"},
                                               {"udp_dst_port", row.stored},
                                               {"udp_pcr_jitter", row.stored}}));
  }
}

/// A transport's command with another text for one of its parameters.
TransportCase WithText(const std::string& transport, const std::string& param,
                       const std::string& text) {
  TransportCase changed = *std::find_if(
      Transports().begin(), Transports().end(),
      [&](const TransportCase& candidate) { return candidate.transport == transport; });
  for (auto& [name, value] : changed.params) {
    if (name == param) {
      value = '"' + text + '"';
    }
  }
  return changed;
}

TEST_F(StreamingServersTest, TextsAreTruncatedToTheirFields) {
  const struct {
    const char* transport;
    const char* param;
    const char* key;
    std::size_t kept;
  } rows[] = {
      {"UDP", "Alias", "str_alias", 255},
      {"UDP", "DstAddress", "udp_dst_address", 129},
      {"RTSP", "Password", "rtsp_password", 39},
      {"ZIXI", "DstAddress", "zixi_dst_address", 129},
      {"ZIXI", "StreamId", "zixi_stream_id", 69},
      {"ZIXI", "Password", "zixi_password", 129},
      {"RTMP", "DstUrl", "rtmp_destination_url", 199},
      {"RTMP", "StreamKey", "rtmp_stream_key", 69},
      {"RTP", "DstAddress", "udp_dst_address", 129},
  };
  FakeDaemon daemon;
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.transport) + " " + row.param);
    const TransportCase transport = WithText(row.transport, row.param, std::string(4000, 'v'));
    Settings stored = transport.set;
    stored[row.key] = std::string(row.kept, 'v');
    WriteFile(Path("1"), ServerFile({}));
    EXPECT_THAT(Post(Body(CommandOf(transport), Params(transport))),
                Replied(ResultJson(CommandOf(transport))));
    EXPECT_EQ(ReadFile(Path("1")), ServerFile(stored));
    EXPECT_THAT(log_.TakeLines(),
                testing::Contains(Info("##### " + CommandOf(transport) + " Parse() params={" +
                                       Params(transport) + "}}}")));
  }
}

TEST_F(StreamingServersTest, TheZixiTraceShowsWhatIsStored) {
  FakeDaemon daemon;
  const std::string long_text(300, 'v');
  Post(Body("SetStreamingServerSettingsZIXI",
            "\"ID\":-2,\"Alias\":\"" + long_text + "\",\"DstAddress\":\"" + long_text +
                "\",\"DstPort\":\"x\",\"StreamId\":\"" + long_text + "\",\"Password\":\"" +
                long_text + "\",\"Latency\":-5,\"AdaptiveBitrate\":99999999999"));
  const auto v = [](std::size_t count) { return std::string(count, 'v'); };
  EXPECT_THAT(log_.Lines(),
              testing::Contains(
                  Info("##### SetStreamingServerSettingsZIXI Transmit() m_server_no=-2 m_alias=" +
                       v(255) + " m_type=3 m_ip=" + v(129) + " m_port=0 m_sid=" + v(69) +
                       " m_pas=" + v(129) + " m_lat=-5 m_abt=2147483647")));
}

TEST_F(StreamingServersTest, NoCommandLeadsToTcp) {
  EXPECT_THAT(Post(Body("SetStreamingServerSettingsTCP",
                        R"("ID":2,"Alias":"Van","DstAddress":"10.0.0.5","DstPort":6000)")),
              Replied(ErrorJson("CommandError"), 1));
}

TEST_F(StreamingServersTest, AnAbsentDaemonEndsTheRequestAfterTheFileIsWritten) {
  const TransportCase& udp = Transports()[0];
  EXPECT_THAT(Post(Body(CommandOf(udp), Params(udp))), EndedSilently(1));
  EXPECT_EQ(ReadFile(Path("1")), ServerFile(udp.set));
}

TEST_F(StreamingServersTest, AWriteFailureDoesNotChangeTheReply) {
  FakeDaemon daemon;
  mkdir(Path("1").c_str(), 0755);
  const TransportCase& udp = Transports()[0];
  EXPECT_THAT(Post(Body(CommandOf(udp), Params(udp))), Replied(ResultJson(CommandOf(udp))));
  EXPECT_THAT(daemon.Received(), ElementsAre(RenewalNotice()));
}

// Reading a server back.

constexpr char kGet[] = "GetStreamingServerSettings";

TEST_F(StreamingServersTest, AServerWithoutAFileIsAnEmptyUdpServer) {
  EXPECT_THAT(Post(Body(kGet, R"("ID":7)")),
              Replied(DataJson(kGet, R"("Alias":"0","Type":"UDP","Udp":{"DstAddress":"0.0.0.0",)"
                                     R"("DstPort":0,"PcrJitter":0})")));
  EXPECT_FALSE(Exists(Path("7")));
}

TEST_F(StreamingServersTest, EachTransportIsReportedWithItsStoredSettings) {
  const RepliesMayBreak may_break;
  const struct {
    const char* type;
    const char* data;
  } rows[] = {
      {"0", R"("Alias":"old_str_alias","Type":"UDP","Udp":{"DstAddress":"old_udp_dst_address",)"
            R"("DstPort":old_udp_dst_port,"PcrJitter":old_udp_pcr_jitter})"},
      {"1", R"("Alias":"old_str_alias","Type":"TCP","Tcp":{"DstAddress":"old_tcp_dst_address",)"
            R"("DstPort":old_tcp_dst_port})"},
      {"2", R"("Alias":"old_str_alias","Type":"RTSP","Rtsp":{"DstPort":old_rtsp_dst_port,)"
            R"("StreamId":"old_rtsp_stream_id","Username":"old_rtsp_username",)"
            R"("Password":"old_rtsp_password"})"},
      {"3", R"("Alias":"old_str_alias","Type":"ZIXI","Zixi":{"DstAddress":"old_zixi_dst_address",)"
            R"("DstPort":old_zixi_dst_port,"StreamId":"old_zixi_stream_id",)"
            R"("Password":"old_zixi_password","Latency":old_zixi_latency,)"
            R"("AdaptiveBitrate":old_zixi_adaptive_bitrate})"},
      {"4", R"("Alias":"old_str_alias","Type":"RTMP","Rtmp":{"DstUrl":"old_rtmp_destination_url",)"
            R"("StreamKey":"old_rtmp_stream_key"})"},
      {"5", R"("Alias":"old_str_alias","Type":"RTP","Rtp":{"DstAddress":"old_rtp_dst_address",)"
            R"("DstPort":old_rtp_dst_port,"Smpte2022Fec":old_rtp_smpte2022_fec,)"
            R"("FecMatrixL":old_rtp_fec_matrix_l,"FecMatrixD":old_rtp_fec_matrix_d})"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.type);
    WriteFile(Path("2"), ServerFile(Distinct(row.type)));
    EXPECT_THAT(Post(Body(kGet, R"("ID":2)")), Replied(DataJson(kGet, row.data)));
  }
}

TEST_F(StreamingServersTest, AnUnknownTransportGivesEmptyData) {
  for (const char* type : {"6", "8", "9", "-1", "2147483648", "-99999999999"}) {
    SCOPED_TRACE(type);
    WriteFile(Path("1"), ServerFile(Distinct(type)));
    EXPECT_THAT(Post(Body(kGet, R"("ID":1)")), Replied(DataJson(kGet, "")));
  }
}

TEST_F(StreamingServersTest, ATransportThatIsNotANumberCountsAsUdp) {
  const RepliesMayBreak may_break;
  WriteFile(Path("1"), "str_alias\tVan\ntype\tRTP\n");
  EXPECT_THAT(Post(Body(kGet, R"("ID":1)")),
              Replied(DataJson(kGet, R"("Alias":"Van","Type":"UDP","Udp":{"DstAddress":"",)"
                                     R"("DstPort":,"PcrJitter":})")));
}

TEST_F(StreamingServersTest, WithoutParamsServer0IsReported) {
  WriteFile(Path("0"), ServerFile({{"str_alias", "Zero"}, {"type", "1"}}));
  EXPECT_THAT(Post(Body(kGet)), Replied(DataJson(kGet, R"("Alias":"Zero","Type":"TCP","Tcp":{)"
                                                       R"("DstAddress":"0.0.0.0","DstPort":0})")));
}

TEST_F(StreamingServersTest, ReadingBackIsTracedUnderTheNameOfTheFormatCommand) {
  WriteFile(Path("1"), ServerFile(Distinct("4")));
  const std::string body = Body(kGet, R"("ID":1)");
  const Outcome outcome = Post(body);
  const std::string reply = outcome.output.substr(outcome.output.find("\n\n") + 2);
  EXPECT_THAT(log_.TakeLines(),
              Logged(Error("rcv post_data = " + body),
                     Info("##### GetStreamingSettings Parse() params={\"ID\":1}}}"),
                     Error("send res_str = " + reply)));
  const std::string without_id = Body(kGet, R"("Id":1)");
  EXPECT_THAT(Post(without_id), Replied(ErrorJson("RequestedError")));
  EXPECT_THAT(log_.TakeLines(),
              Logged(Error("rcv post_data = " + without_id),
                     Info("##### GetStreamingSettings Parse() params={\"Id\":1}}}"),
                     Error("error: json_parser() key [ID] does not appear\n"),
                     Error("requested error ret=-1, params=\"Params\":{\"Id\":1}}}")));
}

TEST_F(StreamingServersTest, RtspChangesOnlyThePassword) {
  FakeDaemon daemon;
  Post(Body("SetStreamingServerSettingsRTSP", R"("ID":1,"Alias":"Van","Password":"secret")"));
  EXPECT_THAT(Post(Body(kGet, R"("ID":1)")),
              Replied(DataJson(kGet, R"("Alias":"Van","Type":"RTSP","Rtsp":{"DstPort":0,)"
                                     R"("StreamId":"0","Username":"0","Password":"secret"})")));
}

TEST_F(StreamingServersTest, RtpReadsBackTheAddressThatItsCommandDoesNotSet) {
  FakeDaemon daemon;
  WriteFile(Path("1"), ServerFile({{"rtp_dst_address", "10.9.9.9"}}));
  Post(Body(CommandOf(Transports()[4]), Params(Transports()[4])));
  EXPECT_THAT(Post(Body(kGet, R"("ID":1)")),
              Replied(DataJson(kGet, R"("Alias":"Van","Type":"RTP","Rtp":{"DstAddress":"10.9.9.9",)"
                                     R"("DstPort":6002,"Smpte2022Fec":1,"FecMatrixL":10,)"
                                     R"("FecMatrixD":5})")));
}

TEST_F(StreamingServersTest, AnAliasInTheFileReadsBackUpToItsBlank) {
  const RepliesMayBreak may_break;
  WriteFile(Path("1"), "str_alias\tStudio One\ntype\t1\n");
  EXPECT_THAT(Post(Body(kGet, R"("ID":1)")),
              Replied(DataJson(kGet, R"("Alias":"Studio","Type":"TCP","Tcp":{"DstAddress":"",)"
                                     R"("DstPort":})")));
}

TEST_F(StreamingServersTest, AnAliasThatFillsItsLineReadsBackAsFarAsOneLineReaches) {
  FakeDaemon daemon;
  Post(Body("SetStreamingServerSettingsRTSP",
            "\"ID\":1,\"Alias\":\"" + std::string(255, 'v') + "\",\"Password\":\"\""));
  // The key and its tab take 10 of the 255 characters of a line.
  EXPECT_THAT(Post(Body(kGet, R"("ID":1)")),
              Replied(DataJson(kGet, "\"Alias\":\"" + std::string(245, 'v') +
                                         R"(","Type":"RTSP","Rtsp":{"DstPort":0,"StreamId":"0",)"
                                         R"("Username":"0","Password":""})")));
}

}  // namespace
