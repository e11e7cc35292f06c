// Advisory locks that others hold: on the settings folder, on every file that the handler uses, and
// on the daemons' ends of its connections.
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <functional>
#include <future>
#include <string>
#include <system_error>
#include <thread>

#include "harness/camera_test.h"

namespace {

using namespace harness;

/// Holds the exclusive advisory lock on a file.
class HeldLock {
 public:
  explicit HeldLock(const std::string& path) : file_(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
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

TEST_F(LockTest, LocksOnFilesBlockNoReaderAndNoWriter) {
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

TEST_F(LockTest, ALockOnTheFolderThatIsNeverReleasedDelaysByOneSecond) {
  struct Row {
    const char* what;
    std::string body;
    std::string reply;
  };
  const Row rows[] = {
      {"a command that stores", Body("SetNTPServer", R"("Address":"new")"),
       ResultJson("SetNTPServer")},
      {"a command that reads", Body("GetNTPStatus"),
       DataJson("GetNTPStatus", R"("Address":"new","TcSync":"Off","Status":"Master")")},
      {"a command that stores in two files",
       Body("SetCldstrmStreamInfoToStrmsrv", R"("EventID":0,"StrmsrvID":1)"),
       ResultJson("SetCldstrmStreamInfoToStrmsrv")},
      {"a renewal", Body("SessionRenewal", R"("Update":1)"), ResultJson("SessionRenewal")},
  };
  WriteFile("/var/tmp/lighttpd/ntp", "address\told\ntc_sync\t0\n");
  const FakeDaemon control;
  const FakeDaemon streaming(kStreamingSocket, Answer(ReplyMessage(std::string(324, '\0'))));
  const HeldLock folder(kSettingsFolder);
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    const Outcome outcome = Post(row.body);
    EXPECT_THAT(outcome, Replied(row.reply));
    EXPECT_GE(outcome.elapsed.count(), 1);
    EXPECT_LT(outcome.elapsed.count(), IsEmulated() ? 1 + TimeMargin() : 1.9);
  }
  EXPECT_EQ(ReadFile("/var/tmp/lighttpd/ntp"), "address\tnew\ntc_sync\t0\n");
}

TEST_F(LockTest, ALockOnTheFolderDoesNotDelayCommandsWithoutSettings) {
  const HeldLock folder(kSettingsFolder);
  const Outcome outcome = Post(Body("GetSystemInfo"));
  EXPECT_EQ(outcome.exit_status, 0);
  EXPECT_LT(outcome.elapsed.count(), IsEmulated() ? TimeMargin() : 0.9);
}

class HeldFolderTest : public LockTest {
 protected:
  /// Starts a request while the folder is locked, waits until it has logged `last`, calls
  /// `meanwhile` and releases the lock.
  Outcome PostDuring(const std::string& body, const LogLine& last,
                     const std::function<void()>& meanwhile) {
    std::future<Outcome> outcome;
    {
      const HeldLock folder(kSettingsFolder);
      outcome = std::async(std::launch::async, [&body] { return Post(body); });
      for (LogLines lines = log_.Lines(); lines.empty() || !(lines.back() == last);
           lines = log_.Lines()) {
        if (outcome.wait_for(std::chrono::milliseconds(1)) == std::future_status::ready) {
          ADD_FAILURE() << "ended without the lock";
          break;
        }
      }
      meanwhile();
    }
    return outcome.get();
  }
};

TEST_F(HeldFolderTest, AWriterKeepsWhatThePreviousOneStored) {
  WriteFile("/var/tmp/lighttpd/ntp", "address\told\ntc_sync\t1\n");
  const FakeDaemon control;
  EXPECT_THAT(PostDuring(Body("SetNTPServer", R"("Address":"new")"),
                         Info("##### SetNTPServer Parse() addr:new"),
                         [] { WriteFile("/var/tmp/lighttpd/ntp", "address\told\ntc_sync\t0\n"); }),
              Replied(ResultJson("SetNTPServer")));
  EXPECT_EQ(ReadFile("/var/tmp/lighttpd/ntp"), "address\tnew\ntc_sync\t0\n");
}

class EndedSessionTest : public HeldFolderTest {
 protected:
  /// `end` ends the session after the request has been accepted and before it is renewed.
  void ExpectNoRenewal(const std::function<void()>& end) {
    const std::string body = Body("SessionRenewal", R"("Update":1)");
    const std::string reply = ResultJson("SessionRenewal", "RequestedError");
    const LogLine parse = Info("##### SessionRenewal Parse() params={\"Update\":1}}}");
    EXPECT_THAT(PostDuring(body, parse, end), Replied(reply));
    EXPECT_THAT(log_.Lines(),
                Logged(Error("rcv post_data = " + body), parse, Error("send res_str = " + reply)));
  }
};

TEST_F(EndedSessionTest, IsNotCreatedAgain) {
  ExpectNoRenewal([] { std::filesystem::remove(kSessionFile); });
  EXPECT_FALSE(Exists(kSessionFile));
}

TEST_F(EndedSessionTest, DoesNotReplaceTheNewOne) {
  ExpectNoRenewal([] { WriteSession("new"); });
  EXPECT_EQ(ReadFile(kSessionFile), "ID\tnew\nlifetime\t1700000030\nsessiontime\t1700000000\n");
}

TEST_F(EndedSessionTest, IsNotWrittenIntoAFileWithoutAnId) {
  ExpectNoRenewal([] { WriteFile(kSessionFile, ""); });
  EXPECT_EQ(ReadFile(kSessionFile), "");
}

// The handler locks its own end.
TEST_F(LockTest, ALockOnTheDaemonsEndOfAConnectionDoesNotBlockTheExchange) {
  const Script locking = Script().Lock().AwaitMessage().Send(ReplyMessage(Bytes({0})));
  const FakeDaemon control(locking);
  const FakeDaemon streaming(kStreamingSocket, locking);
  for (int attempt = 0; attempt < 10; ++attempt) {
    ExpectAnswer(Body("MonitorStart"), ResultJson("MonitorStart"));
    ExpectAnswer(Body("SetCldstrmLogout"), ResultJson("SetCldstrmLogout"));
  }
}

}  // namespace
