#include <sys/syscall.h>

#include <cerrno>
#include <string>

#include "harness/camera_test.h"

// Requests for which the operating system refuses a resource.

namespace {

using namespace harness;
using testing::ElementsAre;

class RefusalTest : public CameraTest {};

class DescriptorTest : public RefusalTest {
 protected:
  void SetUp() override {
    if (IsEmulated()) {
      GTEST_SKIP() << "an emulator needs descriptors of its own";
    }
  }
};

TEST_F(DescriptorTest, WithoutOneForTheDaemonTheRequestEnds) {
  const std::string body = Body("MonitorStart");
  EXPECT_THAT(RunHandler(Request(body).LimitDescriptors(4)), EndedSilently(1));  // one for the log
  EXPECT_THAT(log_.Lines(),
              Logged(Error("rcv post_data = " + body), Error("Can't create a socket")));
}

TEST_F(DescriptorTest, WithoutOneForTheRenewalNoticeTheRequestEnds) {
  EXPECT_THAT(RunHandler(Request(Body("SetCurrentStreamingServerID")).LimitDescriptors(4)),
              EndedSilently(1));
  const LogLines lines = log_.Lines();
  ASSERT_FALSE(lines.empty());
  EXPECT_EQ(lines.back(), Error("cmd:6363: Can't create a socket"));
}

TEST_F(RefusalTest, WithoutTheLockNoMessageIsSentAndTheReplyIsStillRead) {
  FakeDaemon daemon(Script().Send(ReplyMessage(Bytes({1}))));
  const std::string body = Body("MonitorStart");
  EXPECT_THAT(RunHandler(Request(body).Refuse(SYS_flock, ENOLCK)),
              Replied(ResultJson("MonitorStart", "RequestedError")));
  EXPECT_THAT(daemon.Received(), ElementsAre(""));
}

}  // namespace
