#include <sys/socket.h>

#include <chrono>
#include <string>

#include "harness/camera_test.h"
#include "harness/unix_socket.h"

// The exchange with the control daemon, and every way in which a daemon can fail in it.

namespace {

using namespace harness;
using namespace std::chrono_literals;
using testing::ElementsAre;

constexpr double kTimeOut = 5;        // seconds
constexpr double kTimeOutMargin = 3;  // starting, ending, a busy machine

const char kSuccess[] = "{\"Response\":{\"Requested\":\"MonitorStart\",\"Result\":\"Success\"}}";
const char kRequestedError[] =
    "{\"Response\":{\"Requested\":\"MonitorStart\",\"Result\":\"RequestedError\"}}";
const char kDisableError[] =
    "{\"Response\":{\"Requested\":\"MonitorStart\",\"Result\":\"DisableError\"}}";

class ExchangeTest : public CameraTest {
 protected:
  void ExpectConnectFailure(const Outcome& outcome) {
    EXPECT_THAT(outcome, EndedSilently(1));
    EXPECT_THAT(log_.TakeLines(),
                Logged(Error("rcv post_data = " + body_), Error("cannot connect sockname.")));
  }

  static void ExpectTimeOut(const Outcome& outcome) {
    EXPECT_GE(outcome.elapsed.count(), kTimeOut - 0.1);
    EXPECT_LT(outcome.elapsed.count(), kTimeOut + kTimeOutMargin);
  }

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
  EXPECT_LT(Post(body_).elapsed.count(), 2);
}

TEST_F(ExchangeTest, AnAbsentDaemonIsFatal) { ExpectConnectFailure(Post(body_)); }

TEST_F(ExchangeTest, ADaemonThatHasDiedIsFatal) {
  LeaveDeadSocket();
  ExpectConnectFailure(Post(body_));
}

TEST_F(ExchangeTest, AFileInPlaceOfTheSocketIsFatal) {
  WriteFile(kControlSocket, "");
  ExpectConnectFailure(Post(body_));
}

TEST_F(ExchangeTest, ASocketOfAnotherTypeIsFatal) {
  const int socket = BoundSocket(kControlSocket, SOCK_DGRAM);
  ExpectConnectFailure(Post(body_));
  close(socket);
}

TEST_F(ExchangeTest, ABusyDaemonIsFatalAfterTheTimeOut) {
  const BusyDaemon daemon;
  const Outcome outcome = Post(body_);
  ExpectConnectFailure(outcome);
  ExpectTimeOut(outcome);
}

TEST_F(ExchangeTest, ADaemonThatClosesWithoutAnAnswerCountsAsSuccess) {
  const FakeDaemon daemon(CloseAfterReading());
  const Outcome outcome = Post(body_);
  EXPECT_THAT(outcome, Replied(kSuccess));
  EXPECT_LT(outcome.elapsed.count(), 2);
}

// The daemon's closing and the handler's writing race: both ends of the race must be clean.
TEST_F(ExchangeTest, ADaemonThatClosesBeforeReadingNeverKillsTheHandler) {
  const FakeDaemon daemon(kControlSocket, CloseBeforeReading());
  for (int attempt = 0; attempt < 30; ++attempt) {
    const Outcome outcome = Post(body_);
    EXPECT_THAT(outcome, testing::AnyOf(Replied(kSuccess), EndedSilently(1)));
    const LogLines lines = log_.TakeLines();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0], Error("rcv post_data = " + body_));
    EXPECT_EQ(lines[1].priority, 3);
    if (outcome.exit_status == 0) {
      EXPECT_EQ(lines[1].text, std::string("send res_str = ") + kSuccess);
    }
  }
}

TEST_F(ExchangeTest, ADaemonThatNeverAnswersCountsAsSuccessAfterTheTimeOut) {
  FakeDaemon daemon(kControlSocket, Silent());
  const Outcome outcome = Post(body_);
  EXPECT_THAT(outcome, Replied(kSuccess));
  ExpectTimeOut(outcome);
  EXPECT_THAT(daemon.Received(), ElementsAre(Message(5, 0, 5, outcome.pid)));
}

TEST_F(ExchangeTest, AnAnswerShortBeforeTheTimeOutIsTaken) {
  const FakeDaemon daemon(Script().AwaitMessage().Pause(4000ms).Send(ReplyMessage(Bytes({2}))));
  EXPECT_THAT(Post(body_), Replied(kDisableError));
}

TEST_F(ExchangeTest, AHeaderWhosePayloadNeverComesCountsAsSuccessAfterTheTimeOut) {
  const FakeDaemon daemon(Answer(ReplyHeader(4)));
  const Outcome outcome = Post(body_);
  EXPECT_THAT(outcome, Replied(kSuccess));
  ExpectTimeOut(outcome);
}

TEST_F(ExchangeTest, AnAnswerMayArriveInSingleBytes) {
  const FakeDaemon daemon(AnswerInPieces(ReplyMessage(Bytes({1, 7, 7, 7})), 1, 20ms));
  EXPECT_THAT(Post(body_), Replied(kRequestedError));
}

struct AnswerRow {
  const char* description;
  std::string answer;
  const char* json;
};

TEST_F(ExchangeTest, AnswersThatEndEarlyReadAsZero) {
  const AnswerRow kRows[] = {
      {"a header of one byte", Bytes({9}), kSuccess},
      {"a header that announces nothing", ReplyHeader(0), kSuccess},
      {"half a header, which announces a payload", Bytes({0, 0, 1, 0}), kSuccess},
      {"a header without its last byte", ReplyHeader(1).substr(0, 11), kSuccess},
      {"a header without its payload", ReplyHeader(1), kSuccess},
      {"one payload byte of five", ReplyHeader(5) + Bytes({1}), kRequestedError},
      {"one payload byte of 65535", ReplyHeader(65535) + Bytes({2}), kDisableError},
  };
  FakeDaemon daemon;
  for (const AnswerRow& row : kRows) {
    SCOPED_TRACE(row.description);
    daemon.Next(AnswerAndClose(row.answer));
    const Outcome outcome = Post(body_);
    EXPECT_THAT(outcome, Replied(row.json));
    EXPECT_LT(outcome.elapsed.count(), 2);
  }
}

TEST_F(ExchangeTest, WhatIsNotAnnouncedIsIgnored) {
  const AnswerRow kRows[] = {
      {"bytes behind a payload of one byte", ReplyHeader(1) + Bytes({2, 1, 1, 1}), kDisableError},
      {"bytes behind an empty payload", ReplyHeader(0) + Bytes({2, 2}), kSuccess},
      {"the longest payload", ReplyMessage(Bytes({1}) + std::string(65534, '\x02')),
       kRequestedError},
      {"every other header byte set",
       Bytes({255, 255, 1, 0, 255, 255, 255, 255, 255, 255, 255, 255, 1}), kRequestedError},
  };
  FakeDaemon daemon;
  for (const AnswerRow& row : kRows) {
    SCOPED_TRACE(row.description);
    daemon.Next(Answer(row.answer));
    EXPECT_THAT(Post(body_), Replied(row.json));
  }
}

}  // namespace
