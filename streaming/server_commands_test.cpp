// No request reaches the class for TCP, and no request can contain a space. The black-box tests
// cover the rest.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "core/cmd/streaming.h"
#include "harness/fake_daemon.h"
#include "harness/files.h"
#include "harness/messages.h"
#include "harness/system_log.h"
#include "streaming/streaming_settings.h"

namespace {

using harness::Error;
using harness::Info;
using harness::Logged;
using testing::ElementsAre;

class ServerCommandsTest : public testing::Test {
 protected:
  harness::SystemLog log_;
};

TEST_F(ServerCommandsTest, TcpStoresItsAddressAndPortInTheUdpKeys) {
  harness::FakeDaemon daemon;
  harness::WriteFile("/var/tmp/lighttpd/streaming_server2",
                     "str_alias\tOld\ntype\t0\nudp_dst_address\t10.0.0.1\nudp_dst_port\t5000\n"
                     "udp_pcr_jitter\t9\ntcp_dst_address\t10.0.0.2\ntcp_dst_port\t7000\n");
  SetStreamingServerSettingsTCP command;
  const std::string params = R"({"ID":2,"Alias":"Van","DstAddress":"10.0.0.5","DstPort":6000}}})";
  ASSERT_EQ(command.Parse(params.c_str()), 0);
  command.Transmit();

  EXPECT_EQ(harness::ReadFile("/var/tmp/lighttpd/streaming_server2"),
            "str_alias\tVan\ntype\t1\nudp_dst_address\t10.0.0.5\nudp_dst_port\t6000\n"
            "udp_pcr_jitter\t9\ntcp_dst_address\t10.0.0.2\ntcp_dst_port\t7000\n"
            "zixi_dst_address\t\nzixi_dst_port\t\nzixi_stream_id\t\nzixi_username\t\n"
            "zixi_password\t\nzixi_latency\t\nzixi_adaptive_bitrate\t\nrtsp_dst_port\t\n"
            "rtsp_stream_id\t\nrtsp_username\t\nrtsp_password\t\nrtmp_destination_url\t\n"
            "rtmp_stream_key\t\nrtp_dst_address\t\nrtp_dst_port\t\nrtp_smpte2022_fec\t\n"
            "rtp_fec_matrix_l\t\nrtp_fec_matrix_d\t\n");
  EXPECT_THAT(daemon.Received(), ElementsAre(harness::RenewalNotice()));
  EXPECT_THAT(log_.Lines(),
              Logged(Info("##### SetStreamingServerSettingsTCP Parse() params=" + params),
                     Info("##### RenewSetting socket_send_msg() renew_reconnect 0")));
}

TEST_F(ServerCommandsTest, TcpNeedsAllItsParameters) {
  const struct {
    const char* params;
    const char* missing;
  } rows[] = {
      {R"({"Alias":"Van","DstAddress":"10.0.0.5","DstPort":6000})", "ID"},
      {R"({"ID":2,"DstAddress":"10.0.0.5","DstPort":6000})", "Alias"},
      {R"({"ID":2,"Alias":"Van","DstPort":6000})", "DstAddress"},
      {R"({"ID":2,"Alias":"Van","DstAddress":"10.0.0.5"})", "DstPort"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.missing);
    SetStreamingServerSettingsTCP command;
    EXPECT_EQ(command.Parse(row.params), -1);
    EXPECT_THAT(log_.TakeLines(), Logged(Error(std::string("error: json_parser() key [") +
                                               row.missing + "] does not appear\n")));
  }
}

TEST_F(ServerCommandsTest, AnAliasWithABlankIsStoredWholeAndReadUpToTheBlank) {
  harness::FakeDaemon daemon;
  SetStreamingServerSettingsRTSP command;
  ASSERT_EQ(command.Parse(R"({"ID":1,"Alias":"Studio One","Password":"secret"})"), 0);
  command.Transmit();
  EXPECT_EQ(harness::ReadFile("/var/tmp/lighttpd/streaming_server1").substr(0, 28),
            "str_alias\tStudio One\ntype\t2\n");
  _STREAMING_SERVER_SETTING server;
  ReadStreamingServerSetting("/var/tmp/lighttpd/streaming_server1", &server);
  EXPECT_STREQ(server.str_alias, "Studio");
}

}  // namespace
