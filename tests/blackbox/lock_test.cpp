// Advisory locks that others hold for ever: on every file that the handler uses, and on the
// daemons' ends of its connections.
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "harness/camera_test.h"

namespace {

using namespace harness;

/// Holds the exclusive advisory lock on a file.
class HeldLock {
 public:
  explicit HeldLock(const std::string& path) : file_(open(path.c_str(), O_RDWR | O_CLOEXEC)) {
    if (flock(file_, LOCK_EX | LOCK_NB) != 0) {
      throw std::system_error(errno, std::generic_category(), "lock on " + path);
    }
  }
  ~HeldLock() { close(file_); }
  HeldLock(const HeldLock&) = delete;
  HeldLock& operator=(const HeldLock&) = delete;

 private:
  int file_;
};

class LockTest : public CameraTest {
 protected:
  static void ExpectAnswer(const std::string& body, const std::string& json) {
    SCOPED_TRACE(body);
    const Outcome outcome = Post(body);
    EXPECT_THAT(outcome, Replied(json));
    EXPECT_LT(outcome.elapsed.count(), TimeMargin());
  }
};

TEST_F(LockTest, OnFilesHinderNoReaderAndNoWriter) {
  WriteFile(kLogLevelFile, "cmd=1\n");
  StatusBlock().SetByte(516, 3).Store();
  WriteFile("/var/tmp/lighttpd/ntp", "address\told\ntc_sync\t0\n");
  const HeldLock threshold(kLogLevelFile);
  const HeldLock session(kSessionFile);
  const HeldLock status(kMemoryFile);
  const HeldLock settings("/var/tmp/lighttpd/ntp");
  const FakeDaemon daemon;
  ExpectAnswer(Body("SetNTPServer", R"("Address":"new")"), ResultJson("SetNTPServer"));
  ExpectAnswer(Body("GetNTPStatus"),
               DataJson("GetNTPStatus", R"("Address":"new","TcSync":"Off","Status":"Master")"));
  ExpectAnswer(Body("SessionRenewal", R"("Update":1)"), ResultJson("SessionRenewal"));
  ExpectAnswer(Body("GetSystemInfo"),
               DataJson("GetSystemInfo", R"("Model":"RV130","Destination":"JP",)"
                                         R"("ApiVersion":"1.08.0","Serial":"")"));
}

// The handler locks its own end.
TEST_F(LockTest, OnADaemonsEndOfAConnectionDoesNotHinderTheExchange) {
  const Script locking = Script().Lock().AwaitMessage().Send(ReplyMessage(Bytes({0})));
  const FakeDaemon control(locking);
  const FakeDaemon streaming(kStreamingSocket, locking);
  for (int attempt = 0; attempt < 10; ++attempt) {
    ExpectAnswer(Body("MonitorStart"), ResultJson("MonitorStart"));
    ExpectAnswer(Body("SetCldstrmLogout"), ResultJson("SetCldstrmLogout"));
  }
}

}  // namespace
