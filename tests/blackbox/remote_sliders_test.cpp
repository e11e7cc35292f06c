#include <utility>

#include "remote_test.h"

// Sliders, the two-axis field and the spring-loaded switches.

namespace {

using namespace harness;
using testing::ElementsAre;
using testing::IsEmpty;

class RemoteSlidersTest : public RemoteTest {};

TEST_F(RemoteSlidersTest, ASliderSendsItsPositionBigEndian) {
  ExpectSent("SetWebSliderEvent", 18,
             {{"300", R"("Kind":"ZoomBar","Position":300)", Bytes({17, 1, 44})},
              {"0", R"("Kind":"FocusBar","Position":0)", Bytes({18, 0, 0})},
              {"255", R"("Kind":"IrisBar","Position":255)", Bytes({19, 0, 255})},
              {"256", R"("Kind":"WhPaintR","Position":256)", Bytes({20, 1, 0})},
              {"65535", R"("Kind":"WhPaintB","Position":65535)", Bytes({21, 255, 255})},
              {"-1", R"("Kind":"WhPaintRB","Position":-1)", Bytes({22, 255, 255})},
              {"-32768", R"("Kind":"ZoomBar","Position":-32768)", Bytes({17, 128, 0})},
              {"quoted", R"("Kind":"ZoomBar","Position":"258")", Bytes({17, 1, 2})}});
}

TEST_F(RemoteSlidersTest, ASliderSendsTheLow16BitsOfItsPosition) {
  ExpectSent("SetWebSliderEvent", 18,
             {{"70000", R"("Kind":"ZoomBar","Position":70000)", Bytes({17, 17, 112})},
              {"65536", R"("Kind":"ZoomBar","Position":65536)", Bytes({17, 0, 0})},
              {"-70000", R"("Kind":"ZoomBar","Position":-70000)", Bytes({17, 238, 144})}});
}

TEST_F(RemoteSlidersTest, ASliderAcceptsWhateverNumberItIsGiven) {
  ExpectSent(
      "SetWebSliderEvent", 18,
      {{"no number", R"("Kind":"ZoomBar","Position":"abc")", Bytes({17, 0, 0})},
       {"empty", R"("Kind":"ZoomBar","Position":"")", Bytes({17, 0, 0})},
       {"digits and a tail", R"("Kind":"ZoomBar","Position":"12abc")", Bytes({17, 0, 12})},
       {"fraction", R"("Kind":"ZoomBar","Position":7.9)", Bytes({17, 0, 7})},
       {"plus sign", R"("Kind":"ZoomBar","Position":+7)", Bytes({17, 0, 7})},
       {"not hexadecimal", R"("Kind":"ZoomBar","Position":0x10)", Bytes({17, 0, 0})},
       {"not octal", R"("Kind":"ZoomBar","Position":010)", Bytes({17, 0, 10})},
       {"beyond 32 bits: 2147483647", R"("Kind":"ZoomBar","Position":99999999999)",
        Bytes({17, 255, 255})},
       {"2^32 saturates, too", R"("Kind":"ZoomBar","Position":4294967296)", Bytes({17, 255, 255})},
       {"below 32 bits: -2147483648", R"("Kind":"ZoomBar","Position":-99999999999)",
        Bytes({17, 0, 0})},
       {"below 64 bits", R"("Kind":"ZoomBar","Position":-99999999999999999999999)",
        Bytes({17, 0, 0})}});
}

TEST_F(RemoteSlidersTest, ASliderTakesTheFirstCodeOfAnyKind) {
  ExpectSent("SetWebSliderEvent", 18,
             {{"a kind with keys", R"("Kind":"Iris","Position":1)", Bytes({3, 0, 1})},
              {"display, not menu", R"("Kind":"Disptv","Position":1)", Bytes({11, 0, 1})},
              {"menu by its display keys", R"("Kind":"Menu","Position":1)", Bytes({11, 0, 1})},
              {"system", R"("Kind":"System","Position":1)", Bytes({30, 0, 1})}});
}

TEST_F(RemoteSlidersTest, ASliderLogsItsPositionByteSwapped) {
  const struct {
    const char* position;
    const char* logged;
  } cases[] = {
      {"300", "11265"},  {"1", "256"}, {"256", "1"},
      {"128", "-32768"}, {"-1", "-1"}, {"70000", "28689"},
  };
  for (const auto& row : cases) {
    const std::string params = std::string(R"("Kind":"ZoomBar","Position":)") + row.position;
    SCOPED_TRACE(params);
    EXPECT_EQ(Serve(Body("SetWebSliderEvent", params)).lines,
              Answered("SetWebSliderEvent", params,
                       {Info("##### SetWebSliderEvent Parse() params=" + Tail(params)),
                        Info("command Hit!!! eventTable[114] kind=ZoomBar"),
                        Info(std::string("send param kind=ZoomBar(17) position=") + row.logged)}));
  }
}

TEST_F(RemoteSlidersTest, ASliderOfAnUnknownKindIsRefusedAndLogged) {
  const std::string unknown = R"("Kind":"zoombar","Position":1)";
  ExpectRefused("SetWebSliderEvent", {{"lower case", R"("Kind":"zoombar","Position":1)"},
                                      {"empty", R"("Kind":"","Position":1)"},
                                      {"end row", R"("Kind":"None","Position":1)"}});
  EXPECT_EQ(Serve(Body("SetWebSliderEvent", unknown)).lines,
            Refused("SetWebSliderEvent", unknown,
                    {Info("##### SetWebSliderEvent Parse() params=" + Tail(unknown)),
                     Info("command Request is None!!! eventTable[133] kind=None")}));
  const std::string none = R"("Kind":"None","Position":1)";
  EXPECT_EQ(Serve(Body("SetWebSliderEvent", none)).lines,
            Refused("SetWebSliderEvent", none,
                    {Info("##### SetWebSliderEvent Parse() params=" + Tail(none)),
                     Info("command Hit!!! eventTable[133] kind=None")}));
}

TEST_F(RemoteSlidersTest, AFieldSendsOneByteForEachAxis) {
  ExpectSent(
      "SetWebXYFieldEvent", 19,
      {{"10 and 20", R"("Kind":"WhPaintRB","XPosition":10,"YPosition":20)", Bytes({22, 10, 20})},
       {"both ends", R"("Kind":"WhPaintRB","XPosition":0,"YPosition":255)", Bytes({22, 0, 255})},
       {"another kind", R"("Kind":"Iris","XPosition":1,"YPosition":2)", Bytes({3, 1, 2})},
       {"X above 255 is cut", R"("Kind":"WhPaintRB","XPosition":300,"YPosition":20)",
        Bytes({22, 44, 20})},
       {"no numbers", R"("Kind":"WhPaintRB","XPosition":"a","YPosition":"")", Bytes({22, 0, 0})}});
}

TEST_F(RemoteSlidersTest, ALargeYSpillsIntoX) {
  ExpectSent("SetWebXYFieldEvent", 19,
             {{"256", R"("Kind":"WhPaintRB","XPosition":10,"YPosition":256)", Bytes({22, 11, 0})},
              {"a bit that X has is not added again",
               R"("Kind":"WhPaintRB","XPosition":11,"YPosition":258)", Bytes({22, 11, 2})},
              {"several bits", R"("Kind":"WhPaintRB","XPosition":10,"YPosition":1280)",
               Bytes({22, 15, 0})},
              {"-1", R"("Kind":"WhPaintRB","XPosition":0,"YPosition":-1)", Bytes({22, 255, 255})},
              {"65536 has no bits in 8 to 15",
               R"("Kind":"WhPaintRB","XPosition":10,"YPosition":65537)", Bytes({22, 10, 1})}});
}

TEST_F(RemoteSlidersTest, AFieldLogsBothAxesTruncatedTo16Bits) {
  const struct {
    const char* what;
    const char* x;
    const char* y;
    const char* logged;
  } cases[] = {
      {"both bytes, the second one high", "10", "20", "5130(x=10,y=20)"},
      {"spill", "10", "256", "11(x=10,y=256)"},
      {"a second byte with the sign bit", "1", "128", "-32767(x=1,y=128)"},
      {"beyond 16 bits", "70000", "0", "112(x=4464,y=0)"},
      {"beyond 15 bits", "40000", "32768", "192(x=-25536,y=-32768)"},
      {"negative", "-2", "-1", "-1(x=-2,y=-1)"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.what);
    const std::string params =
        std::string(R"("Kind":"WhPaintRB","XPosition":)") + row.x + R"(,"YPosition":)" + row.y;
    EXPECT_EQ(
        Serve(Body("SetWebXYFieldEvent", params)).lines,
        Answered("SetWebXYFieldEvent", params,
                 {Info("##### SetWebXYFieldEvent Parse() params=" + Tail(params)),
                  Info("command Hit!!! eventTable[119] kind=WhPaintRB"),
                  Info(std::string("send param kind=WhPaintRB(22) position=") + row.logged)}));
  }
}

TEST_F(RemoteSlidersTest, AFieldOfAnUnknownKindIsRefusedAndLogged) {
  ExpectRefused("SetWebXYFieldEvent",
                {{"unknown kind", R"("Kind":"WhPaint","XPosition":1,"YPosition":1)"},
                 {"end row", R"("Kind":"None","XPosition":1,"YPosition":1)"}});
  const std::string params = R"("Kind":"WhPaint","XPosition":1,"YPosition":1)";
  EXPECT_EQ(Serve(Body("SetWebXYFieldEvent", params)).lines,
            Refused("SetWebXYFieldEvent", params,
                    {Info("##### SetWebXYFieldEvent Parse() params=" + Tail(params)),
                     Info("command Request is None!!! eventTable[133] kind=None")}));
}

TEST_F(RemoteSlidersTest, ASeesawSendsDirectionAndSpeed) {
  ExpectSent(
      "SeesawSwitchOperation", 119,
      {{"focus near", R"("Kind":"FocusSeesaw","Direction":"Near","Speed":5)", Bytes({29, 2, 5})},
       {"focus far", R"("Kind":"FocusSeesaw","Direction":"Far","Speed":8)", Bytes({29, 1, 8})},
       {"zoom wide", R"("Kind":"ZoomSeesaw","Direction":"Wide","Speed":1)", Bytes({26, 1, 1})},
       {"zoom tele", R"("Kind":"ZoomSeesaw","Direction":"Tele","Speed":255)", Bytes({26, 2, 255})},
       {"iris open", R"("Kind":"IrisSeesaw","Direction":"Open","Speed":0)", Bytes({27, 1, 0})},
       {"iris close", R"("Kind":"IrisSeesaw","Direction":"Close","Speed":3)", Bytes({27, 2, 3})},
       {"master black up", R"("Kind":"MasterBlackSeesaw","Direction":"Up","Speed":2)",
        Bytes({28, 1, 2})},
       {"stop", R"("Kind":"MasterBlackSeesaw","Direction":"Stop","Speed":0)", Bytes({28, 0, 0})},
       {"speed 300 is cut", R"("Kind":"FocusSeesaw","Direction":"Near","Speed":300)",
        Bytes({29, 2, 44})},
       {"negative speed", R"("Kind":"FocusSeesaw","Direction":"Near","Speed":-1)",
        Bytes({29, 2, 255})},
       {"no number", R"("Kind":"FocusSeesaw","Direction":"Near","Speed":"fast")",
        Bytes({29, 2, 0})},
       {"any key of any kind", R"("Kind":"Iris","Direction":"Open3","Speed":1)",
        Bytes({3, 4, 1})}});
}

TEST_F(RemoteSlidersTest, ASeesawLogsItsParametersOneByOne) {
  const std::string params = R"("Kind":"FocusSeesaw","Direction":"Near","Speed":300)";
  EXPECT_EQ(Serve(Body("SeesawSwitchOperation", params)).lines,
            Answered("SeesawSwitchOperation", params,
                     {Info("##### SeesawSwitchOperation Parse() Kind=FocusSeesaw dir=Near "
                           "Spead=300"),
                      Info("command Hit!!! eventTable[130] kind=FocusSeesaw button=Near"),
                      Info("send param kind=FocusSeesaw(29) dir=Near(2) speed=300")}));
}

TEST_F(RemoteSlidersTest, ASeesawInAnUnknownDirectionIsRefusedAndLogged) {
  ExpectRefused(
      "SeesawSwitchOperation",
      {{"left", R"("Kind":"ZoomSeesaw","Direction":"Left","Speed":5)"},
       {"direction of another seesaw", R"("Kind":"ZoomSeesaw","Direction":"Far","Speed":5)"},
       {"unknown kind", R"("Kind":"Seesaw","Direction":"Stop","Speed":5)"},
       {"end row", R"("Kind":"None","Direction":"None","Speed":5)"}});
  const std::string params = R"("Kind":"ZoomSeesaw","Direction":"Left","Speed":-7)";
  EXPECT_EQ(Serve(Body("SeesawSwitchOperation", params)).lines,
            Refused("SeesawSwitchOperation", params,
                    {Info("##### SeesawSwitchOperation Parse() Kind=ZoomSeesaw dir=Left Spead=-7"),
                     Info("command Request is None!!! eventTable[133] kind=None button=None")}));
}

TEST_F(RemoteSlidersTest, ASeesawKeeps30CharactersOfItsWords) {
  const std::string params =
      R"("Kind":"kkkkkkkkkkkkkkkkkkkkkkkkkkkkkkKK","Direction":"dddddddddddddddddddddddddddddd",)"
      R"("Speed":99999999999)";
  EXPECT_EQ(Serve(Body("SeesawSwitchOperation", params)).lines,
            Refused("SeesawSwitchOperation", params,
                    {Info("##### SeesawSwitchOperation Parse() "
                          "Kind=kkkkkkkkkkkkkkkkkkkkkkkkkkkkkk "
                          "dir=dddddddddddddddddddddddddddddd Spead=2147483647"),
                     Info("command Request is None!!! eventTable[133] kind=None button=None")}));
}

TEST_F(RemoteSlidersTest, TheZoomSwitchSendsDirectionAndSpeed) {
  ExpectSent("ZoomSwitchOperation", 118,
             {{"wide", R"("Direction":"Wide","Speed":7)", Bytes({1, 7})},
              {"tele", R"("Direction":"Tele","Speed":8)", Bytes({2, 8})},
              {"stop", R"("Direction":"Stop","Speed":0)", Bytes({0, 0})},
              {"no number", R"("Direction":"Tele","Speed":"fast")", Bytes({2, 0})},
              {"speed 300 is cut", R"("Direction":"Wide","Speed":300)", Bytes({1, 44})},
              {"negative speed", R"("Direction":"Wide","Speed":-1)", Bytes({1, 255})}});
}

TEST_F(RemoteSlidersTest, AnyOtherDirectionStopsTheZoomSwitch) {
  ExpectSent("ZoomSwitchOperation", 118,
             {{"unknown word", R"("Direction":"Left","Speed":5)", Bytes({0, 5})},
              {"lower case", R"("Direction":"tele","Speed":5)", Bytes({0, 5})},
              {"empty word", R"("Direction":"","Speed":5)", Bytes({0, 5})},
              {"prefix", R"("Direction":"Wid","Speed":5)", Bytes({0, 5})}});
}

TEST_F(RemoteSlidersTest, TheZoomSwitchLogsWordCodeAndSpeed) {
  const struct {
    const char* what;
    const char* params;
    const char* entry;
    const char* sent;
  } cases[] = {
      {"wide", R"("Direction":"Wide","Speed":300)", "Zoom=Wide Spead=300", "dir=Wide(1) speed=300"},
      {"tele", R"("Direction":"Tele","Speed":"x")", "Zoom=Tele Spead=0", "dir=Tele(2) speed=0"},
      {"stop", R"("Direction":"Stop","Speed":-1)", "Zoom=Stop Spead=-1", "dir=Stop(0) speed=-1"},
      {"unknown word", R"("Direction":"Left","Speed":1)", "Zoom=Left Spead=1",
       "dir=Left(0) speed=1"},
      {"long word", R"("Direction":"dddddddddddddddddddddddddddddddd","Speed":1)",
       "Zoom=dddddddddddddddddddddddddddddd Spead=1",
       "dir=dddddddddddddddddddddddddddddd(0) speed=1"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.what);
    EXPECT_EQ(Serve(Body("ZoomSwitchOperation", row.params)).lines,
              Answered("ZoomSwitchOperation", row.params,
                       {Info(std::string("##### ZoomSwitchOperation Parse() ") + row.entry),
                        Info(std::string("send param ") + row.sent)}));
  }
}

TEST_F(RemoteSlidersTest, MissingParametersAreRefusedAndLogged) {
  const struct {
    const char* what;
    const char* command;
    const char* params;
    const char* missing;
    bool logs_entry;
  } cases[] = {
      {"no kind", "SetWebSliderEvent", R"("Position":1)", "Kind", true},
      {"no position", "SetWebSliderEvent", R"("Kind":"ZoomBar")", "Position", true},
      {"no position: read before the lookup", "SetWebSliderEvent", R"("Kind":"zoombar")",
       "Position", true},
      {"no kind", "SetWebXYFieldEvent", R"("XPosition":1,"YPosition":1)", "Kind", true},
      {"no X", "SetWebXYFieldEvent", R"("Kind":"WhPaintRB","YPosition":1)", "XPosition", true},
      {"no Y", "SetWebXYFieldEvent", R"("Kind":"WhPaintRB","XPosition":1)", "YPosition", true},
      {"neither X nor Y", "SetWebXYFieldEvent", R"("Kind":"WhPaintRB")", "XPosition", true},
      {"no kind", "SeesawSwitchOperation", R"("Direction":"Stop","Speed":1)", "Kind", false},
      {"no direction", "SeesawSwitchOperation", R"("Kind":"ZoomSeesaw","Speed":1)", "Direction",
       false},
      {"no speed", "SeesawSwitchOperation", R"("Kind":"ZoomSeesaw","Direction":"Stop")", "Speed",
       false},
      {"no direction", "ZoomSwitchOperation", R"("Speed":1)", "Direction", false},
      {"no speed", "ZoomSwitchOperation", R"("Direction":"Stop")", "Speed", false},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(std::string(row.command) + ": " + row.what);
    const Exchange exchange = Serve(Body(row.command, row.params));
    EXPECT_THAT(exchange.outcome, Replied(ErrorJson("RequestedError")));
    EXPECT_THAT(exchange.messages, IsEmpty());
    LogLines steps;
    if (row.logs_entry) {
      steps.push_back(
          Info(std::string("##### ") + row.command + " Parse() params=" + Tail(row.params)));
    }
    steps.push_back(NotFound(row.missing));
    EXPECT_EQ(exchange.lines, Refused(row.command, row.params, steps));
  }
}

TEST_F(RemoteSlidersTest, AnUnknownKindOfAnyLengthIsRefused) {
  const std::string kind = R"("Kind":")" + std::string(6000, 'k') + '"';
  const std::string digits(6000, '9');
  for (const auto& [command, params] :
       {std::pair{"SetWebSliderEvent", R"(,"Position":)" + digits},
        std::pair{"SetWebXYFieldEvent", R"(,"XPosition":)" + digits + R"(,"YPosition":-)" + digits},
        std::pair{"SeesawSwitchOperation", R"(,"Direction":"Stop","Speed":)" + digits}}) {
    SCOPED_TRACE(command);
    const Exchange exchange = Serve(Body(command, kind + params));
    EXPECT_THAT(exchange.outcome, Replied(ErrorJson("RequestedError")));
    EXPECT_THAT(exchange.messages, IsEmpty());
  }
}

}  // namespace
