#include "harness/remote_events.h"
#include "remote_test.h"

// Keys and buttons: two names become two codes.

namespace {

using namespace harness;
using testing::ElementsAre;
using testing::IsEmpty;

class RemoteKeysTest : public RemoteTest {};

std::string KindAndKey(const std::string& kind, const std::string& key) {
  return R"("Kind":")" + kind + R"(","Key":")" + key + '"';
}

TEST_F(RemoteKeysTest, EveryKeyOfEveryKindSendsItsCodes) {
  for (const RemoteEventRow& row : kRemoteEventRows) {
    if (row.kind_code == 0) {
      continue;
    }
    const std::string params = KindAndKey(row.kind, row.key);
    SCOPED_TRACE(params);
    const Exchange exchange = Serve(Body("SetWebKeyEvent", params));
    EXPECT_THAT(exchange.outcome, Replied(ResultJson("SetWebKeyEvent")));
    EXPECT_THAT(exchange.messages, ElementsAre(Message(5, 2, 17, exchange.outcome.pid,
                                                       Bytes({row.kind_code, row.key_code}))));
    EXPECT_THAT(exchange.lines,
                testing::Contains(Info("command Hit!!! eventTable[" + std::to_string(row.row) +
                                       "] kind=" + row.kind + " button=" + row.key)));
  }
}

TEST_F(RemoteKeysTest, AKeyIsSentByteByByte) {
  const Exchange exchange = Serve(Body("SetWebKeyEvent", R"("Kind":"Iris","Key":"Close3")"));
  EXPECT_THAT(exchange.messages,
              ElementsAre(Bytes({0, 5, 2, 0, 17, 0, 0, 0}) +
                          Le32(static_cast<std::uint32_t>(exchange.outcome.pid)) + Bytes({3, 7})));
}

TEST_F(RemoteKeysTest, AKeyLogsParametersRowAndCodes) {
  const std::string params = R"("Kind":"Iris","Key":"Close3")";
  EXPECT_EQ(Serve(Body("SetWebKeyEvent", params)).lines,
            Answered("SetWebKeyEvent", params,
                     {Info("##### SetWebKeyEvent Parse() params=" + Tail(params)),
                      Info("command Hit!!! eventTable[11] kind=Iris button=Close3"),
                      Info("send param kind=Iris(3) key=Close3(7)")}));
}

TEST_F(RemoteKeysTest, AButtonSendsTheCodesOfKindAndButton) {
  ExpectSent("SetWebButtonEvent", 17,
             {{"user button", R"("Kind":"User","Button":"LensRet")", Bytes({10, 11})},
              {"menu button", R"("Kind":"Disptv","Button":"Cancel")", Bytes({12, 1})}});
}

TEST_F(RemoteKeysTest, AButtonLogsParametersRowAndCodes) {
  const std::string params = R"("Kind":"Gain","Button":"Lolux")";
  EXPECT_EQ(Serve(Body("SetWebButtonEvent", params)).lines,
            Answered("SetWebButtonEvent", params,
                     {Info("##### SetWebButtonEvent Parse() params=" + Tail(params)),
                      Info("command Hit!!! eventTable[15] kind=Gain button=Lolux"),
                      Info("send param kind=Gain(4) button=Lolux(5)")}));
}

TEST_F(RemoteKeysTest, AKindInLowerCaseIsRefusedWithAMissAtTheEndRow) {
  ExpectRefused("SetWebKeyEvent", {{"kind in lower case", R"("Kind":"iris","Key":"Close3")"}});
  const std::string params = R"("Kind":"iris","Key":"Close3")";
  EXPECT_EQ(Serve(Body("SetWebKeyEvent", params)).lines,
            Refused("SetWebKeyEvent", params,
                    {Info("##### SetWebKeyEvent Parse() params=" + Tail(params)),
                     Info("command Request is None!!! eventTable[133] kind=None button=None")}));
}

TEST_F(RemoteKeysTest, TheEndRowIsHitButRefused) {
  const std::string params = R"("Kind":"None","Key":"None")";
  const Exchange exchange = Serve(Body("SetWebKeyEvent", params));
  EXPECT_THAT(exchange.outcome, Replied(ErrorJson("RequestedError")));
  EXPECT_THAT(exchange.messages, IsEmpty());
  EXPECT_EQ(exchange.lines,
            Refused("SetWebKeyEvent", params,
                    {Info("##### SetWebKeyEvent Parse() params=" + Tail(params)),
                     Info("command Hit!!! eventTable[133] kind=None button=None")}));
}

TEST_F(RemoteKeysTest, TheMenuHasKeysOfTwoKindCodes) {
  ExpectSent("SetWebKeyEvent", 17,
             {{"menu key", R"("Kind":"Menu","Key":"Up")", Bytes({12, 3})},
              {"display key", R"("Kind":"Menu","Key":"Display")", Bytes({11, 5})}});
}

TEST_F(RemoteKeysTest, ABarIsPressedWithAnEmptyKey) {
  ExpectSent("SetWebKeyEvent", 17, {{"bar", R"("Kind":"ZoomBar","Key":"")", Bytes({17, 255})}});
}

TEST_F(RemoteKeysTest, NamesMayBeAnywhereInTheParameters) {
  ExpectSent("SetWebKeyEvent", 17,
             {{"key first", R"("Key":"Tele3","Kind":"Zoom")", Bytes({8, 2})},
              {"other members", R"("A":1,"Kind":"Zoom","B":"x","Key":"Wide1")", Bytes({8, 3})},
              {"unquoted", R"("Kind":Zoom,"Key":Wide1)", Bytes({8, 3})}});
}

TEST_F(RemoteKeysTest, UnknownPairsAreRefused) {
  ExpectRefused("SetWebKeyEvent",
                {{"key of another kind", R"("Kind":"Rec","Key":"Close3")"},
                 {"prefix of a key", R"("Kind":"Iris","Key":"Close")"},
                 {"empty key of a kind with keys", R"("Kind":"Iris","Key":"")"},
                 {"empty kind", R"("Kind":"","Key":"Close3")"},
                 {"lens return as the status report spells it", R"("Kind":"User","Key":"LenzRet")"},
                 {"key with a tail", R"("Kind":"Iris","Key":"Close3\t")"}});
  ExpectRefused("SetWebButtonEvent", {{"unknown button", R"("Kind":"User","Button":"Sw12")"},
                                      {"none", R"("Kind":"None","Button":"None")"}});
}

TEST_F(RemoteKeysTest, UnknownNamesOfAnyLengthAreRefused) {
  for (const std::size_t length : {29U, 30U, 31U, 32U, 4999U, 5000U, 20000U}) {
    SCOPED_TRACE(length);
    const std::string name(length, 'x');
    const Exchange exchange = Serve(Body("SetWebKeyEvent", KindAndKey(name, name)));
    EXPECT_THAT(exchange.outcome, Replied(ErrorJson("RequestedError")));
    EXPECT_THAT(exchange.messages, IsEmpty());
  }
}

TEST_F(RemoteKeysTest, MissingNamesAreRefusedAndLogged) {
  const struct {
    const char* what;
    const char* command;
    const char* params;
    const char* missing;
  } cases[] = {
      {"no kind", "SetWebKeyEvent", R"("Key":"Close3")", "Kind"},
      {"no key", "SetWebKeyEvent", R"("Kind":"Iris")", "Key"},
      {"neither: the kind is read first", "SetWebKeyEvent", R"("A":1)", "Kind"},
      {"a button instead of a key", "SetWebKeyEvent", R"("Kind":"Iris","Button":"Close3")", "Key"},
      {"no kind", "SetWebButtonEvent", R"("Button":"Close3")", "Kind"},
      {"no button", "SetWebButtonEvent", R"("Kind":"Iris")", "Button"},
      {"neither: the kind is read first", "SetWebButtonEvent", R"("A":1)", "Kind"},
      {"a key instead of a button", "SetWebButtonEvent", R"("Kind":"Iris","Key":"Close3")",
       "Button"},
      {"no word", "SetIFBCtrl", R"("A":1)", "Streaming"},
      {"no word", "SetStreamingCtrl", R"("A":1)", "Streaming"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(std::string(row.command) + ": " + row.what);
    const Exchange exchange = Serve(Body(row.command, row.params));
    EXPECT_THAT(exchange.outcome, Replied(ErrorJson("RequestedError")));
    EXPECT_THAT(exchange.messages, IsEmpty());
    EXPECT_EQ(
        exchange.lines,
        Refused(row.command, row.params,
                {Info(std::string("##### ") + row.command + " Parse() params=" + Tail(row.params)),
                 NotFound(row.missing)}));
  }
}

TEST_F(RemoteKeysTest, TheSystemRequestHasOneWord) {
  ExpectSent("SystemRequest", 17, {{"resume", R"("Request":"Resume")", Bytes({30, 0})}});
  ExpectRefused("SystemRequest", {{"lower case", R"("Request":"resume")"},
                                  {"unknown word", R"("Request":"Suspend")"},
                                  {"empty word", R"("Request":"")"},
                                  {"number", R"("Request":0)"},
                                  {"key of another kind", R"("Request":"Start")"}});
}

TEST_F(RemoteKeysTest, TheSystemRequestLogsNoParameters) {
  const std::string params = R"("Request":"Resume")";
  EXPECT_EQ(Serve(Body("SystemRequest", params)).lines,
            Answered("SystemRequest", params,
                     {Info("##### SystemRequest Parse()"),
                      Info("command Hit!!! eventTable[132] kind=System button=Resume"),
                      Info("send param kind=System(30) button=Resume(0)")}));
}

TEST_F(RemoteKeysTest, TheSystemRequestWithoutItsWordIsRefusedAndLogged) {
  const std::string params = R"("A":1)";
  const Exchange exchange = Serve(Body("SystemRequest", params));
  EXPECT_THAT(exchange.outcome, Replied(ErrorJson("RequestedError")));
  EXPECT_THAT(exchange.messages, IsEmpty());
  EXPECT_EQ(exchange.lines, Refused("SystemRequest", params,
                                    {Info("##### SystemRequest Parse()"), NotFound("Request")}));
}

TEST_F(RemoteKeysTest, StreamingStartsOnlyOnTheWordOn) {
  ExpectSent("SetStreamingCtrl", 17,
             {{"on", R"("Streaming":"On")", Bytes({13, 0})},
              {"off", R"("Streaming":"Off")", Bytes({13, 1})},
              {"start stops", R"("Streaming":"Start")", Bytes({13, 1})},
              {"lower case stops", R"("Streaming":"on")", Bytes({13, 1})},
              {"longer word stops", R"("Streaming":"On!")", Bytes({13, 1})},
              {"empty word stops", R"("Streaming":"")", Bytes({13, 1})},
              {"number stops", R"("Streaming":1)", Bytes({13, 1})}});
}

TEST_F(RemoteKeysTest, StreamingLogsNoCodes) {
  const std::string on = R"("Streaming":"On")";
  EXPECT_EQ(Serve(Body("SetStreamingCtrl", on)).lines,
            Answered("SetStreamingCtrl", on,
                     {Info("##### SetStreamingCtrl Parse() params=" + Tail(on)),
                      Info("command Hit!!! eventTable[108] kind=Streaming button=Start")}));
  const std::string start = R"("Streaming":"Start")";
  EXPECT_EQ(Serve(Body("SetStreamingCtrl", start)).lines,
            Answered("SetStreamingCtrl", start,
                     {Info("##### SetStreamingCtrl Parse() params=" + Tail(start)),
                      Info("command Hit!!! eventTable[109] kind=Streaming button=Stop")}));
}

TEST_F(RemoteKeysTest, ReturnAudioStartsOnlyOnTheWordStart) {
  ExpectSent("SetIFBCtrl", 17,
             {{"start", R"("Streaming":"Start")", Bytes({24, 0})},
              {"stop", R"("Streaming":"Stop")", Bytes({24, 1})},
              {"on stops", R"("Streaming":"On")", Bytes({24, 1})},
              {"lower case stops", R"("Streaming":"start")", Bytes({24, 1})},
              {"longer word stops", R"("Streaming":"Started")", Bytes({24, 1})},
              {"empty word stops", R"("Streaming":"")", Bytes({24, 1})}});
}

TEST_F(RemoteKeysTest, ReturnAudioLogsNoCodes) {
  const std::string start = R"("Streaming":"Start")";
  EXPECT_EQ(Serve(Body("SetIFBCtrl", start)).lines,
            Answered("SetIFBCtrl", start,
                     {Info("##### SetIFBCtrl Parse() params=" + Tail(start)),
                      Info("command Hit!!! eventTable[110] kind=IFBStreaming button=Start")}));
  const std::string on = R"("Streaming":"On")";
  EXPECT_EQ(Serve(Body("SetIFBCtrl", on)).lines,
            Answered("SetIFBCtrl", on,
                     {Info("##### SetIFBCtrl Parse() params=" + Tail(on)),
                      Info("command Hit!!! eventTable[111] kind=IFBStreaming button=Stop")}));
}

}  // namespace
