#include "remote_test.h"

// Recording, zoom position and the live picture's encoder.

namespace {

using namespace harness;
using testing::ElementsAre;
using testing::IsEmpty;

class RemoteCameraTest : public RemoteTest {};

TEST_F(RemoteCameraTest, RecordingStartsOnlyOnTheWordRec) {
  ExpectSent("SetCamCtrl", 1,
             {{"rec", R"("CamCtrl":"Rec")", Bytes({0})},
              {"stop", R"("CamCtrl":"Stop")", Bytes({1})},
              {"lower case stops", R"("CamCtrl":"rec")", Bytes({1})},
              {"longer word stops", R"("CamCtrl":"Record")", Bytes({1})},
              {"empty word stops", R"("CamCtrl":"")", Bytes({1})},
              {"number stops", R"("CamCtrl":0)", Bytes({1})}});
}

TEST_F(RemoteCameraTest, RecordingIsSentByteByByte) {
  const Exchange exchange = Serve(Body("SetCamCtrl", R"("CamCtrl":"Stop")"));
  EXPECT_THAT(exchange.messages,
              ElementsAre(Bytes({0, 5, 1, 0, 1, 0, 0, 0}) +
                          Le32(static_cast<std::uint32_t>(exchange.outcome.pid)) + Bytes({1})));
}

TEST_F(RemoteCameraTest, RecordingLogsParametersAndWordWithoutItsName) {
  const std::string rec = R"("CamCtrl":"Rec")";
  EXPECT_EQ(Serve(Body("SetCamCtrl", rec)).lines,
            Answered("SetCamCtrl", rec, {Info("params=" + Tail(rec)), Info("ctrl=Rec(0)")}));
  const std::string pause = R"("CamCtrl":"Pause")";
  EXPECT_EQ(Serve(Body("SetCamCtrl", pause)).lines,
            Answered("SetCamCtrl", pause, {Info("params=" + Tail(pause)), Info("ctrl=Pause(1)")}));
}

TEST_F(RemoteCameraTest, RecordingLogsALongWordWhole) {
  const std::string word(600, 'w');
  const std::string params = R"("CamCtrl":")" + word + '"';
  EXPECT_EQ(Serve(Body("SetCamCtrl", params)).lines,
            Answered("SetCamCtrl", params,
                     {Info("params=" + Tail(params)), Info("ctrl=" + word + "(1)")}));
}

TEST_F(RemoteCameraTest, TheZoomPositionIsSentBigEndian) {
  ExpectSent("SetZoomCtrl", 14,
             {{"1000", R"("Position":1000)", Bytes({3, 232})},
              {"-1", R"("Position":-1)", Bytes({255, 255})},
              {"0", R"("Position":0)", Bytes({0, 0})},
              {"255", R"("Position":255)", Bytes({0, 255})},
              {"quoted", R"("Position":"499")", Bytes({1, 243})},
              {"no number", R"("Position":"tele")", Bytes({0, 0})},
              {"empty", R"("Position":"")", Bytes({0, 0})},
              {"70000 is cut to 16 bits", R"("Position":70000)", Bytes({17, 112})},
              {"beyond 32 bits: 2147483647", R"("Position":99999999999)", Bytes({255, 255})},
              {"below 32 bits: -2147483648", R"("Position":-99999999999)", Bytes({0, 0})}});
}

TEST_F(RemoteCameraTest, TheZoomPositionIsLoggedSignedAndUnsigned) {
  const struct {
    const char* position;
    const char* logged;
  } cases[] = {
      {"1000", "pos=1000 position=1000"},     {"-1", "pos=-1 position=65535"},
      {"40000", "pos=-25536 position=40000"}, {"70000", "pos=4464 position=4464"},
      {"\"x\"", "pos=0 position=0"},
  };
  for (const auto& row : cases) {
    const std::string params = std::string(R"("Position":)") + row.position;
    SCOPED_TRACE(params);
    EXPECT_EQ(
        Serve(Body("SetZoomCtrl", params)).lines,
        Answered("SetZoomCtrl", params,
                 {Info("##### SetZoomCtrl Parse() params=" + Tail(params)), Info(row.logged)}));
  }
}

/// The encoder's messages have no payload; their codes start and stop it.
TEST_F(RemoteCameraTest, TheEncoderStopsOnlyOnTheWordStop) {
  const struct {
    const char* what;
    const char* params;
    int code;
  } cases[] = {
      {"start", R"("Operate":"Start")", 5},
      {"stop", R"("Operate":"Stop")", 6},
      {"unknown word starts", R"("Operate":"Pause")", 5},
      {"lower case starts", R"("Operate":"stop")", 5},
      {"longer word starts", R"("Operate":"Stopped")", 5},
      {"empty word starts", R"("Operate":"")", 5},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.what);
    const Exchange exchange = Serve(Body("JpegEncode", row.params));
    EXPECT_THAT(exchange.outcome, Replied(ResultJson("JpegEncode")));
    EXPECT_THAT(exchange.messages, ElementsAre(Message(5, 0, row.code, exchange.outcome.pid)));
  }
}

TEST_F(RemoteCameraTest, TheEncoderLogsItsTracesAtLevel7) {
  const std::string params = R"("Operate":"Pause")";
  const std::string body = Body("JpegEncode", params);
  const LogLine entry = Info("##### JpegEncode Parse() params=" + Tail(params));
  const LogLine sent = Info("send param operate=Pause");
  EXPECT_THAT(Serve(body).lines, Logged(entry, sent));
  WriteFile(kLogLevelFile, "cmd=6\n");
  EXPECT_THAT(Serve(body).lines, Logged(entry, sent));
  WriteFile(kLogLevelFile, "cmd=7\n");
  EXPECT_THAT(Serve(body).lines, Logged(Debug("rcv post_data = " + body), entry, sent,
                                        Debug("send res_str = " + ResultJson("JpegEncode"))));
}

TEST_F(RemoteCameraTest, MissingParametersAreRefusedAndLogged) {
  const std::string params = R"("Operation":"Rec")";
  const Exchange recording = Serve(Body("SetCamCtrl", params));
  EXPECT_THAT(recording.outcome, Replied(ErrorJson("RequestedError")));
  EXPECT_THAT(recording.messages, IsEmpty());
  EXPECT_EQ(recording.lines,
            Refused("SetCamCtrl", params, {Info("params=" + Tail(params)), NotFound("CamCtrl")}));

  const Exchange zoom = Serve(Body("SetZoomCtrl", params));
  EXPECT_THAT(zoom.outcome, Replied(ErrorJson("RequestedError")));
  EXPECT_THAT(zoom.messages, IsEmpty());
  EXPECT_EQ(zoom.lines, Refused("SetZoomCtrl", params,
                                {Info("##### SetZoomCtrl Parse() params=" + Tail(params)),
                                 NotFound("Position")}));

  const Exchange encoder = Serve(Body("JpegEncode", params));
  EXPECT_THAT(encoder.outcome, Replied(ErrorJson("RequestedError")));
  EXPECT_THAT(encoder.messages, IsEmpty());
  // The refusal is an error whatever the level of the command's own traces.
  EXPECT_THAT(encoder.lines,
              Logged(Info("##### JpegEncode Parse() params=" + Tail(params)), NotFound("Operate"),
                     Error("requested error ret=-1, params=\"Params\":" + Tail(params))));
}

}  // namespace
