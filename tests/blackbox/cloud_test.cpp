// The cloud streaming service: requests to the streaming daemon, and the stream information that
// becomes a streaming server.
#include <initializer_list>
#include <string>
#include <vector>

#include "settings_test.h"

namespace {

using namespace harness;
using testing::ElementsAre;
using testing::IsEmpty;

/// A text in a field of `size` bytes, padded with zeros.
std::string Field(const std::string& text, std::size_t width) {
  return text + std::string(width - text.size(), '\0');
}

class CloudTest : public CameraTest {
 protected:
  struct Exchange {
    Outcome outcome;
    std::vector<std::string> messages;  // what the streaming daemon received
    LogLines lines;                     // without the traces of request and reply
  };

  /// Posts a request, which the streaming daemon answers with the given reply.
  Exchange Serve(const std::string& body, const Script& answer = Answer(ReplyMessage(Bytes({0})))) {
    FakeDaemon daemon(kStreamingSocket, answer);
    return Serve(body, daemon);
  }

  Exchange Serve(const std::string& body, FakeDaemon& daemon) {
    log_.TakeLines();
    Exchange exchange;
    exchange.outcome = Post(body);
    exchange.messages = daemon.Received();
    for (const LogLine& line : log_.TakeLines()) {
      if (line.text.rfind("rcv post_data = ", 0) != 0 &&
          line.text.rfind("send res_str = ", 0) != 0) {
        exchange.lines.push_back(line);
      }
    }
    return exchange;
  }

  static void LogLevel(int level) {
    WriteFile(kLogLevelFile, "cmd=" + std::to_string(level) + "\n");
  }

  /// A request is refused and nothing is sent. Returns its log lines without the last one, which
  /// reports the refusal.
  LogLines Refused(const std::string& command, const std::string& params) {
    SCOPED_TRACE(command + " " + params);
    Exchange exchange = Serve(Body(command, params));
    EXPECT_THAT(exchange.outcome, Replied(ErrorJson("RequestedError")));
    EXPECT_THAT(exchange.messages, IsEmpty());
    const LogLine refusal = Error("requested error ret=-1, params=\"Params\":{" + params + "}}}");
    if (exchange.lines.empty() || !(exchange.lines.back() == refusal)) {
      ADD_FAILURE() << "the refusal is not the last line";
      return {};
    }
    exchange.lines.pop_back();
    return exchange.lines;
  }

  static LogLine NotFound(const std::string& key) {
    return Error("error: json_parser() key [" + key + "] does not appear\n");
  }
};

// Requests without parameters.

TEST_F(CloudTest, ARequestIsSentByteByByte) {
  const Exchange exchange = Serve(Body("SetCldstrmLogout"));
  EXPECT_THAT(exchange.messages,
              ElementsAre(Bytes({0, 11, 0, 0, 100, 1, 0, 0}) +
                          Le32(static_cast<std::uint32_t>(exchange.outcome.pid))));
}

TEST_F(CloudTest, LogoutAndObtainingTheListAreBareHeaders) {
  const struct {
    const char* command;
    int code;
  } rows[] = {{"SetCldstrmLogout", 100}, {"SetCldstrmEventListObtain", 101}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.command);
    const Exchange exchange = Serve(Body(row.command));
    EXPECT_THAT(exchange.outcome, Replied(ResultJson(row.command)));
    EXPECT_THAT(exchange.messages, ElementsAre(CloudMessage(0, row.code, exchange.outcome.pid)));
    EXPECT_THAT(exchange.lines, IsEmpty());
  }
}

TEST_F(CloudTest, RequestsAreTracedAtLevel1) {
  const FakeDaemon daemon(kStreamingSocket, Answer(ReplyMessage(Bytes({0}))));
  LogLevel(1);
  const std::string body = Body("SetCldstrmLogout");
  Post(body);
  EXPECT_THAT(log_.Lines(), Logged(Error("rcv post_data = " + body),
                                   Error("send res_str = " + ResultJson("SetCldstrmLogout"))));
}

TEST_F(CloudTest, ReportsTheResultOfTheDaemon) {
  const struct {
    const char* what;
    Script answer;
    const char* word;
  } rows[] = {
      {"success", Answer(ReplyMessage(Bytes({0}))), "Success"},
      {"error", Answer(ReplyMessage(Bytes({1, 0, 0, 0}))), "RequestedError"},
      {"disabled", Answer(ReplyMessage(Bytes({2}))), "DisableError"},
      {"no word", Answer(ReplyMessage(Bytes({3}))), "Success"},
      {"no payload", Answer(ReplyMessage("")), "Success"},
      {"no reply", CloseAfterReading(), "Success"},
  };
  const std::string commands[] = {
      Body("SetCldstrmLogin", R"("Username":"u","Password":"p","ServerURL":"s")"),
      Body("SetCldstrmLogout"),
      Body("SetCldstrmEventListObtain"),
      Body("SetCldstrmStreamInfoObtain", R"("EventID":1)"),
      Body("SetCldstrmClearStatus", R"("Login":1,"GetEventList":1,"GetStreamInfo":1)"),
  };
  const char* const names[] = {"SetCldstrmLogin", "SetCldstrmLogout", "SetCldstrmEventListObtain",
                               "SetCldstrmStreamInfoObtain", "SetCldstrmClearStatus"};
  for (std::size_t i = 0; i < std::size(commands); ++i) {
    for (const auto& row : rows) {
      SCOPED_TRACE(std::string(names[i]) + ": " + row.what);
      EXPECT_THAT(Serve(commands[i], row.answer).outcome, Replied(ResultJson(names[i], row.word)));
    }
  }
}

/// All commands need the streaming daemon and none needs the control daemon.
TEST_F(CloudTest, WithoutTheDaemonThereIsNoReply) {
  FakeDaemon control;
  for (const char* command :
       {"SetCldstrmLogin", "SetCldstrmLogout", "SetCldstrmEventListObtain", "GetCldstrmEventList",
        "SetCldstrmStreamInfoObtain", "SetCldstrmStreamInfoToStrmsrv", "SetCldstrmClearStatus"}) {
    SCOPED_TRACE(command);
    log_.TakeLines();
    EXPECT_THAT(Post(Body(command)), EndedSilently(1));
    EXPECT_THAT(log_.TakeLines(), Logged(Error("rcv post_data = " + Body(command)),
                                         Error("cannot connect sockname.")));
  }
  EXPECT_THAT(control.Received(), IsEmpty());
}

TEST_F(CloudTest, WithoutParametersABareHeaderAnnouncesTheUsualLength) {
  const struct {
    const char* command;
    std::string header;  // without the process id
  } rows[] = {
      {"SetCldstrmLogin", Bytes({0, 11, 0x40, 0x01, 99, 1, 0, 0})},
      {"SetCldstrmStreamInfoObtain", Bytes({0, 11, 4, 0, 104, 1, 0, 0})},
      {"SetCldstrmClearStatus", Bytes({0, 11, 4, 0, 106, 1, 0, 0})},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.command);
    const Exchange exchange = Serve(Body(row.command));
    EXPECT_THAT(exchange.outcome, Replied(ResultJson(row.command)));
    EXPECT_THAT(exchange.messages,
                ElementsAre(row.header + Le32(static_cast<std::uint32_t>(exchange.outcome.pid))));
  }
}

// Login.

std::string Login(const std::string& user, const std::string& password, const std::string& url) {
  return "\"Username\":\"" + user + "\",\"Password\":\"" + password + "\",\"ServerURL\":\"" + url +
         "\"";
}

TEST_F(CloudTest, LoginSendsItsThreeTexts) {
  const std::string user(127, 'u');
  const std::string password(63, 'p');
  const std::string url(127, 's');
  const struct {
    const char* what;
    std::string params;
    std::string block;
  } rows[] = {
      {"short texts", Login("camera", "secret", "https://cloud.example"),
       Field("camera", 128) + Field("secret", 64) + Field("https://cloud.example", 128)},
      {"longest texts", Login(user, password, url), user + '\0' + password + '\0' + url + '\0'},
      {"one character too many", Login(user + 'U', password + 'P', url + 'S'),
       user + '\0' + password + '\0' + url + '\0'},
      {"far too long", Login(std::string(300, 'u'), std::string(400, 'p'), std::string(500, 's')),
       user + '\0' + password + '\0' + url + '\0'},
      {"empty password", Login("u", "", "s"), Field("u", 128) + Field("", 64) + Field("s", 128)},
      {"numbers", R"("Username":1,"Password":2,"ServerURL":3)",
       Field("1", 128) + Field("2", 64) + Field("3", 128)},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    ASSERT_EQ(row.block.size(), 320U);
    const Exchange exchange = Serve(Body("SetCldstrmLogin", row.params));
    EXPECT_THAT(exchange.outcome, Replied(ResultJson("SetCldstrmLogin")));
    EXPECT_THAT(exchange.messages,
                ElementsAre(CloudMessage(320, 99, exchange.outcome.pid, row.block)));
  }
}

TEST_F(CloudTest, LoginIsTracedAtLevel4) {
  const std::string body =
      Body("SetCldstrmLogin", Login(std::string(128, 'u'), "secret", "https://cloud.example"));
  LogLevel(4);
  EXPECT_THAT(Serve(body).lines,
              Logged(Info("Username=" + std::string(127, 'u')), Info("Password=secret"),
                     Info("ServerUrl=https://cloud.example")));
  LogLevel(3);
  EXPECT_THAT(Serve(body).lines, IsEmpty());
}

TEST_F(CloudTest, LoginNeedsAUserAndAServer) {
  LogLevel(4);
  EXPECT_THAT(Refused("SetCldstrmLogin", Login("", "p", "s")),
              Logged(Info("Username="), Info("Password=p"), Info("ServerUrl=s")));
  EXPECT_THAT(Refused("SetCldstrmLogin", Login("u", "", "")),
              Logged(Info("Username=u"), Info("Password="), Info("ServerUrl=")));
}

TEST_F(CloudTest, LoginWithMissingParametersIsRefused) {
  LogLevel(4);
  EXPECT_THAT(Refused("SetCldstrmLogin", R"("Password":"p","ServerURL":"s")"),
              Logged(NotFound("Username")));
  EXPECT_THAT(Refused("SetCldstrmLogin", R"("Username":"u","ServerURL":"s")"),
              Logged(NotFound("Password")));
  EXPECT_THAT(Refused("SetCldstrmLogin", R"("Username":"u","Password":"p")"),
              Logged(NotFound("ServerURL")));
}

// Stream information and status flags.

TEST_F(CloudTest, StreamInformationIsObtainedForAnEvent) {
  const struct {
    const char* id;
    LogLines traces;
    std::string payload;
  } rows[] = {
      {"0", {Info("event_id=0")}, Bytes({0, 0, 0, 0})},
      {"19", {Info("event_id=19")}, Bytes({19, 0, 0, 0})},
      {"\"7\"", {Info("event_id=7")}, Bytes({7, 0, 0, 0})},
      {"-5", {Info("event_id=-5"), Info("--> event_id=0")}, Bytes({0, 0, 0, 0})},
      {"20", {Info("event_id=20"), Info("--> event_id=19")}, Bytes({19, 0, 0, 0})},
      {"25", {Info("event_id=25"), Info("--> event_id=19")}, Bytes({19, 0, 0, 0})},
      {"65536", {Info("event_id=65536"), Info("--> event_id=19")}, Bytes({19, 0, 0, 0})},
      {"\"first\"", {Info("event_id=0")}, Bytes({0, 0, 0, 0})},
      {"-99999999999", {Info("event_id=-2147483648"), Info("--> event_id=0")}, Bytes({0, 0, 0, 0})},
  };
  LogLevel(4);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.id);
    const Exchange exchange =
        Serve(Body("SetCldstrmStreamInfoObtain", std::string("\"EventID\":") + row.id));
    EXPECT_THAT(exchange.outcome, Replied(ResultJson("SetCldstrmStreamInfoObtain")));
    EXPECT_THAT(exchange.messages,
                ElementsAre(CloudMessage(4, 104, exchange.outcome.pid, row.payload)));
    EXPECT_EQ(exchange.lines, row.traces);
  }
}

TEST_F(CloudTest, TheEventsLimitIsTracedAtLevel4) {
  const std::string body = Body("SetCldstrmStreamInfoObtain", R"("EventID":20)");
  LogLevel(4);
  EXPECT_THAT(Serve(body).lines, Logged(Info("event_id=20"), Info("--> event_id=19")));
  LogLevel(3);
  EXPECT_THAT(Serve(body).lines, IsEmpty());
}

TEST_F(CloudTest, StatusFlagsAreSentAsBytes) {
  const struct {
    const char* params;
    const char* trace;
    std::string payload;
  } rows[] = {
      {R"("Login":1,"GetEventList":0,"GetStreamInfo":1)",
       "login=1 get_event_list=0 get_stream_info=1", Bytes({1, 0, 1, 0})},
      {R"("GetStreamInfo":3,"GetEventList":"2","Login":1)",
       "login=1 get_event_list=2 get_stream_info=3", Bytes({1, 2, 3, 0})},
      {R"("Login":256,"GetEventList":-1,"GetStreamInfo":"x")",
       "login=256 get_event_list=-1 get_stream_info=0", Bytes({0, 255, 0, 0})},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.params);
    const std::string body = Body("SetCldstrmClearStatus", row.params);
    LogLevel(4);
    const Exchange exchange = Serve(body);
    EXPECT_THAT(exchange.outcome, Replied(ResultJson("SetCldstrmClearStatus")));
    EXPECT_THAT(exchange.messages,
                ElementsAre(CloudMessage(4, 106, exchange.outcome.pid, row.payload)));
    EXPECT_THAT(exchange.lines, Logged(Info(row.trace)));
    LogLevel(3);
    EXPECT_THAT(Serve(body).lines, IsEmpty());
  }
}

TEST_F(CloudTest, MissingParametersAreRefused) {
  LogLevel(4);
  EXPECT_THAT(Refused("SetCldstrmStreamInfoObtain", R"("ID":1)"), Logged(NotFound("EventID")));
  EXPECT_THAT(Refused("SetCldstrmStreamInfoToStrmsrv", R"("StrmsrvID":1)"),
              Logged(NotFound("EventID")));
  EXPECT_THAT(Refused("SetCldstrmStreamInfoToStrmsrv", R"("EventID":1)"),
              Logged(NotFound("StrmsrvID")));
  EXPECT_THAT(Refused("SetCldstrmClearStatus", R"("GetEventList":1,"GetStreamInfo":1)"),
              Logged(NotFound("Login")));
  EXPECT_THAT(Refused("SetCldstrmClearStatus", R"("Login":1,"GetStreamInfo":1)"),
              Logged(NotFound("GetEventList")));
  EXPECT_THAT(Refused("SetCldstrmClearStatus", R"("Login":1,"GetEventList":1)"),
              Logged(NotFound("GetStreamInfo")));
}

// The list of events.

Script CountReply(std::uint16_t count, int result = 0) {
  return Answer(ReplyMessage(Bytes({result, 9, 9, 9}) + Le16(count)));
}

/// The reply about one event: 132 bytes.
std::string Event(const std::string& title, int result = 0) {
  return Bytes({result, 9, 9, 9}) + Field(title, 128);
}

Script EventReply(const std::string& title, int result = 0) {
  return Answer(ReplyMessage(Event(title, result)));
}

/// The reply's data for events with these titles, which are written as they are printed.
std::string Events(const std::vector<std::string>& titles, const std::string& result = "Success") {
  std::string data = "\"EventNum\":" + std::to_string(titles.size());
  for (std::size_t i = 0; i < titles.size(); ++i) {
    data += (i == 0 ? ",\"EventInfo\":[" : ",") + ("{\"Title\":\"" + titles[i] + "\"}");
  }
  return DataJson("GetCldstrmEventList", data + (titles.empty() ? "" : "]"), result);
}

TEST_F(CloudTest, EventsAreAskedForOneByOne) {
  FakeDaemon daemon(kStreamingSocket);
  daemon.Next(CountReply(3))
      .Next(EventReply("Morning"))
      .Next(EventReply("Noon"))
      .Next(EventReply("Night"));
  LogLevel(4);
  const Exchange exchange = Serve(Body("GetCldstrmEventList"), daemon);
  const pid_t pid = exchange.outcome.pid;
  EXPECT_THAT(exchange.outcome, Replied(DataJson("GetCldstrmEventList",
                                                 R"("EventNum":3,"EventInfo":[{"Title":"Morning"},)"
                                                 R"({"Title":"Noon"},{"Title":"Night"}])")));
  EXPECT_THAT(exchange.messages,
              ElementsAre(CloudMessage(0, 102, pid), CloudMessage(4, 103, pid, Bytes({0, 0, 0, 0})),
                          CloudMessage(4, 103, pid, Bytes({1, 0, 0, 0})),
                          CloudMessage(4, 103, pid, Bytes({2, 0, 0, 0}))));
  EXPECT_THAT(exchange.lines, Logged(Info("m_event_num=3"), Info("[0] Title: Morning"),
                                     Info("[1] Title: Noon"), Info("[2] Title: Night")));
}

TEST_F(CloudTest, TheListIsTracedAtLevel4) {
  FakeDaemon daemon(kStreamingSocket, EventReply("Night"));
  daemon.Next(CountReply(1));
  LogLevel(3);
  EXPECT_THAT(Serve(Body("GetCldstrmEventList"), daemon).lines, IsEmpty());
}

TEST_F(CloudTest, WithoutEventsTheListIsLeftOut) {
  const std::string none = DataJson("GetCldstrmEventList", R"("EventNum":0)");
  const struct {
    const char* what;
    Script answer;
  } rows[] = {
      {"count of 0", CountReply(0)},
      {"no payload", Answer(ReplyMessage(""))},
      {"no reply", CloseAfterReading()},
      {"no count in the reply", Answer(ReplyMessage(Bytes({0, 0, 0, 0})))},
  };
  LogLevel(4);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    const Exchange exchange = Serve(Body("GetCldstrmEventList"), row.answer);
    EXPECT_THAT(exchange.outcome, Replied(none));
    EXPECT_THAT(exchange.messages, ElementsAre(CloudMessage(0, 102, exchange.outcome.pid)));
    EXPECT_THAT(exchange.lines, Logged(Info("m_event_num=0")));
  }
}

TEST_F(CloudTest, TwentyEventsAreListedAtMost) {
  const struct {
    std::uint16_t count;
    std::size_t listed;
  } rows[] = {
      {20, 20},
      {21, 20},
      {35, 20},
      {65535, 20},
  };
  LogLevel(3);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.count);
    FakeDaemon daemon(kStreamingSocket);
    daemon.Next(CountReply(row.count));
    std::vector<std::string> titles;
    for (std::size_t i = 0; i < row.listed; ++i) {
      titles.push_back("Event " + std::to_string(i));
      daemon.Next(EventReply(titles.back()));
    }
    const Exchange exchange = Serve(Body("GetCldstrmEventList"), daemon);
    EXPECT_THAT(exchange.outcome, Replied(Events(titles)));
    EXPECT_EQ(exchange.messages.size(), 1 + row.listed);
    EXPECT_EQ(exchange.messages.back(),
              CloudMessage(4, 103, exchange.outcome.pid, Bytes({19, 0, 0, 0})));
    EXPECT_THAT(exchange.lines, IsEmpty());
  }
}

TEST_F(CloudTest, TheCountIsTracedAsReceived) {
  FakeDaemon daemon(kStreamingSocket, EventReply(""));
  daemon.Next(CountReply(0x8001));
  LogLevel(4);
  const LogLines lines = Serve(Body("GetCldstrmEventList"), daemon).lines;
  ASSERT_EQ(lines.size(), 22U);
  EXPECT_EQ(lines[0], Info("m_event_num=32769"));
  EXPECT_EQ(lines[1], Info("--> m_event_num=20"));
  EXPECT_EQ(lines[2], Info("[0] Title: "));
}

// One time-out in all, not one for each event.
TEST_F(CloudTest, NoEventIsAskedForAfterATimeOut) {
  FakeDaemon daemon(kStreamingSocket);
  daemon.Next(CountReply(4)).Next(EventReply("a", 2)).Next(Silent());
  LogLevel(1);
  const Exchange exchange = Serve(Body("GetCldstrmEventList"), daemon);
  EXPECT_THAT(exchange.outcome, Replied(Events({"a", "", "", ""}, "DisableError")));
  EXPECT_GE(exchange.outcome.elapsed.count(), 4.9);
  EXPECT_LT(exchange.outcome.elapsed.count(), 5.7 + TimeMargin());
  EXPECT_EQ(exchange.messages.size(), 3U);
  EXPECT_THAT(exchange.lines, Logged(Error("[1] No m_rcv_res!!"), Error("[2] No m_rcv_res!!"),
                                     Error("[3] No m_rcv_res!!")));
}

TEST_F(CloudTest, NoEventIsAskedForAfterACountThatTimesOut) {
  FakeDaemon daemon(kStreamingSocket);
  daemon.Next(Answer(ReplyHeader(8) + Bytes({1, 9, 9, 9}) + Le16(2)));
  LogLevel(1);
  const Exchange exchange = Serve(Body("GetCldstrmEventList"), daemon);
  EXPECT_THAT(exchange.outcome, Replied(Events({"", ""}, "RequestedError")));
  EXPECT_EQ(exchange.messages.size(), 1U);
  EXPECT_THAT(exchange.lines, Logged(Error("[0] No m_rcv_res!!"), Error("[1] No m_rcv_res!!")));
}

TEST_F(CloudTest, AnEventThatTimesOutHasTheTitleThatArrived) {
  FakeDaemon daemon(kStreamingSocket);
  daemon.Next(CountReply(2)).Next(Answer(ReplyHeader(132) + Bytes({0, 9, 9, 9}) + "Ni"));
  LogLevel(1);
  const Exchange exchange = Serve(Body("GetCldstrmEventList"), daemon);
  EXPECT_THAT(exchange.outcome, Replied(Events({"Ni", ""})));
  EXPECT_EQ(exchange.messages.size(), 2U);
  EXPECT_THAT(exchange.lines, Logged(Error("[1] No m_rcv_res!!")));
}

TEST_F(CloudTest, ReportsTheResultOfTheLastReply) {
  const struct {
    const char* what;
    int count_result;
    int first_result;
    int last_result;
    const char* word;
  } rows[] = {
      {"last reply an error", 0, 0, 1, "RequestedError"},
      {"first reply an error", 0, 1, 0, "Success"},
      {"count an error", 2, 0, 0, "Success"},
      {"all disabled", 2, 2, 2, "DisableError"},
      {"a result without a word", 1, 1, 3, "Success"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    FakeDaemon daemon(kStreamingSocket);
    daemon.Next(CountReply(2, row.count_result))
        .Next(EventReply("a", row.first_result))
        .Next(EventReply("b", row.last_result));
    EXPECT_THAT(Serve(Body("GetCldstrmEventList"), daemon).outcome,
                Replied(Events({"a", "b"}, row.word)));
  }
  EXPECT_THAT(Serve(Body("GetCldstrmEventList"), CountReply(0, 1)).outcome,
              Replied(Events({}, "RequestedError")));
}

TEST_F(CloudTest, AnEventWithoutAReplyIsListedWithoutATitle) {
  FakeDaemon daemon(kStreamingSocket);
  daemon.Next(CountReply(5))
      .Next(EventReply("a"))
      .Next(CloseAfterReading())
      .Next(Answer(ReplyMessage("")))
      .Next(AnswerAndClose(ReplyHeader(132)))
      .Next(EventReply("e", 1));
  LogLevel(1);
  const Exchange exchange = Serve(Body("GetCldstrmEventList"), daemon);
  EXPECT_THAT(exchange.outcome, Replied(Events({"a", "", "", "", "e"}, "RequestedError")));
  EXPECT_THAT(exchange.lines, Logged(Error("[1] No m_rcv_res!!"), Error("[2] No m_rcv_res!!"),
                                     Error("[3] No m_rcv_res!!")));
}

TEST_F(CloudTest, TitlesAreReadFromShortAndLongReplies) {
  const std::string t63(63, 't');
  const std::string t128(128, 't');
  const struct {
    const char* what;
    Script answer;
    std::string title;
    std::string traced;
  } rows[] = {
      {"whole", EventReply("Night"), "Night", "Night"},
      {"result alone", Answer(ReplyMessage(Bytes({0}))), "", ""},
      {"ends within the title", Answer(ReplyMessage(Event("Night").substr(0, 6))), "Ni", "Ni"},
      {"announces more", AnswerAndClose(ReplyHeader(132) + Event("Night").substr(0, 7)), "Nig",
       "Nig"},
      {"announces less", Answer(ReplyHeader(6) + Event("Night")), "Ni", "Ni"},
      {"in pieces", AnswerInPieces(ReplyMessage(Event("Night")), 50, std::chrono::milliseconds(1)),
       "Night", "Night"},
      {"63 characters", EventReply(t63), t63, t63},
      {"64 characters", EventReply(t63 + "u"), t63, t63 + "u"},
      {"no terminator", EventReply(t128), t63, t128},
      {"longer than a record", Answer(ReplyMessage(Event(t128) + "more")), t63, t128},
      {"far longer", Answer(ReplyMessage(Event(t128) + std::string(60000, 'x'))), t63, t128},
      {"bytes after a NUL", EventReply(std::string("Ni\0ght", 6)), "Ni", "Ni"},
  };
  LogLevel(4);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    FakeDaemon daemon(kStreamingSocket, row.answer);
    daemon.Next(CountReply(1));
    const Exchange exchange = Serve(Body("GetCldstrmEventList"), daemon);
    EXPECT_THAT(exchange.outcome, Replied(Events({row.title})));
    EXPECT_THAT(exchange.lines, Logged(Info("m_event_num=1"), Info("[0] Title: " + row.traced)));
  }
}

/// Titles are truncated before they are escaped, so an escaped one may be longer than 63 bytes.
TEST_F(CloudTest, TitlesAreEscaped) {
  const RepliesMayBreak may_break;
  std::string quotes;
  for (int i = 0; i < 63; ++i) {
    quotes += "\\\"";
  }
  const struct {
    const char* what;
    std::string title;
    std::string printed;
  } rows[] = {
      {"quotes", R"(The "Final")", R"(The \"Final\")"},
      {"backslash", R"(A\B)", R"(A\\B)"},
      {"control characters", "a\tb\nc\x01\x1f", R"(a\u0009b\u000ac\u0001\u001f)"},
      {"above control characters", " \x7f\xc3\xa9\xff/'", " \x7f\xc3\xa9\xff/'"},
      {"quotes only", std::string(64, '"'), quotes},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    FakeDaemon daemon(kStreamingSocket, EventReply(row.title));
    daemon.Next(CountReply(1));
    EXPECT_THAT(Serve(Body("GetCldstrmEventList"), daemon).outcome, Replied(Events({row.printed})));
  }
}

// Stream information becomes a streaming server.

std::string ServerFile(int server) {
  return "/var/tmp/lighttpd/streaming_server" + std::to_string(server);
}

std::string StreamingSettings(const std::string& server) {
  return "resolution\t3\nquality\t42\nserver\t" + server +
         "\nrfresolution\t5\ncldstrmusername\tuser\ncldstrmpassword\tpw\nserverurl\thost\n";
}

/// A server's settings: those that the stream information sets, and all others.
std::string ServerSettings(const std::string& alias, const std::string& type,
                           const std::string& url, const std::string& key,
                           const std::string& other = "0", const std::string& address = "0.0.0.0") {
  std::string text = "str_alias\t" + alias + "\ntype\t" + type + "\n";
  const auto add = [&text](const std::string& name, const std::string& value) {
    text += name + "\t" + value + "\n";
  };
  add("udp_dst_address", address);
  add("udp_dst_port", other);
  add("udp_pcr_jitter", other);
  add("tcp_dst_address", address);
  for (const char* name :
       {"tcp_dst_port", "zixi_dst_address", "zixi_dst_port", "zixi_stream_id", "zixi_username",
        "zixi_password", "zixi_latency", "zixi_adaptive_bitrate", "rtsp_dst_port", "rtsp_stream_id",
        "rtsp_username", "rtsp_password"}) {
    add(name, other);
  }
  add("rtmp_destination_url", url);
  add("rtmp_stream_key", key);
  for (const char* name : {"rtp_dst_address", "rtp_dst_port", "rtp_smpte2022_fec",
                           "rtp_fec_matrix_l", "rtp_fec_matrix_d"}) {
    add(name, other);
  }
  return text;
}

/// The reply with the stream information: 324 bytes.
std::string StreamInfo(const std::string& url, const std::string& key, const std::string& title,
                       int result = 0) {
  return Bytes({result, 9, 9, 9}) + Field(url, 192) + Field(key, 64) + Field(title, 64);
}

std::string ToServer(const std::string& event, const std::string& server) {
  return Body("SetCldstrmStreamInfoToStrmsrv", "\"EventID\":" + event + ",\"StrmsrvID\":" + server);
}

class StreamInfoTest : public CloudTest {
 protected:
  FakeDaemon control_;
};

TEST_F(StreamInfoTest, IsStoredAsAnRtmpServerThatBecomesTheCurrentOne) {
  WriteFile(kStreamingSettingsFile, StreamingSettings("0"));
  WriteFile(ServerFile(2), ServerSettings("Old", "3", "rtmp://old", "oldkey", "7", "10.0.0.1"));
  LogLevel(4);
  const Exchange exchange =
      Serve(ToServer("3", "2"),
            Answer(ReplyMessage(StreamInfo("rtmp://live.example/app", "abcd-1234", "Night"))));
  EXPECT_THAT(exchange.outcome, Replied(ResultJson("SetCldstrmStreamInfoToStrmsrv")));
  EXPECT_THAT(exchange.messages,
              ElementsAre(CloudMessage(4, 105, exchange.outcome.pid, Bytes({3, 0, 0, 0}))));
  EXPECT_EQ(ReadFile(kStreamingSettingsFile), StreamingSettings("2"));
  EXPECT_EQ(ReadFile(ServerFile(2)),
            ServerSettings("Night", "4", "rtmp://live.example/app", "abcd-1234", "7", "10.0.0.1"));
  EXPECT_THAT(control_.Received(), ElementsAre(RenewalNotice()));
  EXPECT_THAT(exchange.lines,
              Logged(Info("event_id=3  m_strmsrv_id=2"), Error("Url: rtmp://live.example/app"),
                     Error("StreamKey: abcd-1234"), Error("Title: Night"), kRenewalTrace));
}

TEST_F(StreamInfoTest, MissingFilesAreCreatedWithTheirDefaults) {
  Serve(ToServer("0", "0"), Answer(ReplyMessage(StreamInfo("url", "key", "title"))));
  EXPECT_EQ(ReadFile(kStreamingSettingsFile),
            "resolution\t0\nquality\t0\nserver\t0\nrfresolution\t0\ncldstrmusername\t0\n"
            "cldstrmpassword\t0\nserverurl\t0\n");
  EXPECT_EQ(ReadFile(ServerFile(0)), ServerSettings("title", "4", "url", "key"));
}

TEST_F(StreamInfoTest, EventAndServerAreLimited) {
  const struct {
    const char* event;
    const char* server;
    int sent;
    int stored;
    LogLines traces;
  } rows[] = {
      {"0", "0", 0, 0, {Info("event_id=0  m_strmsrv_id=0")}},
      {"19", "3", 19, 3, {Info("event_id=19  m_strmsrv_id=3")}},
      {"-5",
       "-1",
       0,
       0,
       {Info("event_id=-5  m_strmsrv_id=-1"), Info("--> event_id=0"), Info("--> m_strmsrv_id=0")}},
      {"25",
       "7",
       19,
       3,
       {Info("event_id=25  m_strmsrv_id=7"), Info("--> event_id=19"), Info("--> m_strmsrv_id=3")}},
      {"1", "4", 1, 3, {Info("event_id=1  m_strmsrv_id=4"), Info("--> m_strmsrv_id=3")}},
      {"20", "1", 19, 1, {Info("event_id=20  m_strmsrv_id=1"), Info("--> event_id=19")}},
  };
  LogLevel(4);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.traces.front().text);
    for (int server = 0; server <= 7; ++server) {
      std::remove(ServerFile(server).c_str());
    }
    const Exchange exchange = Serve(ToServer(row.event, row.server),
                                    Answer(ReplyMessage(StreamInfo("url", "key", "title"))));
    EXPECT_THAT(exchange.messages, ElementsAre(CloudMessage(4, 105, exchange.outcome.pid,
                                                            Bytes({row.sent, 0, 0, 0}))));
    for (int server = 0; server <= 7; ++server) {
      EXPECT_EQ(Exists(ServerFile(server)), server == row.stored) << server;
    }
    LogLines expected = row.traces;
    for (const LogLine& line :
         {Error("Url: url"), Error("StreamKey: key"), Error("Title: title"), kRenewalTrace}) {
      expected.push_back(line);
    }
    EXPECT_EQ(exchange.lines, expected);
  }
}

TEST_F(StreamInfoTest, LimitsAreNotTracedAtLevel3) {
  LogLevel(3);
  EXPECT_THAT(
      Serve(ToServer("20", "4"), Answer(ReplyMessage(StreamInfo("url", "key", "title")))).lines,
      Logged(Error("Url: url"), Error("StreamKey: key"), Error("Title: title"), kRenewalTrace));
}

// A text with a line feed could otherwise set any key of the server's file.
TEST_F(StreamInfoTest, TextsAreStoredUpToTheirFirstControlCharacterAndLoggedWhole) {
  const struct {
    const char* what;
    std::string received;
    std::string stored;
  } rows[] = {
      {"line feed", "key\ntype\t0\nudp_dst_address\t10.6.6.6", "key"},
      {"carriage return", "key\rx", "key"},
      {"tab", "a\tb", "a"},
      {"lowest", "a\x01z", "a"},
      {"highest", "a\x1fz", "a"},
      {"first byte", "\nx", ""},
      {"not a control character", "a \x7f\xc3\xa9z", "a \x7f\xc3\xa9z"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    std::remove(ServerFile(1).c_str());
    const Exchange exchange =
        Serve(ToServer("0", "1"),
              Answer(ReplyMessage(StreamInfo(row.received, row.received, row.received))));
    EXPECT_EQ(ReadFile(ServerFile(1)), ServerSettings(row.stored, "4", row.stored, row.stored));
    EXPECT_THAT(exchange.lines,
                Logged(Error("Url: " + row.received), Error("StreamKey: " + row.received),
                       Error("Title: " + row.received), kRenewalTrace));
  }
}

TEST_F(StreamInfoTest, TextsEndAtTheirFieldsAtTheLatest) {
  const std::string url(191, 'u');
  const std::string key(63, 'k');
  const std::string title(63, 't');
  const struct {
    const char* what;
    Script answer;
    std::string url;
    std::string key;
    std::string title;
  } rows[] = {
      {"longest", Answer(ReplyMessage(StreamInfo(url, key, title))), url, key, title},
      {"no terminators", Answer(ReplyMessage(StreamInfo(url + "U", key + "K", title + "T"))), url,
       key, title},
      {"longer reply", Answer(ReplyMessage(StreamInfo(url + "U", key + "K", title + "T") + "more")),
       url, key, title},
      {"a reply up to within the key",
       Answer(ReplyMessage(StreamInfo("url", "key", "title").substr(0, 198))), "url", "ke", ""},
      {"a reply that ends early",
       AnswerAndClose(ReplyHeader(324) + StreamInfo("url", "key", "title").substr(0, 262)), "url",
       "key", "ti"},
      {"the result alone", Answer(ReplyMessage(Bytes({0}))), "", "", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    std::remove(ServerFile(1).c_str());
    const Exchange exchange = Serve(ToServer("0", "1"), row.answer);
    EXPECT_THAT(exchange.outcome, Replied(ResultJson("SetCldstrmStreamInfoToStrmsrv")));
    EXPECT_EQ(ReadFile(ServerFile(1)), ServerSettings(row.title, "4", row.url, row.key));
    EXPECT_THAT(exchange.lines, Logged(Error("Url: " + row.url), Error("StreamKey: " + row.key),
                                       Error("Title: " + row.title), kRenewalTrace));
  }
}

/// Neither an error nor a silent daemon may change the server that a client has set up.
TEST_F(StreamInfoTest, IsNotStoredWithoutASuccessfulReply) {
  const std::string streaming = StreamingSettings("1");
  const std::string server = ServerSettings("Old", "3", "rtmp://old", "oldkey");
  WriteFile(kStreamingSettingsFile, streaming);
  WriteFile(ServerFile(2), server);
  const struct {
    const char* what;
    Script answer;
    const char* word;
  } rows[] = {
      {"error", Answer(ReplyMessage(StreamInfo("u", "k", "t", 1))), "RequestedError"},
      {"disabled", Answer(ReplyMessage(StreamInfo("u", "k", "t", 2))), "DisableError"},
      {"no word", Answer(ReplyMessage(StreamInfo("u", "k", "t", 3))), "Success"},
      {"no payload", Answer(ReplyMessage("")), "RequestedError"},
      {"no payload byte", AnswerAndClose(ReplyHeader(324)), "RequestedError"},
      {"no reply", CloseAfterReading(), "RequestedError"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    const Exchange exchange = Serve(ToServer("0", "2"), row.answer);
    EXPECT_THAT(exchange.outcome, Replied(ResultJson("SetCldstrmStreamInfoToStrmsrv", row.word)));
    EXPECT_THAT(exchange.lines, IsEmpty());
    EXPECT_EQ(ReadFile(kStreamingSettingsFile), streaming);
    EXPECT_EQ(ReadFile(ServerFile(2)), server);
  }
  EXPECT_THAT(control_.Received(), IsEmpty());
}

TEST_F(StreamInfoTest, WithoutParametersTheHeaderIsBareAndTheServerTheFirst) {
  const Exchange exchange = Serve(Body("SetCldstrmStreamInfoToStrmsrv"),
                                  Answer(ReplyMessage(StreamInfo("url", "key", "title"))));
  EXPECT_THAT(exchange.outcome, Replied(ResultJson("SetCldstrmStreamInfoToStrmsrv")));
  EXPECT_THAT(exchange.messages,
              ElementsAre(Bytes({0, 11, 4, 0, 105, 1, 0, 0}) +
                          Le32(static_cast<std::uint32_t>(exchange.outcome.pid))));
  EXPECT_EQ(ReadFile(ServerFile(0)), ServerSettings("title", "4", "url", "key"));
}

TEST_F(StreamInfoTest, WriteFailuresAreIgnored) {
  const ReadOnly read_only(kSettingsFolder);
  const Exchange exchange =
      Serve(ToServer("0", "2"), Answer(ReplyMessage(StreamInfo("url", "key", "title"))));
  EXPECT_THAT(exchange.outcome, Replied(ResultJson("SetCldstrmStreamInfoToStrmsrv")));
  EXPECT_FALSE(Exists(ServerFile(2)));
  EXPECT_THAT(control_.Received(), ElementsAre(RenewalNotice()));
}

TEST_F(CloudTest, WithoutTheControlDaemonTheStreamInformationIsStoredButNotAnswered) {
  const Exchange exchange =
      Serve(ToServer("0", "2"), Answer(ReplyMessage(StreamInfo("url", "key", "title"))));
  EXPECT_THAT(exchange.outcome, EndedSilently(1));
  EXPECT_EQ(ReadFile(ServerFile(2)), ServerSettings("title", "4", "url", "key"));
}

}  // namespace
