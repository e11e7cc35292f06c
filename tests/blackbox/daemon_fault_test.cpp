// Every way in which a daemon can fail, in every kind of exchange: the reply, the exit status, the
// lines in the log and the bytes that the daemon got.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <future>
#include <stdexcept>
#include <string>
#include <vector>

#include "harness/camera_test.h"
#include "harness/unix_socket.h"

namespace {

using namespace harness;
using testing::ElementsAre;

/// The timers of the system may be late by an eighth.
double LongestWait(double time_out) { return time_out * 9 / 8 + TimeMargin(); }

/// A kind of exchange, by a command that makes it.
struct Exchange {
  const char* name;
  const char* socket;
  double time_out;  // seconds
  std::string body;
  LogLines steps;                             // logged before the daemon is connected
  LogLines no_connection;                     // logged when it cannot be
  std::function<std::string(pid_t)> message;  // what the daemon gets
  std::string unanswered;                     // the reply to the client without a payload byte
  std::string disabled;                       // and when the payload begins with a 2
};

const LogLine kCannotConnect = Error("cannot connect sockname.");

const std::vector<Exchange>& Exchanges() {
  static const std::vector<Exchange> exchanges = {
      {"Request",
       kControlSocket,
       5,
       Body("MonitorStart"),
       {},
       {kCannotConnect},
       [](pid_t pid) { return Message(5, 0, 5, pid); },
       ResultJson("MonitorStart"),
       ResultJson("MonitorStart", "DisableError")},
      {"Clips",
       kControlSocket,
       20,
       Body("GetClipInfo", R"("Slot":"A","StartIndexNo":1,"ClipNum":1)"),
       {},
       {kCannotConnect},
       [](pid_t pid) {
         return Message(6, 6, 11, pid, Bytes({0, 0, 0, 1, 0, 1}));
       },
       DataJson("GetClipInfo", R"("ClipNum":0,"ClipInfo":[])"),
       DataJson("GetClipInfo", R"("ClipNum":0,"ClipInfo":[])", "DisableError")},
      {"Cloud",
       kStreamingSocket,
       5,
       Body("SetCldstrmLogout"),
       {},
       {kCannotConnect},
       [](pid_t pid) { return CloudMessage(0, 100, pid); },
       ResultJson("SetCldstrmLogout"),
       ResultJson("SetCldstrmLogout", "DisableError")},
      {"Events",
       kStreamingSocket,
       5,
       Body("GetCldstrmEventList"),
       {},
       {kCannotConnect},
       [](pid_t pid) { return CloudMessage(0, 102, pid); },
       DataJson("GetCldstrmEventList", R"("EventNum":0)"),
       DataJson("GetCldstrmEventList", R"("EventNum":0)", "DisableError")},
      // Nothing may be stored that the daemon has not sent.
      {"StreamInfo",
       kStreamingSocket,
       5,
       Body("SetCldstrmStreamInfoToStrmsrv", R"("EventID":3,"StrmsrvID":2)"),
       {},
       {kCannotConnect},
       [](pid_t pid) {
         return CloudMessage(4, 105, pid, Bytes({3, 0, 0, 0}));
       },
       ResultJson("SetCldstrmStreamInfoToStrmsrv", "RequestedError"),
       ResultJson("SetCldstrmStreamInfoToStrmsrv", "DisableError")},
      // A notice has no answer: the handler reads nothing.
      {"Notice",
       kControlSocket,
       5,
       Body("SetPresetZoomPosition", R"("ID":"A","Position":1)"),
       {Info("##### RenewSetting socket_send_msg() renew_reconnect 0")},
       {Error("error: socket connect error.\n"), Error("cmd:6374: Can't connect SOCK_NAME")},
       [](pid_t) { return RenewalNotice(); },
       ResultJson("SetPresetZoomPosition"),
       ResultJson("SetPresetZoomPosition")},
  };
  return exchanges;
}

const Exchange& ExchangeCalled(const std::string& name) {
  for (const Exchange& exchange : Exchanges()) {
    if (exchange.name == name) {
      return exchange;
    }
  }
  throw std::logic_error("no exchange " + name);
}

class ExchangeFaultTest : public CameraTest {
 protected:
  explicit ExchangeFaultTest(const Exchange& exchange) : exchange_(exchange) {}

  Outcome Run() const {
    return RunHandler(Request(exchange_.body).Deadline(std::chrono::seconds(45)));
  }

  /// The log: the request, its steps, and these lines.
  LogLines Lines(const LogLines& last) const {
    LogLines lines = {Error("rcv post_data = " + exchange_.body)};
    lines.insert(lines.end(), exchange_.steps.begin(), exchange_.steps.end());
    lines.insert(lines.end(), last.begin(), last.end());
    return lines;
  }

  void ExpectNoConnection(const Outcome& outcome) {
    EXPECT_THAT(outcome, EndedSilently(1));
    EXPECT_EQ(log_.TakeLines(), Lines(exchange_.no_connection));
  }

  void ExpectReply(const Outcome& outcome, const std::string& json) {
    EXPECT_THAT(outcome, Replied(json));
    EXPECT_EQ(log_.TakeLines(), Lines({Error("send res_str = " + json)}));
  }

  /// The handler has waited for one time-out and not longer.
  void ExpectTimeOut(const Outcome& outcome) const {
    EXPECT_GE(outcome.elapsed.count(), exchange_.time_out - 0.1);
    EXPECT_LT(outcome.elapsed.count(), LongestWait(exchange_.time_out));
  }

  const Exchange& exchange_;
};

class DaemonFaultTest : public ExchangeFaultTest, public testing::WithParamInterface<const char*> {
 protected:
  DaemonFaultTest() : ExchangeFaultTest(ExchangeCalled(GetParam())) {}
};

INSTANTIATE_TEST_SUITE_P(In, DaemonFaultTest,
                         testing::Values("Request", "Clips", "Cloud", "Events", "StreamInfo",
                                         "Notice"),
                         [](const auto& test) { return test.param; });

TEST_P(DaemonFaultTest, AnAbsentDaemonIsFatal) {
  const struct {
    const char* description;
    std::function<int(const std::string&)> put;  // returns a descriptor to be closed
  } rows[] = {
      {"nothing", [](const std::string&) { return -1; }},
      {"the socket of a daemon that has died",
       [](const std::string& path) {
         LeaveDeadSocket(path);
         return -1;
       }},
      {"a socket that is not listened on",
       [](const std::string& path) { return BoundSocket(path, SOCK_STREAM); }},
      {"a socket of another type",
       [](const std::string& path) { return BoundSocket(path, SOCK_DGRAM); }},
      {"a file",
       [](const std::string& path) {
         unlink(path.c_str());
         WriteFile(path, "");
         return -1;
       }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.description);
    const int socket = row.put(exchange_.socket);
    const Outcome outcome = Run();
    ExpectNoConnection(outcome);
    EXPECT_LT(outcome.elapsed.count(), TimeMargin());
    close(socket);
  }
}

// The daemon may close before or after the handler writes: both orders must end cleanly.
TEST_P(DaemonFaultTest, ADaemonThatClosesBeforeReadingNeverKillsTheHandler) {
  const FakeDaemon daemon(exchange_.socket, CloseBeforeReading());
  for (int attempt = 0; attempt < 20; ++attempt) {
    const Outcome outcome = Run();
    if (outcome.exit_status == 0) {
      ExpectReply(outcome, exchange_.unanswered);
    } else {
      EXPECT_THAT(outcome, EndedSilently(1));
      EXPECT_EQ(log_.TakeLines(), Lines({Error("cannot send message.")}));
    }
  }
}

TEST_P(DaemonFaultTest, PartialAnswersAreUsed) {
  using std::chrono::milliseconds;
  enum Reply { kUnanswered, kDisabled };
  const std::string longest = Bytes({2}) + std::string(65534, '\0');
  const struct {
    const char* description;
    Script script;
    Reply reply;
  } rows[] = {
      {"no answer", CloseAfterReading(), kUnanswered},
      {"one byte of a header", AnswerAndClose(Bytes({0})), kUnanswered},
      {"half a header, which announces a payload", AnswerAndClose(Bytes({0, 0, 1, 0, 2, 2})),
       kUnanswered},
      {"a header without its last byte", AnswerAndClose(ReplyHeader(1).substr(0, 11)), kUnanswered},
      {"0 bytes announced", Answer(ReplyHeader(0)), kUnanswered},
      {"0 bytes announced, one sent", Answer(ReplyHeader(0) + Bytes({2})), kUnanswered},
      {"1 byte announced, none sent", AnswerAndClose(ReplyHeader(1)), kUnanswered},
      {"1 byte announced and sent", Answer(ReplyHeader(1) + Bytes({2})), kDisabled},
      {"1 byte announced, more sent", Answer(ReplyHeader(1) + Bytes({2, 1, 1, 1})), kDisabled},
      {"65535 bytes announced, none sent", AnswerAndClose(ReplyHeader(65535)), kUnanswered},
      {"65535 bytes announced, one sent", AnswerAndClose(ReplyHeader(65535) + Bytes({2})),
       kDisabled},
      {"65535 bytes announced, all but one sent",
       AnswerAndClose(ReplyHeader(65535) + longest.substr(0, 65534)), kDisabled},
      {"65535 bytes announced and sent", Answer(ReplyHeader(65535) + longest), kDisabled},
      {"65535 bytes announced, more sent", Answer(ReplyHeader(65535) + longest + longest),
       kDisabled},
      {"every other byte of the header set",
       Answer(Bytes({255, 255, 1, 0, 255, 255, 255, 255, 255, 255, 255, 255, 2})), kDisabled},
      {"single bytes", AnswerInPieces(ReplyMessage(Bytes({2, 0, 0, 0})), 1, milliseconds(5)),
       kDisabled},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.description);
    FakeDaemon daemon(exchange_.socket, row.script);
    const Outcome outcome = Run();
    ExpectReply(outcome, row.reply == kDisabled ? exchange_.disabled : exchange_.unanswered);
    EXPECT_LT(outcome.elapsed.count(), TimeMargin());
    EXPECT_THAT(daemon.Received(), ElementsAre(exchange_.message(outcome.pid)));
  }
}

/// A daemon that makes the handler wait for the time-out. Each row is a separate test, so that they
/// wait in parallel.
struct Stall {
  const char* name;
  const char* exchange;
  Script script;
  std::string Exchange::*reply;
};

/// One byte at a time, so slowly that twice the time-out would not be enough.
Script Trickle(const std::string& bytes, double time_out) {
  const std::chrono::duration<double> pause(2 * time_out / static_cast<double>(bytes.size()));
  return Script().SendInPieces(bytes, 1,
                               std::chrono::duration_cast<std::chrono::milliseconds>(pause));
}

const std::vector<Stall>& Stalls() {
  const std::string twelve = Bytes({2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  static const std::vector<Stall> stalls = {
      {"Silence", "Request", Silent(), &Exchange::unanswered},
      {"Silence", "Clips", Silent(), &Exchange::unanswered},
      {"Silence", "Cloud", Silent(), &Exchange::unanswered},
      {"Silence", "Events", Silent(), &Exchange::unanswered},
      {"Silence", "StreamInfo", Silent(), &Exchange::unanswered},
      {"HeaderOnly", "Request", Answer(ReplyHeader(4)), &Exchange::unanswered},
      {"HeaderOnly", "Cloud", Answer(ReplyHeader(65535)), &Exchange::unanswered},
      {"SlowHeader", "Request", Trickle(ReplyHeader(4), 5), &Exchange::unanswered},
      {"SlowHeader", "Cloud", Trickle(ReplyHeader(4), 5), &Exchange::unanswered},
      {"SlowPayload", "Request", Answer(ReplyHeader(12)).Then(Trickle(twelve, 5)),
       &Exchange::disabled},
      {"SlowPayload", "Clips", Answer(ReplyHeader(12)).Then(Trickle(twelve, 20)),
       &Exchange::disabled},
      {"SlowPayload", "Cloud", Answer(ReplyHeader(12)).Then(Trickle(twelve, 5)),
       &Exchange::disabled},
  };
  return stalls;
}

class DaemonStallTest : public ExchangeFaultTest, public testing::WithParamInterface<Stall> {
 protected:
  DaemonStallTest() : ExchangeFaultTest(ExchangeCalled(GetParam().exchange)) {}
};

INSTANTIATE_TEST_SUITE_P(In, DaemonStallTest, testing::ValuesIn(Stalls()), [](const auto& test) {
  return std::string(test.param.exchange) + test.param.name;
});

TEST_P(DaemonStallTest, EndsWithTheTimeOut) {
  FakeDaemon daemon(exchange_.socket, GetParam().script);
  const Outcome outcome = Run();
  ExpectReply(outcome, exchange_.*GetParam().reply);
  ExpectTimeOut(outcome);
  EXPECT_THAT(daemon.Received(), ElementsAre(exchange_.message(outcome.pid)));
}

class BusyDaemonTest : public DaemonFaultTest {};

// Both daemons, one-way messages, and the longer time-out of the clip list.
INSTANTIATE_TEST_SUITE_P(In, BusyDaemonTest, testing::Values("Request", "Clips", "Cloud", "Notice"),
                         [](const auto& test) { return test.param; });

TEST_P(BusyDaemonTest, IsFatalAfterTheTimeOut) {
  const BusyDaemon daemon(exchange_.socket);
  const Outcome outcome = Run();
  ExpectNoConnection(outcome);
  ExpectTimeOut(outcome);
}

class TimeOutTest : public CameraTest {};

TEST_F(TimeOutTest, AppliesToTheHeaderAndAgainToThePayload) {
  using std::chrono::milliseconds;
  const FakeDaemon daemon(Script()
                              .AwaitMessage()
                              .Pause(milliseconds(3500))
                              .Send(ReplyHeader(1))
                              .Pause(milliseconds(3500))
                              .Send(Bytes({2})));
  EXPECT_THAT(Post(Body("MonitorStart")), Replied(ResultJson("MonitorStart", "DisableError")));
}

TEST_F(TimeOutTest, EndsTheExchangesOfACommand) {
  FakeDaemon daemon(kStreamingSocket, Silent());
  daemon.Next(Answer(ReplyMessage(Bytes({2, 0, 0, 0}) + Le16(2))));
  const std::string body = Body("GetCldstrmEventList");
  const std::string json =
      DataJson("GetCldstrmEventList", R"("EventNum":2,"EventInfo":[{"Title":""},{"Title":""}])",
               "DisableError");
  const Outcome outcome = Post(body);
  EXPECT_THAT(outcome, Replied(json));
  EXPECT_GE(outcome.elapsed.count(), 5 - 0.1);
  EXPECT_LT(outcome.elapsed.count(), LongestWait(5));
  EXPECT_EQ(daemon.Received().size(), 2U) << "the list and the first event";
  EXPECT_THAT(log_.Lines(), Logged(Error("rcv post_data = " + body), Error("[0] No m_rcv_res!!"),
                                   Error("[1] No m_rcv_res!!"), Error("send res_str = " + json)));
}

// A broken daemon delays the request that talks to it, not those that use the same settings.
TEST_F(TimeOutTest, IsNotWaitedForWithTheSettingsLocked) {
  const BusyDaemon daemon;
  auto waiting = std::async(std::launch::async,
                            [] { return Post(Body("SetNTPServer", R"("Address":"ntp")")); });
  const auto waits = [&waiting] {
    return waiting.wait_for(std::chrono::milliseconds(10)) == std::future_status::timeout;
  };
  while (waits() && !Exists("/var/tmp/lighttpd/ntp")) {
  }
  const int folder = open(kSettingsFolder, O_RDONLY | O_CLOEXEC);
  int locked = -1;
  while (waits() && locked != 0) {
    locked = flock(folder, LOCK_EX | LOCK_NB);
  }
  EXPECT_EQ(locked, 0);
  EXPECT_TRUE(waits());
  close(folder);
  EXPECT_THAT(waiting.get(), EndedSilently(1));
}

}  // namespace
