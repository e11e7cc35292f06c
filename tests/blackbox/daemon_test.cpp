#include <chrono>
#include <string>

#include "harness/camera_test.h"

// The exchange with the control daemon when nothing fails.

namespace {

using namespace harness;
using namespace std::chrono_literals;
using testing::ElementsAre;

const char kSuccess[] = "{\"Response\":{\"Requested\":\"MonitorStart\",\"Result\":\"Success\"}}";
const char kDisableError[] =
    "{\"Response\":{\"Requested\":\"MonitorStart\",\"Result\":\"DisableError\"}}";

class ExchangeTest : public CameraTest {
 protected:
  const std::string body_ = Body("MonitorStart");
};

TEST_F(ExchangeTest, SendsOneMessageOnOneConnection) {
  FakeDaemon daemon(Answer(ReplyMessage(Bytes({0}))));
  const Outcome start = Post(Body("MonitorStart"));
  EXPECT_THAT(start, Replied(kSuccess));
  const Outcome stop = Post(Body("MonitorStop"));
  EXPECT_THAT(stop,
              Replied("{\"Response\":{\"Requested\":\"MonitorStop\",\"Result\":\"Success\"}}"));
  const auto start_pid = static_cast<std::uint32_t>(start.pid);
  const auto stop_pid = static_cast<std::uint32_t>(stop.pid);
  EXPECT_THAT(daemon.Received(), ElementsAre(Bytes({0, 5, 0, 0, 5, 0, 0, 0}) + Le32(start_pid),
                                             Bytes({0, 5, 0, 0, 6, 0, 0, 0}) + Le32(stop_pid)));
}

TEST_F(ExchangeTest, DoesNotWaitForTheDaemonToClose) {
  const FakeDaemon daemon(Answer(ReplyMessage(Bytes({0}))));
  EXPECT_LT(Post(body_).elapsed.count(), TimeMargin());
}

TEST_F(ExchangeTest, AnAnswerShortBeforeTheTimeOutIsTaken) {
  const FakeDaemon daemon(Script().AwaitMessage().Pause(4000ms).Send(ReplyMessage(Bytes({2}))));
  EXPECT_THAT(Post(body_), Replied(kDisableError));
}

}  // namespace
