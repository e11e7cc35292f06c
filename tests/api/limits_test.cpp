// Replies with the extreme values that the camera can report. They are recorded for the checks of
// the description of the API, which must allow all of them and nothing else.
#include <cstddef>
#include <fstream>
#include <string>
#include <vector>

#include "api/schemas.h"
#include "harness/camera_test.h"

namespace {

using namespace harness;

class LimitsTest : public CameraTest {};

TEST_F(LimitsTest, EveryResultOfEveryCommand) {
  for (const int result : {0, 1, 2, 3, 255}) {
    FakeDaemon control(kControlSocket, Answer(ReplyMessage(Bytes({result}))));
    FakeDaemon streaming(kStreamingSocket, Answer(ReplyMessage(Bytes({result}))));
    for (const std::string& command : CommandNames()) {
      EXPECT_EQ(Post(SampleBody(command)).output.find("Content-type"), 0U) << command;
    }
    EXPECT_GT(control.Received().size(), 30U);
    EXPECT_GT(streaming.Received().size(), 5U);
  }
}

TEST_F(LimitsTest, SignedNumbers) {
  for (const int byte : {0x80, 0x7F}) {
    StatusBlock block;
    block.Fill('x').SetBytes(382, byte == 0x80
                                      ? Bytes({0x80, 0, 0x80, 0, 0x80, 0, 0x80, 0})
                                      : Bytes({0x7F, 255, 0x7F, 255, 0x7F, 255, 0x7F, 255}));
    block.Store();
    FakeDaemon daemon(Answer(ReplyMessage(std::string(1, '\0') + std::string(37, char(byte)))));
    EXPECT_EQ(Post(Body("GetCamStatus")).exit_status, 0);
    EXPECT_EQ(Post(Body("PageChange", R"("Page":1)")).exit_status, 0);
    EXPECT_EQ(daemon.Received().size(), 2U);
  }
}

TEST_F(LimitsTest, TheLongestLocation) {
  FakeDaemon daemon(Answer(ReplyMessage(std::string(4, '\0') + std::string(65531, 'x'))));
  EXPECT_EQ(Post(Body("GetGPSInfo")).exit_status, 0);
  EXPECT_EQ(daemon.Received().size(), 1U);
}

TEST_F(LimitsTest, TheLongestClipList) {
  const std::string clips = Bytes({0, 0, 0, 15}) + std::string(15 * std::size_t{32}, '\0');
  FakeDaemon daemon(Answer(ReplyMessage(clips)));
  EXPECT_EQ(Post(Body("GetClipInfo", R"("Slot":"A","StartIndexNo":1,"ClipNum":32767)")).exit_status,
            0);
  EXPECT_EQ(daemon.Received().size(), 2185U);  // 15 clips at a time
}

TEST_F(LimitsTest, TheLongestTextsOfReturnAudio) {
  const std::string text(200, 'x');
  WriteFile("/var/tmp/lighttpd/ifb",
            "ifb_address\t" + text + "\nifb_mountpoint\t" + text + "\nifb_port\t5000\n");
  EXPECT_EQ(Post(Body("GetIFBSettings")).exit_status, 0);
}

TEST_F(LimitsTest, TheLongestTextsOfAStreamingServer) {
  const std::vector<std::string> texts = {
      "str_alias",      "udp_dst_address",      "tcp_dst_address", "zixi_dst_address",
      "zixi_stream_id", "zixi_password",        "rtsp_stream_id",  "rtsp_username",
      "rtsp_password",  "rtmp_destination_url", "rtmp_stream_key", "rtp_dst_address"};
  const std::vector<std::string> numbers = {
      "udp_dst_port",      "udp_pcr_jitter",        "tcp_dst_port",    "zixi_dst_port",
      "zixi_latency",      "zixi_adaptive_bitrate", "rtsp_dst_port",   "rtp_dst_port",
      "rtp_smpte2022_fec", "rtp_fec_matrix_l",      "rtp_fec_matrix_d"};
  for (int type = 0; type <= 5; ++type) {
    std::string file = "type\t" + std::to_string(type) + "\n";
    for (const std::string& key : texts) {
      file += key + "\t" + std::string(254 - key.size(), 'x') + "\n";
    }
    for (const std::string& key : numbers) {
      file += key + "\t2147483647\n";
    }
    WriteFile("/var/tmp/lighttpd/streaming_server1", file);
    EXPECT_EQ(Post(Body("GetStreamingServerSettings", R"("ID":1)")).exit_status, 0);
  }
}

}  // namespace
