#include <chrono>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include "harness/camera_test.h"

// The session check, and "SessionRenewal", which keeps a session alive.

namespace {

using namespace harness;

constexpr char kNoFileLine[] = "session error no file [/var/tmp/lighttpd/.session]";
constexpr char kSessionErrorReply[] = "{\"Response\":{\"Result\":\"SessionError\"}}";

std::string MismatchLine(const std::string& web, const std::string& server) {
  return "session error web:[" + web + "] server:[" + server + "]";
}

class SessionTest : public CameraTest {
 protected:
  static bool Accepts(const std::string& session) {
    const Outcome outcome = Post(BodyWithSession("GetSystemInfo", session));
    EXPECT_EQ(outcome.exit_status, 0);
    if (outcome.output == Reply(kSessionErrorReply)) {
      return false;
    }
    EXPECT_THAT(outcome.output, testing::HasSubstr("\"Result\":\"Success\""));
    return true;
  }
};

TEST_F(SessionTest, WithoutASessionFileThereIsNoSession) {
  std::filesystem::remove(kSessionFile);
  EXPECT_THAT(Post(Body("GetSystemInfo")), Replied(kSessionErrorReply));
  EXPECT_THAT(log_.Lines(), Logged(Error(kNoFileLine)));
}

TEST_F(SessionTest, FilesWithoutAnIdHoldNoSession) {
  struct Row {
    const char* description;
    const char* content;
  };
  constexpr Row kRows[] = {
      {"an empty file", ""},
      {"no ID line", "lifetime\t1700000030\nsessiontime\t1700000000\n"},
      {"an ID line without a value", "ID\t\nlifetime\t1\n"},
      {"an ID line of two letters", "ID"},
      {"an ID line of blanks", "ID \t \n"},
      {"a key in lower case", "id\t5f0c2a9e71d4\n"},
      {"a blank before the key", " ID\t5f0c2a9e71d4\n"},
      {"the first ID line decides, though it has no value", "ID\nID\t5f0c2a9e71d4\n"},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.description);
    WriteFile(kSessionFile, row.content);
    EXPECT_THAT(Post(Body("GetSystemInfo")), Replied(kSessionErrorReply));
    EXPECT_THAT(log_.TakeLines(), Logged(Error(kNoFileLine)));
  }
}

TEST_F(SessionTest, AFolderInPlaceOfTheFileCountsAsMissing) {
  std::filesystem::remove(kSessionFile);
  std::filesystem::create_directory(kSessionFile);
  EXPECT_THAT(Post(Body("GetSystemInfo")), Replied(kSessionErrorReply));
  EXPECT_THAT(log_.Lines(), Logged(Error(kNoFileLine)));
}

TEST_F(SessionTest, AnotherIdIsRefused) {
  EXPECT_THAT(Post(BodyWithSession("GetSystemInfo", "0000")), Replied(kSessionErrorReply));
  EXPECT_THAT(log_.Lines(), Logged(Error(MismatchLine("0000", kSession))));
}

TEST_F(SessionTest, IdsMustMatchExactly) {
  WriteSession("aBc1");
  EXPECT_TRUE(Accepts("aBc1"));
  for (const char* const other : {"abc1", "aBc", "aBc12", "aBc1x", "1"}) {
    SCOPED_TRACE(other);
    EXPECT_FALSE(Accepts(other));
  }
}

TEST_F(SessionTest, AnEmptyIdNeverPasses) {
  EXPECT_THAT(Post(BodyWithSession("GetSystemInfo", "")), Replied(kSessionErrorReply));
  EXPECT_THAT(log_.TakeLines(), Logged(Error(MismatchLine("", kSession))));
  WriteFile(kSessionFile, "ID\t\n");
  EXPECT_THAT(Post(BodyWithSession("GetSystemInfo", "")), Replied(kSessionErrorReply));
  EXPECT_THAT(log_.TakeLines(), Logged(Error(kNoFileLine)));
}

TEST_F(SessionTest, TheFirstIdLineDecides) {
  struct Row {
    const char* description;
    std::string content;
    std::string id;
  };
  const Row kRows[] = {
      {"other lines first", "lifetime\t1\nID\tabc\n", "abc"},
      {"two ID lines", "ID\tabc\nID\tdef\n", "abc"},
      {"a blank between key and value", "ID abc\n", "abc"},
      {"several blanks and tabs", "ID \t\t abc\n", "abc"},
      {"nothing between key and value", "IDabc\n", "abc"},
      {"the value ends at a blank", "ID\tabc def\n", "abc"},
      {"the value ends at a carriage return", "ID\tabc\r\n", "abc"},
      {"no line end", "ID\tabc", "abc"},
      {"a percent sign", "ID\t%s%d\n", "%s%d"},
      {"the rest of a line of 255 characters", std::string(255, 'x') + "ID\tabc\n", "abc"},
      {"an id of 251 characters", "ID\t" + std::string(251, 'a') + "\n", std::string(251, 'a')},
      {"an id that fills the piece", "ID\t" + std::string(252, 'a') + "\n", std::string(252, 'a')},
      {"a longer id is cut", "ID\t" + std::string(300, 'a') + "\n", std::string(252, 'a')},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.description);
    WriteFile(kSessionFile, row.content);
    EXPECT_TRUE(Accepts(row.id));
    EXPECT_FALSE(Accepts(row.id + "x"));
  }
}

TEST_F(SessionTest, LongIdsOfAClientAreTruncatedLikeEveryValue) {
  EXPECT_THAT(Post(BodyWithSession("GetSystemInfo", std::string(7000, 'w'))),
              Replied(kSessionErrorReply));
  // "session error web:[" is 19 bytes long, and the line is truncated to 4,999.
  EXPECT_THAT(log_.Lines(), Logged(Error("session error web:[" + std::string(4980, 'w'))));
}

TEST_F(SessionTest, PercentSignsInIdsShowAsTheyWere) {
  Post(BodyWithSession("GetSystemInfo", "%s%n%08x"));
  EXPECT_THAT(log_.Lines(), Logged(Error(MismatchLine("%s%n%08x", kSession))));
}

TEST_F(SessionTest, TheTimesAreNotChecked) {
  WriteFile(kSessionFile, "ID\tabc\nlifetime\t0\nsessiontime\t0\n");
  EXPECT_TRUE(Accepts("abc"));
}

TEST_F(SessionTest, ExemptCommandsNeedNoSession) {
  FakeDaemon daemon(kControlSocket, Answer(ReplyMessage(Bytes({0}))));
  for (const bool with_file : {true, false}) {
    if (!with_file) {
      std::filesystem::remove(kSessionFile);
    }
    for (const char* const command :
         {"HeartbeatConfirmation", "SetTallyControlWithPriority", "SetStudioTallyWithoutSession"}) {
      SCOPED_TRACE(command);
      for (const std::string& body :
           {BodyWithoutSession(command), BodyWithSession(command, "wrong")}) {
        const Outcome outcome = Post(body);
        EXPECT_EQ(outcome.exit_status, 0);
        EXPECT_THAT(outcome.output, testing::HasSubstr(std::string("{\"Requested\":\"") + command +
                                                       "\",\"Result\":\"Success\""));
      }
    }
  }
}

TEST_F(SessionTest, ARefusedRequestReachesNoDaemon) {
  FakeDaemon daemon;
  Post(BodyWithSession("MonitorStart", "wrong"));
  EXPECT_THAT(daemon.Received(), testing::ElementsAre());
}

class SessionRenewalTest : public CameraTest {
 protected:
  /// Renews the session and expects the file with the times T + `lifetime` and T, where T is the
  /// second in which the handler ran.
  void ExpectRenewal(const std::string& body, int lifetime, const std::string& id = kSession) {
    // The C library may read a clock that is some milliseconds late; the handler must not.
    const std::time_t before = std::time(nullptr);
    const Outcome outcome = Post(body);
    const std::time_t after =
        std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    EXPECT_THAT(outcome, Replied("{\"Response\":{\"Requested\":\"SessionRenewal\","
                                 "\"Result\":\"Success\"}}"));
    std::vector<std::string> possible;
    for (std::time_t now = before; now <= after; ++now) {
      possible.push_back("ID\t" + id + "\nlifetime\t" + std::to_string(now + lifetime) +
                         "\nsessiontime\t" + std::to_string(now) + "\n");
    }
    EXPECT_THAT(possible, testing::Contains(ReadFile(kSessionFile)));
  }
};

TEST_F(SessionRenewalTest, ExtendsTheLifetimeBy30Seconds) {
  const std::string body = Body("SessionRenewal", "\"Update\":1");
  ExpectRenewal(body, 30);
  EXPECT_THAT(log_.Lines(),
              Logged(Error("rcv post_data = " + body),
                     Info("##### SessionRenewal Parse() params={\"Update\":1}}}"),
                     Error("send res_str = {\"Response\":{\"Requested\":\"SessionRenewal\","
                           "\"Result\":\"Success\"}}")));
}

TEST_F(SessionRenewalTest, TheUpdateFlagIsANumber) {
  struct Row {
    const char* update;
    int lifetime;
  };
  constexpr Row kRows[] = {
      {"0", 0},
      {"1", 30},
      {"\"0\"", 0},
      {"\"1\"", 30},
      {"2", 30},
      {"-1", 30},
      {"\"abc\"", 0},
      {"\"\"", 0},
      {"true", 0},
      {"00", 0},
      {"256", 30},
      {"65536", 30},
      {"4294967296", 30},  // saturates, does not wrap around to 0
      {"-4294967296", 30},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.update);
    ExpectRenewal(Body("SessionRenewal", std::string("\"Update\":") + row.update), row.lifetime);
  }
}

TEST_F(SessionRenewalTest, WithoutParamsTheSessionEndsNow) {
  ExpectRenewal(Body("SessionRenewal"), 0);
}

TEST_F(SessionRenewalTest, WithoutUpdateTheFileStays) {
  const std::string before = ReadFile(kSessionFile);
  const std::string body = Body("SessionRenewal", "\"Refresh\":1");
  EXPECT_THAT(Post(body), Replied("{\"Response\":{\"Result\":\"RequestedError\"}}"));
  EXPECT_EQ(ReadFile(kSessionFile), before);
  EXPECT_THAT(log_.Lines(),
              Logged(Error("rcv post_data = " + body),
                     Info("##### SessionRenewal Parse() params={\"Refresh\":1}}}"),
                     Error("error: json_parser() key [Update] does not appear\n"),
                     Error("requested error ret=-1, params=\"Params\":{\"Refresh\":1}}}")));
}

TEST_F(SessionRenewalTest, TheRenewedSessionStaysValid) {
  for (int renewal = 0; renewal < 3; ++renewal) {
    ExpectRenewal(Body("SessionRenewal", "\"Update\":1"), 30);
  }
}

TEST_F(SessionRenewalTest, TheFileIsRewrittenWhole) {
  const std::string id(252, 'i');
  WriteFile(kSessionFile, "ID " + id + "\nother\t1\n" + std::string(5000, 'x'));
  ExpectRenewal(BodyWithSession("SessionRenewal", id, "\"Update\":1"), 30, id);
}

TEST_F(SessionRenewalTest, NoDaemonIsContacted) {
  FakeDaemon daemon;
  ExpectRenewal(Body("SessionRenewal", "\"Update\":1"), 30);
  EXPECT_THAT(daemon.Received(), testing::ElementsAre());
}

TEST_F(SessionRenewalTest, AnotherSessionIsNotRenewed) {
  const std::string before = ReadFile(kSessionFile);
  EXPECT_THAT(Post(BodyWithSession("SessionRenewal", "wrong", "\"Update\":1")),
              Replied(kSessionErrorReply));
  EXPECT_EQ(ReadFile(kSessionFile), before);
}

constexpr char kCannotWriteLine[] = "cannot write [/var/tmp/lighttpd/.session]";
constexpr char kNotRenewed[] =
    "{\"Response\":{\"Requested\":\"SessionRenewal\",\"Result\":\"RequestedError\"}}";

TEST_F(SessionRenewalTest, AFileThatCannotBeOpenedIsReported) {
  const ReadOnly read_only(kSessionFile);
  const std::string before = ReadFile(kSessionFile);
  EXPECT_THAT(Post(Body("SessionRenewal", "\"Update\":1")), Replied(kNotRenewed));
  EXPECT_EQ(ReadFile(kSessionFile), before);
  EXPECT_THAT(log_.Lines(), testing::Contains(Error(kCannotWriteLine)));
}

// The command line checks no session and has no id.
TEST_F(SessionRenewalTest, FromTheCommandLineCreatesTheFileOrReplacesItsContents) {
  const Request request =
      Request::CommandLine({"100", BodyWithoutSession("SessionRenewal", "\"Update\":0")});
  for (const bool is_missing : {true, false}) {
    SCOPED_TRACE(is_missing);
    if (is_missing) {
      std::filesystem::remove(kSessionFile);
    } else {
      WriteSession("other");
    }
    EXPECT_THAT(RunHandler(request), Replied("{\"Response\":{\"Requested\":\"SessionRenewal\","
                                             "\"Result\":\"Success\"}}"));
    EXPECT_THAT(ReadFile(kSessionFile), testing::MatchesRegex("ID\t\nlifetime\t[0-9]+\n"
                                                              "sessiontime\t[0-9]+\n"));
  }
}

TEST_F(SessionRenewalTest, AFileThatCannotBeWrittenIsReportedAndKept) {
  const std::string before = ReadFile(kSessionFile);
  EXPECT_THAT(RunHandler(Request(Body("SessionRenewal", "\"Update\":1")).LimitFileSize(0)),
              Replied(kNotRenewed));
  EXPECT_EQ(ReadFile(kSessionFile), before);
  EXPECT_THAT(log_.Lines(), testing::Contains(Error(kCannotWriteLine)));
}

TEST_F(SessionRenewalTest, AFileThatIsOnlyPartlyWrittenIsReported) {
  EXPECT_THAT(RunHandler(Request(Body("SessionRenewal", "\"Update\":1")).LimitFileSize(20)),
              Replied(kNotRenewed));
}

}  // namespace
