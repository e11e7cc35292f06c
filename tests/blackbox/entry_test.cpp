#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "harness/camera_test.h"

// How a request is read: method, length, body, required members.

namespace {

using namespace harness;
using namespace std::chrono_literals;

constexpr char kNoCommandLine[] = "error: json_parser() key [Command] does not appear\n";
constexpr char kNoSessionLine[] = "error: json_parser() key [SessionID] does not appear\n";

std::string FormatErrorLine(const std::string& body, int members) {
  return "format error post data:" + body + " json member num:" + std::to_string(members);
}

std::string SystemInfoJson() {
  return "{\"Response\":{\"Requested\":\"GetSystemInfo\",\"Result\":\"Success\",\"Data\":{"
         "\"Model\":\"RV130/140\",\"Destination\":\"JP\",\"ApiVersion\":\"1.08.0\","
         "\"Serial\":\"\"}}}";
}

class EntryTest : public CameraTest {};

TEST_F(EntryTest, AnswersAPostWithHeaderAndJson) {
  const Outcome outcome = Post(Body("GetSystemInfo"));
  EXPECT_EQ(outcome.output,
            "Content-type: application/json\nPragma: no-cache\nCache-Control: no-cache\n"
            "Expires: Thu, 01 Dec 1994 16:00:00 GMT\nContent-Length:143\n\n" +
                SystemInfoJson());
  EXPECT_EQ(outcome.exit_status, 0);
  EXPECT_EQ(outcome.errors, "");
}

TEST_F(EntryTest, PrintsNothingWithoutTheMethodPost) {
  const FakeDaemon daemon;
  const std::string body = Body("MonitorStart");
  EXPECT_THAT(RunHandler(Request(body).Remove("REQUEST_METHOD")), EndedSilently(1));
  for (const char* const method : {"GET", "PUT", "HEAD", "post", "Post", "POST ", " POST", ""}) {
    SCOPED_TRACE(method);
    EXPECT_THAT(RunHandler(Request(body).Set("REQUEST_METHOD", method)), EndedSilently(1));
  }
  EXPECT_THAT(log_.Lines(), Logged());
}

TEST_F(EntryTest, RequestsWithoutPostReachNoDaemon) {
  FakeDaemon daemon;
  RunHandler(Request(Body("MonitorStart")).Set("REQUEST_METHOD", "GET"));
  EXPECT_THAT(daemon.Received(), testing::IsEmpty());
}

TEST_F(EntryTest, IgnoresArgumentsOfAWebServer) {
  const Outcome outcome =
      RunHandler(Request(Body("GetSystemInfo")).Arguments({"20", "a", "5", "10"}));
  EXPECT_THAT(outcome, Replied(SystemInfoJson()));
  EXPECT_THAT(log_.Lines(), Logged());
}

TEST_F(EntryTest, IgnoresArgumentsWhenTheGatewayVariableIsEmpty) {
  const Outcome outcome =
      RunHandler(Request(Body("GetSystemInfo")).Set("GATEWAY_INTERFACE", "").Arguments({"0"}));
  EXPECT_THAT(outcome, Replied(SystemInfoJson()));
}

TEST_F(EntryTest, ChecksTheMethodAlsoWithArgumentsOfAWebServer) {
  const Outcome outcome = RunHandler(Request("").Set("REQUEST_METHOD", "GET").Arguments({"0"}));
  EXPECT_THAT(outcome, EndedSilently(1));
  EXPECT_THAT(log_.Lines(), Logged());
}

TEST_F(EntryTest, NeedsNoGatewayVariableWithoutArguments) {
  const Outcome outcome = RunHandler(Request(Body("GetSystemInfo")).Remove("GATEWAY_INTERFACE"));
  EXPECT_THAT(outcome, Replied(SystemInfoJson()));
}

class ContentLengthTest : public CameraTest {};

TEST_F(ContentLengthTest, WithoutALengthTheBodyIsEmpty) {
  const Outcome outcome = RunHandler(Request(Body("GetSystemInfo")).Remove("CONTENT_LENGTH"));
  EXPECT_THAT(outcome, Replied("{\"Response\":{\"Result\":\"FormatError\"}}"));
  EXPECT_THAT(log_.Lines(), Logged(Error(kNoCommandLine), Error(kNoSessionLine),
                                   Error("format error post data: json member num:0")));
}

TEST_F(ContentLengthTest, LengthsThatAreNotPositiveNumbersCountAsZero) {
  for (const char* const length : {"", "0", "abc", "-1", "-90", "-99999999999", "x90", "--90"}) {
    SCOPED_TRACE(length);
    const Outcome outcome =
        RunHandler(Request(Body("GetSystemInfo")).Set("CONTENT_LENGTH", length));
    EXPECT_THAT(outcome, Replied("{\"Response\":{\"Result\":\"FormatError\"}}"));
    EXPECT_THAT(log_.TakeLines(), Logged(Error(kNoCommandLine), Error(kNoSessionLine),
                                         Error("format error post data: json member num:0")));
  }
}

TEST_F(ContentLengthTest, NumbersMayHaveABlankAndASignBeforeAndTextAfterThem) {
  const std::string body = Body("GetSystemInfo");
  const std::string length = std::to_string(body.size());
  for (const std::string& text : {"+" + length, " \t" + length, length + "abc", "000" + length}) {
    SCOPED_TRACE(text);
    EXPECT_THAT(RunHandler(Request(body).Set("CONTENT_LENGTH", text)), Replied(SystemInfoJson()));
  }
}

TEST_F(ContentLengthTest, ShorterThanTheBodyTruncatesIt) {
  const Outcome outcome = RunHandler(Request(Body("GetSystemInfo")).Set("CONTENT_LENGTH", "38"));
  EXPECT_THAT(outcome, Replied("{\"Response\":{\"Result\":\"FormatError\"}}"));
  EXPECT_THAT(log_.Lines(),
              Logged(Error(kNoSessionLine),
                     Error("format error post data:{\"Request\":{\"Command\":\"GetSystemInfo\","
                           " json member num:1")));
}

TEST_F(ContentLengthTest, OneByteShortOfTheBodyLosesOnlyThatByte) {
  const std::string body = Body("GetSystemInfo");
  const Outcome outcome =
      RunHandler(Request(body).Set("CONTENT_LENGTH", std::to_string(body.size() - 1)));
  EXPECT_THAT(outcome, Replied(SystemInfoJson()));
}

TEST_F(ContentLengthTest, LongerThanTheBodyEndsWithTheInput) {
  for (const char* const length : {"200", "5000", "100000"}) {
    SCOPED_TRACE(length);
    EXPECT_THAT(RunHandler(Request(Body("GetSystemInfo")).Set("CONTENT_LENGTH", length)),
                Replied(SystemInfoJson()));
  }
}

TEST_F(ContentLengthTest, MemoryGrowsWithWhatArrivesNotWithWhatIsAnnounced) {
  for (const char* const length : {"2147483647", "2147483648", "4294967296", "99999999999999"}) {
    SCOPED_TRACE(length);
    const Outcome outcome = RunHandler(
        Request(Body("GetSystemInfo")).Set("CONTENT_LENGTH", length).LimitMemory(64 << 20));
    EXPECT_THAT(outcome, Replied(SystemInfoJson()));
    EXPECT_LT(outcome.elapsed.count(), TimeMargin());
  }
}

class BodyTest : public CameraTest {};

TEST_F(BodyTest, ReadsNoFurtherThanTheLengthWhenTheInputStaysOpen) {
  const Outcome outcome =
      RunHandler(Request(Body("GetSystemInfo")).StandardInput(Input::kHeldOpen));
  EXPECT_THAT(outcome, Replied(SystemInfoJson()));
  EXPECT_LT(outcome.elapsed.count(), TimeMargin());
}

TEST_F(BodyTest, ReadsNoFurtherThanTheLengthOfAnEndlessInput) {
  const Outcome outcome = RunHandler(Request(Body("GetSystemInfo")).StandardInput(Input::kEndless));
  EXPECT_THAT(outcome, Replied(SystemInfoJson()));
  EXPECT_LT(outcome.elapsed.count(), TimeMargin());
}

TEST_F(BodyTest, OfAnEndlessInputIsTruncated) {
  const Outcome outcome = RunHandler(Request(Body("GetSystemInfo"))
                                         .Set("CONTENT_LENGTH", "2147483647")
                                         .StandardInput(Input::kEndless)
                                         .LimitMemory(std::size_t{64} << 20));
  EXPECT_THAT(outcome, Replied(SystemInfoJson()));
  EXPECT_LT(outcome.elapsed.count(), TimeMargin());
}

TEST_F(BodyTest, OfWhiteSpaceWithoutEndIsEmpty) {
  const Outcome outcome =
      RunHandler(Request("").Set("CONTENT_LENGTH", "100").StandardInput(Input::kEndlessBlanks));
  EXPECT_THAT(outcome, Replied("{\"Response\":{\"Result\":\"FormatError\"}}"));
  EXPECT_THAT(log_.Lines(), Logged(Error(kNoCommandLine), Error(kNoSessionLine),
                                   Error("format error post data: json member num:0")));
  EXPECT_LT(outcome.elapsed.count(), TimeMargin());
}

constexpr auto kAtOnce = std::chrono::milliseconds::zero();

/// A client that stops sending but keeps the connection open.
struct StalledInput {
  const char* name;
  std::string sent;
  std::chrono::milliseconds pause;  // before each byte
  std::string reply;
  LogLines lines;
};

const std::vector<StalledInput>& StalledInputs() {
  const std::string body = Body("GetSystemInfo");
  const std::string format_error = "{\"Response\":{\"Result\":\"FormatError\"}}";
  static const std::vector<StalledInput> inputs = {
      {"Nothing",
       "",
       kAtOnce,
       format_error,
       {Error(kNoCommandLine), Error(kNoSessionLine), Error(FormatErrorLine("", 0))}},
      {"HalfARequest",
       body.substr(0, 38),
       kAtOnce,
       format_error,
       {Error(kNoSessionLine),
        Error(FormatErrorLine("{\"Request\":{\"Command\":\"GetSystemInfo\",", 1))}},
      {"AWholeRequest", body, kAtOnce, SystemInfoJson(), {}},
      // The fourth byte comes with the twelfth second.
      {"AByteNowAndThen",
       body,
       3s,
       format_error,
       {Error(kNoCommandLine), Error(kNoSessionLine), Error(FormatErrorLine("{\"R", 0))}},
  };
  return inputs;
}

class StalledInputTest : public CameraTest, public testing::WithParamInterface<StalledInput> {};

INSTANTIATE_TEST_SUITE_P(Of, StalledInputTest, testing::ValuesIn(StalledInputs()),
                         [](const auto& test) { return test.param.name; });

TEST_P(StalledInputTest, EndsAfter10SecondsInTotal) {
  const StalledInput& input = GetParam();
  Request request(input.sent);
  request.Set("CONTENT_LENGTH", "1000").StandardInput(Input::kHeldOpen).Deadline(20s);
  if (input.pause > kAtOnce) {
    request.InPieces(1, input.pause);
  }
  const Outcome outcome = RunHandler(request);
  EXPECT_THAT(outcome, Replied(input.reply));
  EXPECT_EQ(log_.Lines(), input.lines);
  EXPECT_GE(outcome.elapsed.count(), 10 - 0.1);
  EXPECT_LT(outcome.elapsed.count(), 10 * 9 / 8.0 + TimeMargin());
}

TEST_F(BodyTest, ArrivesInPieces) {
  const Outcome outcome = RunHandler(Request(Body("GetSystemInfo")).InPieces(1, 2ms));
  EXPECT_THAT(outcome, Replied(SystemInfoJson()));
}

TEST_F(BodyTest, IsEmptyWithoutAnInput) {
  const Outcome outcome = RunHandler(Request(Body("GetSystemInfo")).StandardInput(Input::kClosed));
  EXPECT_THAT(outcome, Replied("{\"Response\":{\"Result\":\"FormatError\"}}"));
  EXPECT_THAT(log_.Lines(), Logged(Error(kNoCommandLine), Error(kNoSessionLine),
                                   Error("format error post data: json member num:0")));
}

TEST_F(BodyTest, LeadingWhiteSpaceIsSkipped) {
  EXPECT_THAT(Post(" \t\r\n\v\f" + Body("GetSystemInfo")), Replied(SystemInfoJson()));
}

TEST_F(BodyTest, LeadingWhiteSpaceDoesNotCountForTheLength) {
  const std::string body = Body("GetSystemInfo");
  const Outcome outcome =
      RunHandler(Request("\n\n   " + body).Set("CONTENT_LENGTH", std::to_string(body.size())));
  EXPECT_THAT(outcome, Replied(SystemInfoJson()));
}

TEST_F(BodyTest, OfOnlyWhiteSpaceIsEmpty) {
  EXPECT_THAT(Post("  \n\t "), Replied("{\"Response\":{\"Result\":\"FormatError\"}}"));
  EXPECT_THAT(log_.Lines(), Logged(Error(kNoCommandLine), Error(kNoSessionLine),
                                   Error("format error post data: json member num:0")));
}

TEST_F(BodyTest, EndsAtTheFirstWhiteSpace) {
  for (const char* const space : {" ", "\t", "\n", "\r", "\v", "\f"}) {
    SCOPED_TRACE(testing::PrintToString(space));
    const std::string body = std::string("{\"Request\":{\"Command\":") + space +
                             "\"GetSystemInfo\",\"SessionID\":\"" + kSession + "\"}}";
    EXPECT_THAT(Post(body), Replied("{\"Response\":{\"Result\":\"FormatError\"}}"));
    EXPECT_THAT(log_.TakeLines(),
                Logged(Error("error: json_parser() buffer over 22/22\n"), Error(kNoSessionLine),
                       Error(FormatErrorLine("{\"Request\":{\"Command\":", 0))));
  }
}

TEST_F(BodyTest, DoesNotEndAtOtherControlAndHighBytes) {
  WriteSession("a\x01\x7f\x80\xffz");
  EXPECT_THAT(Post(BodyWithSession("GetSystemInfo", "a\x01\x7f\x80\xffz")),
              Replied(SystemInfoJson()));
}

TEST_F(BodyTest, EndsAtWhiteSpaceAfterTheRequest) {
  EXPECT_THAT(Post(Body("GetSystemInfo") + "\r\n"), Replied(SystemInfoJson()));
  EXPECT_THAT(RunHandler(Request(Body("GetSystemInfo") + "\n")
                             .Set("CONTENT_LENGTH", "1000")
                             .StandardInput(Input::kHeldOpen)),
              Replied(SystemInfoJson()));
}

TEST_F(BodyTest, EndsAtANul) {
  EXPECT_THAT(Post(Body("GetSystemInfo") + Bytes({0, 'x', 'y'})), Replied(SystemInfoJson()));
  EXPECT_THAT(Post("{\"Request\":{\"Command\":\"GetSystemInfo\"," + Bytes({0}) +
                   "\"SessionID\":\"" + kSession + "\"}}"),
              Replied("{\"Response\":{\"Result\":\"FormatError\"}}"));
  EXPECT_THAT(log_.Lines(),
              Logged(Error(kNoSessionLine),
                     Error(FormatErrorLine("{\"Request\":{\"Command\":\"GetSystemInfo\",", 1))));
}

TEST_F(BodyTest, MayBeAMegabyteLong) {
  const std::string params = "\"Filler\":\"" + std::string(1 << 20, 'x') + "\"";
  EXPECT_THAT(Post(Body("GetSystemInfo", params)), Replied(SystemInfoJson()));
}

class RequiredMembersTest : public CameraTest {};

TEST_F(RequiredMembersTest, TheCommandMayFollowTheSession) {
  const std::string body = std::string("{\"Request\":{\"SessionID\":\"") + kSession +
                           "\",\"Command\":\"GetSystemInfo\"}}";
  EXPECT_THAT(Post(body), Replied(SystemInfoJson()));
}

TEST_F(RequiredMembersTest, RequestsWithoutASessionCountOneMember) {
  const std::string body = BodyWithoutSession("GetSystemInfo");
  EXPECT_THAT(Post(body), Replied("{\"Response\":{\"Result\":\"FormatError\"}}"));
  EXPECT_THAT(log_.Lines(), Logged(Error(kNoSessionLine), Error(FormatErrorLine(body, 1))));
}

TEST_F(RequiredMembersTest, RequestsWithoutACommandCountOneMember) {
  const std::string body = "{\"Request\":{\"SessionID\":\"5f0c2a9e71d4\"}}";
  EXPECT_THAT(Post(body), Replied("{\"Response\":{\"Result\":\"FormatError\"}}"));
  EXPECT_THAT(log_.Lines(), Logged(Error(kNoCommandLine), Error(FormatErrorLine(body, 1))));
}

TEST_F(RequiredMembersTest, RequestsWithNeitherCountNone) {
  EXPECT_THAT(Post("{\"Request\":{}}"), Replied("{\"Response\":{\"Result\":\"FormatError\"}}"));
  EXPECT_THAT(log_.Lines(), Logged(Error(kNoCommandLine), Error(kNoSessionLine),
                                   Error(FormatErrorLine("{\"Request\":{}}", 0))));
}

TEST_F(RequiredMembersTest, AFormatErrorNeedsNoSessionFile) {
  ResetPrivateWorld();
  EXPECT_THAT(Post("x"), Replied("{\"Response\":{\"Result\":\"FormatError\"}}"));
}

TEST_F(RequiredMembersTest, TheKeyIsFoundInsideAnotherName) {
  const std::string body =
      std::string("{\"Request\":{\"MyCommand\":\"GetSystemInfo\",\"Command\":\"Other\",") +
      "\"SessionID\":\"" + kSession + "\"}}";
  EXPECT_THAT(Post(body), Replied(SystemInfoJson()));
}

class OutputTest : public CameraTest {
 protected:
  FakeDaemon daemon_{Answer(ReplyMessage(Bytes({0})))};
};

// No socket may take the number of a closed standard stream and receive the output.
TEST_F(OutputTest, WithoutADescriptorNothingElseReceivesTheReply) {
  const std::string body = Body("MonitorStart");
  const Outcome outcome = RunHandler(Request(body).StandardOutput(Output::kClosed));
  EXPECT_EQ(outcome.signal, 0);
  EXPECT_THAT(daemon_.Received(), testing::ElementsAre(Message(5, 0, 5, outcome.pid)));
  EXPECT_THAT(log_.Lines(), Logged(Error("rcv post_data = " + body),
                                   Error("send res_str = " + ResultJson("MonitorStart"))));
}

// A reply that cannot be written changes neither what is done nor the exit status.
TEST_F(OutputTest, WithoutRoomOrReaderOnlyTheReplyIsLost) {
  const std::string start = Body("MonitorStart");
  const std::string renewal = Body("SessionRenewal", "\"Refresh\":1");
  const std::string canned = BodyWithoutSession("MonitorStart");
  const LogLine sent = Error("send res_str = " + ResultJson("MonitorStart"));
  const struct {
    const char* description;
    Request request;
    int exit_status;
    LogLines before;
    LogLines after;
  } rows[] = {
      {"a result", Request(start), 0, {Error("rcv post_data = " + start)}, {sent}},
      {"data", Request(Body("GetSystemInfo")), 0, {}, {}},
      {"an unknown command", Request(Body("X")), 1, {Error("command error = X")}, {}},
      {"a refusal",
       Request(renewal),
       0,
       {Error("rcv post_data = " + renewal),
        Info("##### SessionRenewal Parse() params={\"Refresh\":1}}}"),
        Error("error: json_parser() key [Update] does not appear\n"),
        Error("requested error ret=-1, params=\"Params\":{\"Refresh\":1}}}")},
       {}},
      {"no session",
       Request(BodyWithSession("MonitorStart", "x")),
       0,
       {Error(std::string("session error web:[x] server:[") + kSession + "]")},
       {}},
      {"no request",
       Request(""),
       0,
       {Error(kNoCommandLine), Error(kNoSessionLine), Error(FormatErrorLine("", 0))},
       {}},
      {"the command line",
       Request::CommandLine({"5"}),
       0,
       {Info("INPUT_COMMAND(5):" + canned), Error("CMD post_data = " + canned),
        Error("rcv post_data = " + canned)},
       {sent}},
  };
  for (const Output output : {Output::kClosed, Output::kFull, Output::kNoReader}) {
    for (const auto& row : rows) {
      SCOPED_TRACE(row.description);
      Request request = row.request;
      EXPECT_THAT(RunHandler(request.StandardOutput(output)), EndedSilently(row.exit_status));
      LogLines lines = row.before;
      if (output != Output::kClosed) {
        lines.push_back(Error("cannot write the reply"));
      }
      lines.insert(lines.end(), row.after.begin(), row.after.end());
      EXPECT_EQ(log_.TakeLines(), lines);
    }
  }
  EXPECT_EQ(daemon_.Received().size(), 6U);  // twice for each kind of output
}

TEST_F(OutputTest, RequestsAtTheSameTimeDoNotDisturbEachOther) {
  std::vector<std::thread> clients;
  for (int client = 0; client < 8; ++client) {
    clients.emplace_back(
        [] { EXPECT_THAT(Post(Body("MonitorStart")), Replied(ResultJson("MonitorStart"))); });
  }
  for (std::thread& client : clients) {
    client.join();
  }
  EXPECT_EQ(daemon_.Received().size(), 8U);
}

}  // namespace
