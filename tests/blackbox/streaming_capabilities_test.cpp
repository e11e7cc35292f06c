// What the camera can stream: the three Available commands. A unit test compares the tables cell by
// cell; here each way to a table is tested once.
#include <string>

#include "harness/camera_test.h"

namespace {

using namespace harness;

class StreamingCapabilitiesTest : public CameraTest {
 protected:
  StreamingCapabilitiesTest() { Camera(3); }

  static void Camera(int model, int ifb_active = 0) {
    StatusBlock().SetByte(516, model).SetByte(19, ifb_active).Store();
  }
  static void RecordingFormat(const std::string& format) {
    WriteFile(kStreamingSettingsFile, "rfresolution\t" + format + "\n");
  }
};

/// {"60p":1,"60i":0,...} with 1 for the names in `offered` (between blanks).
std::string FlagObject(std::initializer_list<const char*> names, const std::string& offered) {
  std::string object = "{";
  for (const std::string name : names) {
    const bool is_offered = (" " + offered + " ").find(" " + name + " ") != std::string::npos;
    object += (object == "{" ? "\"" : ",\"") + name + (is_offered ? "\":1" : "\":0");
  }
  return object + "}";
}

std::string Resolutions(const std::string& offered) {
  return DataJson(
      "AvailableStreamingResolutionSettings",
      "\"AvailableResolution\":" + FlagObject({"1920x1080", "1440x1080", "1280x720", "720x480",
                                               "720x576", "640x360", "480x270"},
                                              offered));
}

std::string Framerates(const std::string& resolution, const std::string& offered) {
  return DataJson("AvailableStreamingFramerateSettings",
                  "\"Resolution\":\"" + resolution + "\",\"AvailableFramerate\":" +
                      FlagObject({"60p", "60i", "30p", "50p", "50i", "25p"}, offered));
}

std::string Bitrates(const std::string& type, const std::string& resolution,
                     const std::string& offered) {
  return DataJson(
      "AvailableStreamingBitrateSettings",
      "\"Type\":\"" + type + "\",\"Resolution\":\"" + resolution + "\",\"AvailableBitrate\":" +
          FlagObject({"0.2M", "0.3M", "0.8M", "1.5M", "2.5M", "3.0M", "5.0M", "8.0M", "10M", "12M"},
                     offered));
}

std::string AskFramerates(const std::string& resolution) {
  return Body("AvailableStreamingFramerateSettings", "\"Resolution\":\"" + resolution + "\"");
}

std::string AskBitrates(const std::string& type, const std::string& resolution,
                        const std::string& framerate) {
  return Body("AvailableStreamingBitrateSettings", "\"Type\":\"" + type + "\",\"Resolution\":\"" +
                                                       resolution + "\",\"Framerate\":\"" +
                                                       framerate + "\"");
}

TEST_F(StreamingCapabilitiesTest, RepliesHaveExactlyThisForm) {
  RecordingFormat("3");
  EXPECT_THAT(Post(Body("AvailableStreamingResolutionSettings")),
              Replied(R"({"Response":{"Requested":"AvailableStreamingResolutionSettings",)"
                      R"("Result":"Success","Data":{"AvailableResolution":{"1920x1080":1,)"
                      R"("1440x1080":0,"1280x720":1,"720x480":0,"720x576":1,"640x360":1,)"
                      R"("480x270":0}}}})"));
  EXPECT_THAT(Post(AskFramerates("1280x720")),
              Replied(R"({"Response":{"Requested":"AvailableStreamingFramerateSettings",)"
                      R"("Result":"Success","Data":{"Resolution":"1280x720",)"
                      R"("AvailableFramerate":{"60p":0,"60i":0,"30p":0,"50p":1,"50i":0,)"
                      R"("25p":1}}}})"));
  EXPECT_THAT(Post(AskBitrates("RTP", "720x576", "50i")),
              Replied(R"({"Response":{"Requested":"AvailableStreamingBitrateSettings",)"
                      R"("Result":"Success","Data":{"Type":"RTP","Resolution":"720x576",)"
                      R"("AvailableBitrate":{"0.2M":0,"0.3M":1,"0.8M":1,"1.5M":1,"2.5M":0,)"
                      R"("3.0M":1,"5.0M":1,"8.0M":0,"10M":0,"12M":0}}}})"));
}

TEST_F(StreamingCapabilitiesTest, ResolutionsFollowTheRecordingFormat) {
  const struct {
    const char* format;
    const char* offered;
  } rows[] = {
      {"0", "1920x1080 1280x720 720x480 640x360"},
      {"1", "1920x1080 1280x720 720x480 640x360"},
      {"2", "1920x1080 1280x720 720x480 640x360"},
      {"3", "1920x1080 1280x720 720x576 640x360"},
      {"4", "1920x1080 1280x720 720x576 640x360"},
      {"5", "1920x1080 1280x720 720x576 640x360"},
      {"6", "1280x720 720x480 640x360"},
      {"7", "1280x720 720x576 640x360"},
      {"8", "1280x720 720x480 640x360"},
      {"9", "1280x720 720x576 640x360"},
      {"10", "720x480 640x360"},
      {"11", "720x576 640x360"},
      {"12", ""},
      {"255", ""},
      {"-1", ""},
      {"99999999999", ""},
      {"none", "1920x1080 1280x720 720x480 640x360"},
      {"", "1920x1080 1280x720 720x480 640x360"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string("recording format ") + row.format);
    RecordingFormat(row.format);
    EXPECT_THAT(Post(Body("AvailableStreamingResolutionSettings")),
                Replied(Resolutions(row.offered)));
  }
}

TEST_F(StreamingCapabilitiesTest, WithoutASettingsFileTheRecordingFormatIs0) {
  EXPECT_THAT(Post(Body("AvailableStreamingResolutionSettings")),
              Replied(Resolutions("1920x1080 1280x720 720x480 640x360")));
  EXPECT_THAT(Post(AskFramerates("1280x720")), Replied(Framerates("1280x720", "60p 30p")));
  EXPECT_FALSE(Exists(kStreamingSettingsFile));
}

TEST_F(StreamingCapabilitiesTest, FrameratesFollowResolutionAndRecordingFormat) {
  const struct {
    const char* resolution;
    const char* format;
    const char* offered;
  } rows[] = {
      {"1920x1080", "0", "60i"}, {"1920x1080", "4", "50i"},    {"1920x1080", "3", "50i"},
      {"1920x1080", "6", ""},    {"1440x1080", "0", ""},       {"1280x720", "0", "60p 30p"},
      {"1280x720", "1", "30p"},  {"1280x720", "7", "50p 25p"}, {"1280x720", "9", "25p"},
      {"720x480", "8", "60i"},   {"720x480", "3", ""},         {"720x576", "11", "50i"},
      {"720x576", "0", ""},      {"480x270", "0", ""},         {"640x360", "3", "50p 25p"},
      {"640x360", "10", "30p"},  {"640x360", "12", ""},        {"640x360", "-1", ""},
      {"640x360", "255", ""},    {"640x360", "x", "60p 30p"},
  };
  Camera(4);
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.resolution) + " recording format " + row.format);
    RecordingFormat(row.format);
    EXPECT_THAT(Post(AskFramerates(row.resolution)),
                Replied(Framerates(row.resolution, row.offered)));
  }
}

TEST_F(StreamingCapabilitiesTest, BitratesFollowTypeResolutionFramerateAndReturnAudio) {
  const struct {
    const char* type;
    const char* resolution;
    const char* framerate;
    const char* offered;
    const char* with_ifb;
  } rows[] = {
      {"UDP", "1280x720", "60p", "3.0M 5.0M 8.0M 12M", "3.0M"},
      {"UDPN", "1280x720", "50p", "3.0M 5.0M 8.0M 12M", "3.0M"},
      {"UDPL", "1920x1080", "60i", "3.0M 5.0M 8.0M 12M", "3.0M 5.0M 8.0M"},
      {"RTMP", "1920x1080", "50i", "3.0M", ""},
      {"ZIXIM", "1280x720", "30p", "1.5M 3.0M 5.0M", "1.5M 3.0M"},
      {"RTMP", "1280x720", "25p", "1.5M 3.0M", "1.5M"},
      {"RTSP", "720x480", "60i", "0.3M 0.8M 1.5M 3.0M 5.0M", "0.3M 0.8M 1.5M 3.0M"},
      {"UDP", "720x576", "50i", "0.3M 0.8M 1.5M 3.0M 5.0M 8.0M", "0.3M 0.8M 1.5M 3.0M"},
      {"ZIXIL", "640x360", "60p", "1.5M 3.0M", "1.5M 3.0M"},
      {"RTMP", "640x360", "50p", "1.5M 3.0M", "1.5M"},
      {"RTP", "640x360", "25p", "0.3M 0.8M 1.5M 3.0M", "0.3M 0.8M 1.5M 3.0M"},
      {"TCP", "640x360", "30p", "", "0.3M 0.8M 1.5M 3.0M"},
      {"TCP", "640x360", "25p", "", "0.3M 0.8M 1.5M 3.0M"},
      {"TCP", "640x360", "60p", "", ""},
      {"TCP", "1280x720", "30p", "", ""},
      {"UDP", "1920x1080", "60p", "", ""},
      {"UDP", "1920x1080", "30p", "", ""},
      {"UDP", "720x480", "50i", "", ""},
      {"UDP", "720x576", "60i", "", ""},
      {"UDP", "1280x720", "60i", "", ""},
      {"UDP", "1440x1080", "60i", "", ""},
      {"UDP", "480x270", "30p", "", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.type) + " " + row.resolution + " " + row.framerate);
    Camera(3, 0);
    EXPECT_THAT(Post(AskBitrates(row.type, row.resolution, row.framerate)),
                Replied(Bitrates(row.type, row.resolution, row.offered)));
    Camera(4, 1);
    EXPECT_THAT(Post(AskBitrates(row.type, row.resolution, row.framerate)),
                Replied(Bitrates(row.type, row.resolution, row.with_ifb)));
  }
}

TEST_F(StreamingCapabilitiesTest, OtherModelsOfferNothing) {
  for (const int model : {0, 1, 2, 5, 11, 255}) {
    SCOPED_TRACE(model);
    Camera(model);
    EXPECT_THAT(Post(Body("AvailableStreamingResolutionSettings")), Replied(Resolutions("")));
    EXPECT_THAT(Post(AskFramerates("1280x720")), Replied(Framerates("1280x720", "")));
    EXPECT_THAT(Post(AskBitrates("UDP", "1280x720", "60p")),
                Replied(Bitrates("UDP", "1280x720", "")));
  }
}

TEST_F(StreamingCapabilitiesTest, WithoutParamsTheFirstRowsOfTheTablesAnswer) {
  RecordingFormat("4");
  EXPECT_THAT(Post(Body("AvailableStreamingFramerateSettings")),
              Replied(Framerates("1920x1080", "50i")));
  EXPECT_THAT(Post(Body("AvailableStreamingBitrateSettings")),
              Replied(Bitrates("UDP", "1920x1080", "")));
}

TEST_F(StreamingCapabilitiesTest, UnknownNamesAreRefused) {
  const std::string requests[] = {
      AskFramerates("1920x1081"),
      AskFramerates(""),
      AskBitrates("ZIXI", "1280x720", "60p"),
      AskBitrates("udp", "1280x720", "60p"),
      AskBitrates("", "1280x720", "60p"),
      AskBitrates("UDP", "8K", "60p"),
      AskBitrates("UDP", "1280x720", "24p"),
  };
  for (const std::string& request : requests) {
    EXPECT_THAT(Post(request), Replied(ErrorJson("RequestedError")));
  }
}

TEST_F(StreamingCapabilitiesTest, TheQuestionForFrameratesIsTraced) {
  Post(AskFramerates("1280x720"));
  EXPECT_THAT(
      log_.TakeLines(),
      Logged(Info("##### AvailableStreamingFramerateSettings Parse() "
                  "params={\"Resolution\":\"1280x720\"}}}"),
             Info("##### AvailableStreamingFramerateSettings Parse() m_resolution=1280x720")));
  Post(AskFramerates("8K"));
  EXPECT_THAT(log_.TakeLines(),
              Logged(Info("##### AvailableStreamingFramerateSettings Parse() "
                          "params={\"Resolution\":\"8K\"}}}"),
                     Info("##### AvailableStreamingFramerateSettings Parse() m_resolution=8K"),
                     Error("requested error ret=-1, params=\"Params\":{\"Resolution\":\"8K\"}}}")));
}

TEST_F(StreamingCapabilitiesTest, TheQuestionForBitratesIsTraced) {
  const std::string params = R"({"Type":"ZIXIL","Resolution":"720x480","Framerate":"60i"}}})";
  Post(AskBitrates("ZIXIL", "720x480", "60i"));
  EXPECT_THAT(log_.TakeLines(),
              Logged(Info("##### AvailableStreamingBitrateSettings Parse() params=" + params),
                     Info("##### AvailableStreamingBitrateSettings Parse() m_streaming_type=ZIXIL "
                          "m_resolution=720x480 m_framerate=60i"),
                     Info("##### GetSelectableBitrateTable model:3 5p6p:0 5i6i:1 "
                          "[resolution:3 type:6]")));
  Camera(5);
  Post(AskBitrates("ZIXIL", "720x480", "60i"));
  EXPECT_THAT(log_.TakeLines(),
              Logged(Info("##### AvailableStreamingBitrateSettings Parse() params=" + params),
                     Info("##### AvailableStreamingBitrateSettings Parse() m_streaming_type=ZIXIL "
                          "m_resolution=720x480 m_framerate=60i")));
}

TEST_F(StreamingCapabilitiesTest, RequestsAndRepliesAreTracedAtLevel4) {
  WriteFile(kLogLevelFile, "cmd=4\n");
  const std::string body = Body("AvailableStreamingResolutionSettings");
  Post(body);
  EXPECT_THAT(log_.TakeLines(),
              Logged(Info("rcv post_data = " + body),
                     Info("send res_str = " + Resolutions("1920x1080 1280x720 720x480 640x360"))));
  const std::string others[] = {AskFramerates("640x360"), AskBitrates("UDP", "640x360", "25p")};
  for (const std::string& other : others) {
    Post(other);
    const LogLines lines = log_.TakeLines();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.front(), Info("rcv post_data = " + other));
    EXPECT_EQ(lines.back().priority, 6);
    EXPECT_EQ(lines.back().text.substr(0, 15), "send res_str = ");
  }
}

}  // namespace
