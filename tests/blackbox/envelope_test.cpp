#include <string>

#include "harness/camera_test.h"

// The reply's envelope: result words, data, length.

namespace {

using namespace harness;

class EnvelopeTest : public CameraTest {};

TEST_F(EnvelopeTest, TheDaemonsResultByteSelectsTheWord) {
  struct Row {
    int result;
    const char* json;
  };
  constexpr Row kRows[] = {
      {0, "{\"Response\":{\"Requested\":\"MonitorStart\",\"Result\":\"Success\"}}"},
      {1, "{\"Response\":{\"Requested\":\"MonitorStart\",\"Result\":\"RequestedError\"}}"},
      {2, "{\"Response\":{\"Requested\":\"MonitorStart\",\"Result\":\"DisableError\"}}"},
      {3, "{\"Response\":{\"Requested\":\"MonitorStart\",\"Result\":\"Success\"}}"},
      {127, "{\"Response\":{\"Requested\":\"MonitorStart\",\"Result\":\"Success\"}}"},
      {128, "{\"Response\":{\"Requested\":\"MonitorStart\",\"Result\":\"Success\"}}"},
      {255, "{\"Response\":{\"Requested\":\"MonitorStart\",\"Result\":\"Success\"}}"},
  };
  FakeDaemon daemon;
  const std::string body = Body("MonitorStart");
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.result);
    daemon.Next(Answer(ReplyMessage(Bytes({row.result}))));
    EXPECT_THAT(Post(body), Replied(row.json));
    EXPECT_THAT(log_.TakeLines(), Logged(Error("rcv post_data = " + body),
                                         Error(std::string("send res_str = ") + row.json)));
  }
}

TEST_F(EnvelopeTest, DataIsSentAlsoWithAnErrorResult) {
  const FakeDaemon daemon(Answer(ReplyMessage(Bytes({2, 1, 0, 1, 0}))));
  EXPECT_THAT(Post(Body("PageChange", "\"Page\":1")),
              Replied("{\"Response\":{\"Requested\":\"PageChange\",\"Result\":\"DisableError\","
                      "\"Data\":{\"AllowedPage\":{\"PlanningMetadata\":1,\"EditMetadata\":0,"
                      "\"ViewRemote\":1,\"CameraControl\":0,\"Setting\":0}}}}"));
}

TEST_F(EnvelopeTest, TheLengthCountsBytesOfTheJsonText) {
  StatusBlock().SetText(228, "\xc3\xa9\xe2\x82\xac").Store();  // five bytes, two characters
  const Outcome outcome = Post(Body("GetSystemInfo"));
  EXPECT_THAT(outcome.output, testing::HasSubstr("\nContent-Length:148\n\n"));
  EXPECT_THAT(outcome.output, testing::EndsWith("\"Serial\":\"\xc3\xa9\xe2\x82\xac\"}}}"));
}

TEST_F(EnvelopeTest, TheAliasIsEchoedAsItWasRequested) {
  const FakeDaemon daemon(Answer(ReplyMessage(Bytes({0}))));
  EXPECT_THAT(Post(BodyWithoutSession("SetStudioTallyWithoutSession")),
              Replied("{\"Response\":{\"Requested\":\"SetStudioTallyWithoutSession\","
                      "\"Result\":\"Success\"}}"));
}

}  // namespace
