#include <cstdio>

#include "remote_test.h"

// Tally lamps and studio tally.

namespace {

using namespace harness;
using testing::ElementsAre;
using testing::IsEmpty;

class RemoteTallyTest : public RemoteTest {};

TEST_F(RemoteTallyTest, ThePriorityTakesEveryTallyKey) {
  ExpectSent("SetTallyLampPriority", 17,
             {{"camera", R"("Priority":"Camera")", Bytes({14, 0})},
              {"web", R"("Priority":"Web")", Bytes({14, 1})},
              {"on", R"("Priority":"On")", Bytes({14, 2})},
              {"off", R"("Priority":"Off")", Bytes({14, 3})},
              {"on with control", R"("Priority":"OnWeb")", Bytes({14, 4})},
              {"off with control", R"("Priority":"OffWeb")", Bytes({14, 5})}});
  ExpectRefused("SetTallyLampPriority", {{"lower case", R"("Priority":"web")"},
                                         {"empty word", R"("Priority":"")"},
                                         {"studio tally key", R"("Priority":"Program")"}});
}

TEST_F(RemoteTallyTest, ThePriorityLogsItsWordInsteadOfTheParameters) {
  const std::string params = R"("Priority":"Web")";
  EXPECT_EQ(Serve(Body("SetTallyLampPriority", params)).lines,
            Answered("SetTallyLampPriority", params,
                     {Info("##### SetTallyLampPriority Parse() m_priority=Web"),
                      Info("command Hit!!! eventTable[100] kind=Tally button=Web"),
                      Info("send param kind=Tally(14) button=Web(1)")}));
}

TEST_F(RemoteTallyTest, ThePriorityKeeps30CharactersOfItsWord) {
  const std::string params = R"("Priority":"0123456789012345678901234567890123")";
  EXPECT_EQ(Serve(Body("SetTallyLampPriority", params)).lines,
            Refused("SetTallyLampPriority", params,
                    {Info("##### SetTallyLampPriority Parse() "
                          "m_priority=012345678901234567890123456789"),
                     Info("command Request is None!!! eventTable[133] kind=None button=None")}));
}

TEST_F(RemoteTallyTest, ThePriorityLogsNothingOfItsOwnBeforeReading) {
  const std::string params = R"("Sw":"Web")";
  const Exchange exchange = Serve(Body("SetTallyLampPriority", params));
  EXPECT_THAT(exchange.outcome, Replied(ErrorJson("RequestedError")));
  EXPECT_THAT(exchange.messages, IsEmpty());
  EXPECT_EQ(exchange.lines, Refused("SetTallyLampPriority", params, {NotFound("Priority")}));
}

TEST_F(RemoteTallyTest, TheLampTakesEveryTallyKey) {
  ExpectSent("SetTallyLampCtrl", 17,
             {{"on", R"("Sw":"On")", Bytes({14, 2})},
              {"off", R"("Sw":"Off")", Bytes({14, 3})},
              {"camera", R"("Sw":"Camera")", Bytes({14, 0})},
              {"web", R"("Sw":"Web")", Bytes({14, 1})},
              {"on with control", R"("Sw":"OnWeb")", Bytes({14, 4})},
              {"off with control", R"("Sw":"OffWeb")", Bytes({14, 5})}});
  ExpectRefused("SetTallyLampCtrl", {{"lower case", R"("Sw":"on")"},
                                     {"empty word", R"("Sw":"")"},
                                     {"studio tally key", R"("Sw":"Preview")"}});
}

TEST_F(RemoteTallyTest, TheLampLogsNoCodes) {
  const std::string params = R"("Sw":"Off")";
  EXPECT_EQ(Serve(Body("SetTallyLampCtrl", params)).lines,
            Answered("SetTallyLampCtrl", params,
                     {Info("##### SetTallyLampCtrl Parse() params=" + Tail(params)),
                      Info("command Hit!!! eventTable[102] kind=Tally button=Off")}));
}

TEST_F(RemoteTallyTest, TheLampWithControlAppendsWebToItsWord) {
  ExpectSent("SetTallyControlWithPriority", 17,
             {{"on", R"("Sw":"On")", Bytes({14, 4})},
              {"off", R"("Sw":"Off")", Bytes({14, 5})},
              {"an empty word becomes Web", R"("Sw":"")", Bytes({14, 1})}});
  ExpectRefused("SetTallyControlWithPriority",
                {{"Web appended twice", R"("Sw":"OnWeb")"},
                 {"lower case", R"("Sw":"on")"},
                 {"Web with Web", R"("Sw":"Web")"},
                 {"Camera with Web", R"("Sw":"Camera")"},
                 {"30 characters", R"("Sw":"012345678901234567890123456789")"},
                 {"31 characters", R"("Sw":"0123456789012345678901234567890")"},
                 {"60 characters",
                  R"("Sw":"012345678901234567890123456789012345678901234567890123456789")"}});
}

TEST_F(RemoteTallyTest, TheLampWithControlLogsTheWordThatItLookedUp) {
  const std::string params = R"("Sw":"On")";
  EXPECT_EQ(Serve(Body("SetTallyControlWithPriority", params)).lines,
            Answered("SetTallyControlWithPriority", params,
                     {Info("##### SetTallyControlWithPriority Parse() params=" + Tail(params)),
                      Info("command Hit!!! eventTable[103] kind=Tally button=OnWeb"),
                      Info("send param kind=Tally(14) button=OnWeb(4)")}));
}

TEST_F(RemoteTallyTest, TheStudioTallyHasThreeWords) {
  for (const char* const command : {"SetStudioTally", "SetStudioTallyWithoutSession"}) {
    ExpectSent(command, 17,
               {{"off", R"("Indication":"Off")", Bytes({15, 0})},
                {"program", R"("Indication":"Program")", Bytes({15, 1})},
                {"preview", R"("Indication":"Preview")", Bytes({15, 2})}});
    ExpectRefused(command, {{"lower case", R"("Indication":"program")"},
                            {"empty word", R"("Indication":"")"},
                            {"lamp key", R"("Indication":"On")"}});
  }
}

TEST_F(RemoteTallyTest, TheStudioTallyLogsParametersRowAndCodes) {
  const std::string params = R"("Indication":"Program")";
  EXPECT_EQ(Serve(Body("SetStudioTally", params)).lines,
            Answered("SetStudioTally", params,
                     {Info("##### SetStudioTally Parse() params=" + Tail(params)),
                      Info("command Hit!!! eventTable[106] kind=StudioTally button=Program"),
                      Info("send param kind=StudioTally(15) button=Program(1)")}));
}

TEST_F(RemoteTallyTest, MissingWordsAreRefusedAndLogged) {
  const struct {
    const char* command;
    const char* missing;
  } cases[] = {
      {"SetTallyLampCtrl", "Sw"},
      {"SetTallyControlWithPriority", "Sw"},
      {"SetStudioTally", "Indication"},
  };
  const std::string params = R"("Priority":"On")";
  for (const auto& row : cases) {
    SCOPED_TRACE(row.command);
    const Exchange exchange = Serve(Body(row.command, params));
    EXPECT_THAT(exchange.outcome, Replied(ErrorJson("RequestedError")));
    EXPECT_THAT(exchange.messages, IsEmpty());
    EXPECT_EQ(
        exchange.lines,
        Refused(row.command, params,
                {Info(std::string("##### ") + row.command + " Parse() params=" + Tail(params)),
                 NotFound(row.missing)}));
  }
}

TEST_F(RemoteTallyTest, TheLampWithControlNeedsNoSession) {
  std::remove(kSessionFile);
  const std::string body = BodyWithoutSession("SetTallyControlWithPriority", R"("Sw":"Off")");
  const Exchange exchange = Serve(body);
  EXPECT_THAT(exchange.outcome, Replied(ResultJson("SetTallyControlWithPriority")));
  EXPECT_THAT(exchange.messages,
              ElementsAre(Message(5, 2, 17, exchange.outcome.pid, Bytes({14, 5}))));
  EXPECT_THAT(exchange.lines,
              Logged(Error("rcv post_data = " + body),
                     Info("##### SetTallyControlWithPriority Parse() params={\"Sw\":\"Off\"}}}"),
                     Info("command Hit!!! eventTable[104] kind=Tally button=OffWeb"),
                     Info("send param kind=Tally(14) button=OffWeb(5)"),
                     Error("send res_str = " + ResultJson("SetTallyControlWithPriority"))));
}

TEST_F(RemoteTallyTest, TheStudioTallyWithoutSessionLogsNoRequest) {
  std::remove(kSessionFile);
  WriteFile(kLogLevelFile, "cmd=7\n");
  const Exchange exchange =
      Serve(BodyWithoutSession("SetStudioTallyWithoutSession", R"("Indication":"Preview")"));
  EXPECT_THAT(exchange.outcome, Replied(ResultJson("SetStudioTallyWithoutSession")));
  EXPECT_THAT(exchange.messages,
              ElementsAre(Message(5, 2, 17, exchange.outcome.pid, Bytes({15, 2}))));
  EXPECT_THAT(exchange.lines,
              Logged(Info("##### SetStudioTally Parse() params={\"Indication\":\"Preview\"}}}"),
                     Info("command Hit!!! eventTable[107] kind=StudioTally button=Preview"),
                     Info("send param kind=StudioTally(15) button=Preview(2)"),
                     Error("send res_str = " + ResultJson("SetStudioTallyWithoutSession"))));
}

TEST_F(RemoteTallyTest, RefusalsNeedNoSessionEither) {
  std::remove(kSessionFile);
  const Exchange lamp = Serve(BodyWithoutSession("SetTallyControlWithPriority", R"("Sw":"on")"));
  EXPECT_THAT(lamp.outcome, Replied(ErrorJson("RequestedError")));
  EXPECT_THAT(lamp.messages, IsEmpty());
  const Exchange studio =
      Serve(BodyWithoutSession("SetStudioTallyWithoutSession", R"("Indication":"on")"));
  EXPECT_THAT(studio.outcome, Replied(ErrorJson("RequestedError")));
  EXPECT_THAT(studio.messages, IsEmpty());
}

TEST_F(RemoteTallyTest, AForeignSessionIsIgnoredWhereNoneIsNeeded) {
  for (const char* const command :
       {"SetTallyControlWithPriority", "SetStudioTallyWithoutSession"}) {
    SCOPED_TRACE(command);
    const Exchange exchange =
        Serve(BodyWithSession(command, "another client", R"("Sw":"On","Indication":"Off")"));
    EXPECT_THAT(exchange.messages, testing::SizeIs(1));
  }
}

TEST_F(RemoteTallyTest, TheOtherTallyCommandsNeedASession) {
  const std::string params = R"("Priority":"Web","Sw":"On","Indication":"Off")";
  for (const char* const command : {"SetTallyLampPriority", "SetTallyLampCtrl", "SetStudioTally"}) {
    SCOPED_TRACE(command);
    const Exchange without = Serve(BodyWithoutSession(command, params));
    EXPECT_THAT(without.outcome, Replied(ErrorJson("FormatError")));
    EXPECT_THAT(without.messages, IsEmpty());
    const Exchange foreign = Serve(BodyWithSession(command, "other", params));
    EXPECT_THAT(foreign.outcome, Replied(ErrorJson("SessionError")));
    EXPECT_THAT(foreign.messages, IsEmpty());
  }
}

}  // namespace
