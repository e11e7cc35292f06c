// The position receiver.
#include <string>

#include "harness/camera_test.h"

namespace {

using namespace harness;
using testing::ElementsAre;

class GpsTest : public CameraTest {
 protected:
  /// The report for a reply of the control daemon.
  static void ExpectReported(const Script& answer, const std::string& antenna,
                             const std::string& location, const std::string& result = "Success") {
    FakeDaemon daemon(answer);
    EXPECT_THAT(
        Post(Body("GetGPSInfo")),
        Replied(DataJson("GetGPSInfo",
                         "\"AntennaLevel\":\"" + antenna + "\",\"Location\":\"" + location + "\"",
                         result)));
  }
};

/// The first bytes of a reply, then the antenna's field of 20 bytes.
std::string Antenna(const std::string& text, int result = 0) {
  return Bytes({result, 9, 9, 9}) + text + std::string(20 - text.size(), '\0');
}

TEST_F(GpsTest, AsksTheControlDaemonWithABareHeader) {
  FakeDaemon daemon(Answer(ReplyMessage(Antenna("Strong") + std::string("N35.4 E139.7\0", 13))));
  const std::string body = Body("GetGPSInfo");
  const std::string reply =
      DataJson("GetGPSInfo", R"("AntennaLevel":"Strong","Location":"N35.4 E139.7")");
  const Outcome outcome = Post(body);
  EXPECT_THAT(outcome, Replied(reply));
  EXPECT_THAT(daemon.Received(), ElementsAre(Message(6, 0, 29, outcome.pid)));
  EXPECT_THAT(log_.Lines(),
              Logged(Error("rcv post_data = " + body), Error("send res_str = " + reply)));
}

TEST_F(GpsTest, TextsEndAtTheirFieldOrAtWhatArrived) {
  const std::string twenty = "abcdefghijklmnopqrst";
  const std::string longer(5000, 'L');
  ExpectReported(Answer(ReplyMessage(Antenna(twenty) + "here")), twenty, "here");
  ExpectReported(Answer(ReplyMessage(Antenna("1") + longer)), "1", longer);
  ExpectReported(Answer(ReplyMessage(Antenna("1") + std::string("here\0there", 10))), "1", "here");
  ExpectReported(Answer(ReplyMessage(Antenna("1"))), "1", "");
  ExpectReported(Answer(ReplyMessage(Bytes({0, 0, 0, 0}) + "ab")), "ab", "");
  ExpectReported(Answer(ReplyMessage(Bytes({0, 0, 0}))), "", "");
  ExpectReported(Answer(ReplyMessage("")), "", "");
}

TEST_F(GpsTest, AReplyMayEndBeforeWhatItAnnounces) {
  ExpectReported(AnswerAndClose(ReplyHeader(100) + Antenna("1") + "he"), "1", "he");
  ExpectReported(AnswerAndClose(ReplyHeader(100)), "", "");
  ExpectReported(AnswerAndClose(ReplyHeader(100).substr(0, 11)), "", "");
  ExpectReported(CloseAfterReading(), "", "");
}

TEST_F(GpsTest, NoMoreIsReadThanAnnounced) {
  ExpectReported(Answer(ReplyHeader(26) + Antenna("1") + "here"), "1", "he");
}

TEST_F(GpsTest, AReplyMayArriveInPieces) {
  ExpectReported(
      AnswerInPieces(ReplyMessage(Antenna("1") + "here"), 7, std::chrono::milliseconds(1)), "1",
      "here");
}

TEST_F(GpsTest, ReportsTheResultOfTheDaemon) {
  ExpectReported(Answer(ReplyMessage(Antenna("1", 1) + "x")), "1", "x", "RequestedError");
  ExpectReported(Answer(ReplyMessage(Antenna("1", 2) + "x")), "1", "x", "DisableError");
  ExpectReported(Answer(ReplyMessage(Antenna("1", 3) + "x")), "1", "x", "Success");
}

TEST_F(GpsTest, WithoutTheDaemonThereIsNoReply) {
  EXPECT_THAT(Post(Body("GetGPSInfo")), EndedSilently(1));
}

/// Only the command's class is called GetGpsInfo.
TEST_F(GpsTest, TheCommandIsCalledGetGPSInfo) {
  EXPECT_THAT(Post(Body("GetGpsInfo")), Replied(ErrorJson("CommandError"), 1));
}

}  // namespace
