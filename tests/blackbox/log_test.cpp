#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <functional>
#include <future>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "harness/camera_test.h"
#include "harness/unix_socket.h"

// Which diagnostics reach the system log, with which priority, and what a line may contain.

namespace {

using namespace harness;

// One request for each level that the program uses: level 1 and 2 in a session's renewal, level 4
// in the system information, level 7 in a heartbeat.
class LogTest : public CameraTest {
 protected:
  /// The highest level that is emitted, determined by requests that log at each level.
  int HighestLevel() {
    Post(Body("SessionRenewal", "\"Update\":1"));
    Post(Body("GetSystemInfo"));
    Post(BodyWithoutSession("HeartbeatConfirmation"));
    const LogLines lines = log_.TakeLines();
    if (lines.size() == 2) {
      return 1;
    }
    EXPECT_GE(lines.size(), 3U);
    return lines.size() == 3 ? 3 : lines.size() == 5 ? 4 : lines.size() == 6 ? 7 : -1;
  }
};

TEST_F(LogTest, WithoutAControlFileLevels1To3AreEmitted) {
  const std::string renewal = Body("SessionRenewal", "\"Update\":1");
  Post(renewal);
  Post(Body("GetSystemInfo"));
  Post(BodyWithoutSession("HeartbeatConfirmation"));
  EXPECT_THAT(log_.Lines(),
              Logged(Error("rcv post_data = " + renewal),
                     Info("##### SessionRenewal Parse() params={\"Update\":1}}}"),
                     Error("send res_str = {\"Response\":{\"Requested\":\"SessionRenewal\","
                           "\"Result\":\"Success\"}}")));
}

TEST_F(LogTest, EachLevelHasItsPriority) {
  WriteFile(kLogLevelFile, "cmd=7\n");
  const std::string renewal = Body("SessionRenewal", "\"Update\":1");
  const std::string info = Body("GetSystemInfo");
  Post(renewal);
  Post(info);
  Post(BodyWithoutSession("HeartbeatConfirmation"));
  EXPECT_THAT(
      log_.Lines(),
      Logged(Error("rcv post_data = " + renewal),
             Info("##### SessionRenewal Parse() params={\"Update\":1}}}"),
             Error("send res_str = {\"Response\":{\"Requested\":\"SessionRenewal\","
                   "\"Result\":\"Success\"}}"),
             Info("rcv post_data = " + info),
             Info("send res_str = {\"Response\":{\"Requested\":\"GetSystemInfo\","
                  "\"Result\":\"Success\",\"Data\":{\"Model\":\"RV130/140\",\"Destination\":\"JP\","
                  "\"ApiVersion\":\"1.08.0\",\"Serial\":\"\"}}}"),
             Debug("send res_str = {\"Response\":{\"Requested\":\"HeartbeatConfirmation\","
                   "\"Result\":\"Success\",\"Data\":{\"VideoOutput\":\"On\","
                   "\"StudioTally\":\"Off\"}}}")));
}

TEST_F(LogTest, TheControlFileSetsTheThreshold) {
  struct Row {
    const char* description;
    const char* content;
    int highest_level;
  };
  constexpr Row kRows[] = {
      {"level 1: errors and the traces that always show", "cmd=1\n", 1},
      {"level 2", "cmd=2\n", 3},
      {"level 3", "cmd=3\n", 3},
      {"level 4", "cmd=4\n", 4},
      {"level 6", "cmd=6\n", 4},
      {"level 7", "cmd=7\n", 7},
      {"level 100", "cmd=100\n", 7},
      {"zero leaves the threshold", "cmd=0\n", 3},
      {"a negative number leaves the threshold", "cmd=-1\n", 3},
      {"no number leaves the threshold", "cmd=all\n", 3},
      {"no value leaves the threshold", "cmd=\n", 3},
      {"no '=' leaves the threshold", "cmd\n", 3},
      {"no '=' but a number leaves the threshold", "cmd 7\n", 3},
      {"an empty file leaves the threshold", "", 3},
      {"no line end", "cmd=7", 7},
      {"a carriage return", "cmd=7\r\n", 7},
      {"a blank before the number", "cmd= 7\n", 7},
      {"a blank before '='", "cmd =7\n", 7},
      {"a sign", "cmd=+7\n", 7},
      {"text after the number", "cmd=1x\n", 1},
      {"the first '=' counts", "cmd=1=7\n", 1},
      {"more letters after cmd", "cmdlevel=7\n", 7},
      {"cmd not at the line's start", " cmd=7\n", 3},
      {"another case", "CMD=7\n", 3},
      {"another key", "level=7\n", 3},
      {"the last of several lines wins", "cmd=7\ncmd=1\n", 1},
      {"a zero after it is ignored", "cmd=7\ncmd=0\n", 7},
      {"a line without '=' after it is ignored", "cmd=7\ncmd\n", 7},
      {"other lines around it", "# log\n\ncmd=7\nend\n", 7},
      {"a piece of 15 characters", "cmd=00000000007\n", 7},
      {"the 16th character begins a piece", "cmd=000000000007\n", 3},
      {"a piece may begin with cmd", "xxxxxxxxxxxxxxxcmd=7\n", 7},
      {"'=' in another piece than cmd", "cmdxxxxxxxxxxxx=7\n", 3},
      {"the number in another piece than cmd", "cmdxxxxxxxxxxx=7\n", 3},
      {"a number beyond 32 bits saturates", "cmd=4294967297\n", 7},
      {"a negative number beyond 32 bits saturates", "cmd=-4294967289\n", 3},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.description);
    WriteFile(kLogLevelFile, row.content);
    EXPECT_EQ(HighestLevel(), row.highest_level);
  }
}

TEST_F(LogTest, AFolderInPlaceOfTheControlFileCountsAsMissing) {
  std::filesystem::create_directory(kLogLevelFile);
  EXPECT_EQ(HighestLevel(), 3);
}

TEST_F(LogTest, ErrorsAreEmittedAtEveryThreshold) {
  WriteFile(kLogLevelFile, "cmd=1\n");
  Post(Body("NoSuchCommand"));
  EXPECT_THAT(log_.Lines(), Logged(Error("command error = NoSuchCommand")));
}

TEST_F(LogTest, PercentSignsOfLoggedDataShowAsTheyWere) {
  const std::string command = "%s%n%d%%100%x%";
  Post(Body(command));
  EXPECT_THAT(log_.Lines(), Logged(Error("command error = " + command)));
}

TEST_F(LogTest, PercentSignsOfATraceShowAsTheyWere) {
  const std::string body = Body("SessionRenewal", "\"Update\":1,\"Rate\":\"50%s%n\"");
  Post(body);
  EXPECT_THAT(
      log_.Lines(),
      Logged(Error("rcv post_data = " + body),
             Info("##### SessionRenewal Parse() params={\"Update\":1,\"Rate\":\"50%s%n\"}}}"),
             Error("send res_str = {\"Response\":{\"Requested\":\"SessionRenewal\","
                   "\"Result\":\"Success\"}}")));
}

TEST_F(LogTest, MessagesAreTruncatedTo4999Bytes) {
  const std::string body = Body("SessionRenewal", "\"Update\":1,\"F\":\"" + std::string(9000, 'f'));
  Post(body + "\"");
  const std::string params = "{\"Update\":1,\"F\":\"" + std::string(9000, 'f');
  EXPECT_THAT(log_.Lines(),
              Logged(Error(("rcv post_data = " + body).substr(0, 4999)),
                     Info(("##### SessionRenewal Parse() params=" + params).substr(0, 4999)),
                     Error("send res_str = {\"Response\":{\"Requested\":\"SessionRenewal\","
                           "\"Result\":\"Success\"}}")));
}

TEST_F(LogTest, AMessageOf4999BytesIsWhole) {
  const std::string name(4999 - 16, 'N');  // after "command error = "
  Post(Body(name));
  EXPECT_THAT(log_.Lines(), Logged(Error("command error = " + name)));
}

// Truncation comes first: a message full of percent signs still has 4,999 bytes.
TEST_F(LogTest, PercentSignsAreDoubledAfterTruncation) {
  Post(Body(std::string(6000, '%')));
  EXPECT_THAT(log_.Lines(), Logged(Error("command error = " + std::string(4999 - 16, '%'))));
}

// What a log daemon receives, byte by byte: no time stamp, for the daemon adds its local time.

TEST(LogMessageTest, IsADatagramWithFacilityPriorityAndName) {
  const int log = BoundSocket("/dev/log", SOCK_DGRAM);
  WriteSession(kSession);
  RunHandler(Request(Body("NoSuchCommand")));
  std::string datagram(100, '\0');
  const ssize_t length = recv(log, datagram.data(), datagram.size(), MSG_DONTWAIT);
  ASSERT_GT(length, 0);
  datagram.resize(static_cast<std::size_t>(length));
  EXPECT_EQ(datagram, "<11>camera_remote.cgi: command error = NoSuchCommand");
  EXPECT_EQ(recv(log, datagram.data(), datagram.size(), MSG_DONTWAIT), -1) << datagram;
  close(log);
}

TEST(LogMessageTest, EndsWithANulOverAStream) {
  FakeDaemon log("/dev/log");
  WriteSession(kSession);
  const std::string body = Body("SessionRenewal", "\"Update\":1");
  RunHandler(Request(body));
  const std::string nul(1, '\0');
  EXPECT_THAT(
      log.Received(),
      testing::ElementsAre("<11>camera_remote.cgi: rcv post_data = " + body + nul +
                           "<14>camera_remote.cgi: ##### SessionRenewal Parse() params="
                           "{\"Update\":1}}}" +
                           nul +
                           "<11>camera_remote.cgi: send res_str = {\"Response\":{\"Requested\":"
                           "\"SessionRenewal\",\"Result\":\"Success\"}}" +
                           nul));
}

/// The log daemon of busybox in a time zone nine hours ahead of UTC.
class BusyboxLog {
 public:
  BusyboxLog() : pid_(fork()) {
    if (pid_ == 0) {
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      setenv("TZ", "LOCAL-9", 1);
      execlp("busybox", "busybox", "syslogd", "-n", "-O", kFile, nullptr);
      _exit(127);
    }
    // Its own first line says that it is ready.
    Await("syslogd started");
  }
  ~BusyboxLog() {
    kill(pid_, SIGTERM);
    waitpid(pid_, nullptr, 0);
    std::filesystem::remove("/dev/log");
  }
  BusyboxLog(const BusyboxLog&) = delete;
  BusyboxLog& operator=(const BusyboxLog&) = delete;

  /// Waits for a line with this text and returns it; empty if none comes in time.
  static std::string Await(const std::string& text) {
    for (int attempt = 0; attempt < 1000; ++attempt) {
      std::istringstream lines(Exists(kFile) ? ReadFile(kFile) : "");
      for (std::string line; std::getline(lines, line);) {
        if (line.find(text) != std::string::npos && !lines.eof()) {
          return line;
        }
      }
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return "";
  }

  /// The local time that the daemon writes in front of a line.
  static std::string Stamp(std::time_t time) {
    const std::time_t local = time + 9 * 3600;
    char stamp[16];
    std::strftime(stamp, sizeof stamp, "%b %e %H:%M:%S", std::gmtime(&local));
    return stamp;
  }

 private:
  static constexpr char kFile[] = "/var/tmp/messages";
  pid_t pid_;
};

TEST(LogDaemonTest, BusyboxShowsItsLocalTime) {
  const BusyboxLog log;
  WriteSession(kSession);
  const std::time_t before = std::time(nullptr);
  RunHandler(Request(Body("NoSuchCommand")));
  const std::string line = BusyboxLog::Await("NoSuchCommand");
  const std::time_t after = std::time(nullptr);
  const std::string end = " user.err camera_remote.cgi: command error = NoSuchCommand";
  ASSERT_GT(line.size(), 16 + end.size()) << line;
  EXPECT_EQ(line.substr(line.size() - end.size()), end);
  std::vector<std::string> stamps;
  for (std::time_t time = before; time <= after; ++time) {
    stamps.push_back(BusyboxLog::Stamp(time));
  }
  EXPECT_THAT(stamps, testing::Contains(line.substr(0, 15)));
}

/// A system log that is missing or stalled affects no reply.
class LogFaultTest : public testing::Test {
 protected:
  LogFaultTest() { WriteSession(kSession); }
  ~LogFaultTest() override { std::filesystem::remove_all(kLog); }

  Outcome Renew() const { return RunHandler(Request(renewal_)); }

  static constexpr char kLog[] = "/dev/log";
  const std::string renewal_ = Body("SessionRenewal", "\"Update\":1");
  const std::string renewed_ = ResultJson("SessionRenewal");
};

TEST_F(LogFaultTest, RequestsWorkWithoutASystemLog) {
  const struct {
    const char* description;
    std::function<void()> put;
  } rows[] = {
      {"nothing", [] {}},
      {"a file", [] { WriteFile(kLog, ""); }},
      {"a folder", [] { std::filesystem::create_directory(kLog); }},
      {"the socket of a daemon that has died", [] { LeaveDeadSocket(kLog); }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.description);
    std::filesystem::remove_all(kLog);
    row.put();
    EXPECT_THAT(Renew(), Replied(renewed_));
    EXPECT_THAT(RunHandler(Request(Body("MonitorStart"))), EndedSilently(1));
  }
}

constexpr double kLogTimeout = 1;  // seconds

// The time-out is for all messages of a request together.
TEST_F(LogFaultTest, AStalledLogDelaysARequestOnlyOnce) {
  StalledLog log;
  WriteFile(kLogLevelFile, "cmd=7\n");
  const Outcome renewal = Renew();
  EXPECT_THAT(renewal, Replied(renewed_));
  EXPECT_GE(renewal.elapsed.count(), kLogTimeout - 0.1);
  EXPECT_LT(renewal.elapsed.count(), kLogTimeout + TimeMargin());
  EXPECT_THAT(log.Read(0), Logged());
}

TEST_F(LogFaultTest, AStalledLogDelaysARequestWithManyLinesOnlyOnce) {
  const FakeDaemon daemon(Answer(ReplyMessage(Bytes({0}))));
  const StalledLog log;
  WriteFile(kLogLevelFile, "cmd=7\n");
  const Outcome selection = RunHandler(Request(Body("SetWebFtp1UploadASelect", "\"block0\":1")));
  EXPECT_THAT(selection, Replied(ResultJson("SetWebFtp1UploadASelect")));
  EXPECT_LT(selection.elapsed.count(), kLogTimeout + TimeMargin());
}

TEST_F(LogFaultTest, AStalledLogDoesNotPreventAFatalEnd) {
  const StalledLog log;
  const Outcome outcome = RunHandler(Request(Body("MonitorStart")));
  EXPECT_THAT(outcome, EndedSilently(1));
  EXPECT_LT(outcome.elapsed.count(), kLogTimeout + TimeMargin());
}

TEST_F(LogFaultTest, ALogThatReadsAgainInTimeGetsEveryLine) {
  StalledLog log;
  auto lines = std::async(std::launch::async, [&log] {
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    return log.Read(3);
  });
  EXPECT_THAT(Renew(), Replied(renewed_));
  EXPECT_THAT(lines.get(), Logged(Error("rcv post_data = " + renewal_),
                                  Info("##### SessionRenewal Parse() params={\"Update\":1}}}"),
                                  Error("send res_str = " + renewed_)));
}

TEST_F(LogFaultTest, ARestartedLogGetsTheRest) {
  const FakeDaemon daemon(Script()
                              .AwaitMessage()
                              .Pause(std::chrono::milliseconds(1500))
                              .Send(ReplyMessage(Bytes({0}))));
  auto log = std::make_unique<SystemLog>();
  auto outcome =
      std::async(std::launch::async, [] { return RunHandler(Request(Body("MonitorStart"))); });
  while (log->Lines().empty()) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  log.reset();
  log = std::make_unique<SystemLog>();
  EXPECT_THAT(outcome.get(), Replied(ResultJson("MonitorStart")));
  EXPECT_THAT(log->Lines(), Logged(Error("send res_str = " + ResultJson("MonitorStart"))));
}

TEST_F(LogFaultTest, ARestartedStreamLogGetsTheRest) {
  const FakeDaemon daemon(Script()
                              .AwaitMessage()
                              .Pause(std::chrono::milliseconds(1500))
                              .Send(ReplyMessage(Bytes({0}))));
  const std::string first = "<11>camera_remote.cgi: rcv post_data = " + Body("MonitorStart") + '\0';
  const int before = BoundSocket(kLog, SOCK_STREAM);
  listen(before, 1);
  auto outcome =
      std::async(std::launch::async, [] { return RunHandler(Request(Body("MonitorStart"))); });
  const int connection = accept(before, nullptr, nullptr);
  std::string received(first.size(), '\0');
  recv(connection, received.data(), received.size(), MSG_WAITALL);
  EXPECT_EQ(received, first);
  close(connection);
  close(before);
  FakeDaemon after(kLog);
  EXPECT_THAT(outcome.get(), Replied(ResultJson("MonitorStart")));
  EXPECT_THAT(after.Received(), testing::ElementsAre("<11>camera_remote.cgi: send res_str = " +
                                                     ResultJson("MonitorStart") + '\0'));
}

TEST_F(LogFaultTest, AStreamLogThatNoLongerAcceptsDelaysARequestOnlyOnce) {
  const int log = BoundSocket(kLog, SOCK_STREAM);
  listen(log, 0);
  const int waiting = ConnectNonBlocking(kLog, SOCK_STREAM);
  const Outcome renewal = Renew();
  EXPECT_THAT(renewal, Replied(renewed_));
  EXPECT_GE(renewal.elapsed.count(), kLogTimeout - 0.1);
  EXPECT_LT(renewal.elapsed.count(), kLogTimeout + TimeMargin());
  close(waiting);
  close(log);
}

}  // namespace
