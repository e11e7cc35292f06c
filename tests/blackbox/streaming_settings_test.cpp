// The streaming format and the current server: the commands of the streaming settings file.
#include <sys/stat.h>

#include <string>

#include "harness/camera_test.h"

namespace {

using namespace harness;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string kRenewalTrace = "##### RenewSetting socket_send_msg() renew_reconnect 0";

/// A streaming settings file as the handler writes it.
std::string StreamingFile(const std::string& resolution, const std::string& quality,
                          const std::string& server) {
  return "resolution\t" + resolution + "\nquality\t" + quality + "\nserver\t" + server +
         "\nrfresolution\t4\ncldstrmusername\tuser\ncldstrmpassword\tpw\nserverurl\thost\n";
}

std::string Format(const std::string& resolution, const std::string& framerate,
                   const std::string& bitrate) {
  return DataJson("GetStreamingSettings", "\"Resolution\":\"" + resolution + "\",\"Framerate\":\"" +
                                              framerate + "\",\"Bitrate\":\"" + bitrate + "\"");
}

class StreamingSettingsTest : public CameraTest {
 protected:
  /// A Set command changes the file from one content to another, sends one notice and succeeds.
  void ExpectChange(const std::string& command, const std::string& params,
                    const std::string& before, const std::string& after) {
    SCOPED_TRACE(command + " " + params);
    FakeDaemon daemon;
    WriteFile(kStreamingSettingsFile, before);
    EXPECT_THAT(Post(Body(command, params)), Replied(ResultJson(command)));
    EXPECT_EQ(ReadFile(kStreamingSettingsFile), after);
    EXPECT_THAT(daemon.Received(), ElementsAre(RenewalNotice()));
  }

  /// A request is refused because a parameter is missing: no file changes, nothing is sent.
  void ExpectMissing(const std::string& command, const std::string& params,
                     const std::string& missing, LogLines traces = {}) {
    SCOPED_TRACE(command + " without " + missing);
    FakeDaemon daemon;
    WriteFile(kStreamingSettingsFile, StreamingFile("0", "42", "1"));
    const std::string body = Body(command, params);
    EXPECT_THAT(Post(body), Replied(ErrorJson("RequestedError")));
    EXPECT_EQ(ReadFile(kStreamingSettingsFile), StreamingFile("0", "42", "1"));
    EXPECT_THAT(daemon.Received(), IsEmpty());
    traces.push_back(Error("error: json_parser() key [" + missing + "] does not appear\n"));
    traces.push_back(Error("requested error ret=-1, params=\"Params\":{" + params + "}}}"));
    LogLines lines = log_.TakeLines();
    if (!lines.empty() && lines.front().text == "rcv post_data = " + body) {
      lines.erase(lines.begin());
    }
    EXPECT_EQ(lines, traces);
  }
};

TEST_F(StreamingSettingsTest, WithoutAFileTheFormatIsTheFirstOneWithoutABitrate) {
  EXPECT_THAT(Post(Body("GetStreamingSettings")), Replied(Format("1920x1080", "60p", "")));
  EXPECT_FALSE(Exists(kStreamingSettingsFile));
  EXPECT_THAT(log_.Lines(), Logged(Info("##### GetStreamingSettings Output()")));
}

TEST_F(StreamingSettingsTest, TheFormatIsTracedAtLevel4) {
  WriteFile(kLogLevelFile, "cmd=4\n");
  const std::string body = Body("GetStreamingSettings");
  const std::string reply = Format("1920x1080", "60p", "");
  EXPECT_THAT(Post(body), Replied(reply));
  EXPECT_THAT(log_.Lines(),
              Logged(Info("rcv post_data = " + body), Info("##### GetStreamingSettings Output()"),
                     Info("send res_str = " + reply)));
}

TEST_F(StreamingSettingsTest, TheFormatIsReportedByItsNames) {
  const struct {
    const char* resolution;
    const char* quality;
    std::string reply;
  } rows[] = {
      {"0", "42", Format("1920x1080", "60i", "5.0M")},
      {"1", "96", Format("1440x1080", "60p", "0.2M")},
      {"2", "81", Format("1280x720", "50p", "0.3M")},
      {"3", "74", Format("720x480", "60i", "0.8M")},
      {"4", "67", Format("720x576", "50i", "1.5M")},
      {"5", "60", Format("480x270", "30p", "2.5M")},
      {"6", "53", Format("640x360", "25p", "3.0M")},
      {"7", "38", Format("", "", "8.0M")},
      {"-1", "31", Format("", "", "10M")},
      {"2147483648", "104", Format("", "60p", "12M")},
      {"x", "x", Format("1920x1080", "60p", "")},
      {"", "16", Format("1920x1080", "60p", "")},
      {"1", "-42", Format("1440x1080", "", "")},
      {"1", "-1", Format("1440x1080", "", "")},
      {"1", "88", Format("1440x1080", "60p", "")},
      {"1", "99999999999", Format("1440x1080", "", "")},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.resolution) + " " + row.quality);
    WriteFile(kStreamingSettingsFile, StreamingFile(row.resolution, row.quality, "0"));
    EXPECT_THAT(Post(Body("GetStreamingSettings")), Replied(row.reply));
  }
}

TEST_F(StreamingSettingsTest, AFileThatLacksKeysIsNotFilledWithDefaults) {
  const RepliesMayBreak may_break;
  WriteFile(kStreamingSettingsFile, "serverurl\thost\n");
  EXPECT_THAT(Post(Body("GetStreamingSettings")), Replied(Format("1920x1080", "60p", "")));
  EXPECT_THAT(Post(Body("GetCurrentStreamingServerID")),
              Replied(DataJson("GetCurrentStreamingServerID", "\"ID\":")));
}

TEST_F(StreamingSettingsTest, SettingsStoreResolutionAndBitrate) {
  ExpectChange("SetStreamingSettings", R"("Resolution":"720x480","Bitrate":"1.5M")",
               StreamingFile("0", "42", "1"), StreamingFile("3", "66", "1"));
}

TEST_F(StreamingSettingsTest, EveryResolutionIsStoredAsItsIndex) {
  const struct {
    const char* name;
    const char* index;
  } rows[] = {{"1920x1080", "0"}, {"1440x1080", "1"}, {"1280x720", "2"}, {"720x480", "3"},
              {"720x576", "4"},   {"480x270", "5"},   {"640x360", "6"},  {"1920X1080", "7"}};
  for (const auto& row : rows) {
    const std::string name = std::string("\"Resolution\":\"") + row.name + '"';
    ExpectChange("SetStreamingResolution", name, StreamingFile("9", "42", "1"),
                 StreamingFile(row.index, "42", "1"));
  }
}

TEST_F(StreamingSettingsTest, StoringAFramerateKeepsTheBitrate) {
  const struct {
    const char* name;
    const char* quality;  // was 42
  } rows[] = {{"60p", "40"}, {"50p", "41"}, {"60i", "42"}, {"50i", "43"},
              {"30p", "44"}, {"25p", "45"}, {"24p", "46"}, {"", "46"}};
  for (const auto& row : rows) {
    const std::string name = std::string("\"Framerate\":\"") + row.name + '"';
    ExpectChange("SetStreamingFramerate", name, StreamingFile("0", "42", "1"),
                 StreamingFile("0", row.quality, "1"));
  }
}

TEST_F(StreamingSettingsTest, StoringABitrateKeepsTheFramerate) {
  const struct {
    const char* name;
    const char* quality;  // was 43
  } rows[] = {{"0.2M", "99"}, {"0.3M", "83"}, {"0.8M", "75"}, {"1.5M", "67"},
              {"2.5M", "59"}, {"3.0M", "51"}, {"5.0M", "43"}, {"8.0M", "35"},
              {"10M", "27"},  {"12M", "107"}, {"11M", "3"}};
  for (const auto& row : rows) {
    const std::string name = std::string("\"Bitrate\":\"") + row.name + '"';
    ExpectChange("SetStreamingBitrate", name, StreamingFile("0", "43", "1"),
                 StreamingFile("0", row.quality, "1"));
  }
}

TEST_F(StreamingSettingsTest, UnknownNamesAreStoredAndReadBackAsEmptyNames) {
  ExpectChange("SetStreamingSettings", R"("Resolution":"8K","Bitrate":"99M")",
               StreamingFile("0", "43", "1"), StreamingFile("7", "3", "1"));
  EXPECT_THAT(Post(Body("GetStreamingSettings")), Replied(Format("", "50i", "")));
  ExpectChange("SetStreamingFramerate", R"("Framerate":"120p")", StreamingFile("7", "43", "1"),
               StreamingFile("7", "46", "1"));
  EXPECT_THAT(Post(Body("GetStreamingSettings")), Replied(Format("", "", "5.0M")));
}

TEST_F(StreamingSettingsTest, NegativeAndHugeQualityValuesSplitTowardsZero) {
  const struct {
    const char* what;
    const char* command;
    const char* params;
    const char* before;
    const char* after;
  } rows[] = {
      {"bit rate of a negative value", "SetStreamingBitrate", R"("Bitrate":"3.0M")", "-42", "46"},
      {"frame rate of a negative value", "SetStreamingFramerate", R"("Framerate":"50i")", "-42",
       "-37"},
      {"both of a negative value", "SetStreamingSettings",
       R"("Resolution":"1920x1080","Bitrate":"x")", "-7", "-7"},
      {"frame rate of the largest value", "SetStreamingFramerate", R"("Framerate":"x")",
       "2147483647", "2147483646"},
      {"frame rate of the smallest value", "SetStreamingFramerate", R"("Framerate":"60p")",
       "-2147483648", "-2147483648"},
      {"frame rate of a value beyond 32 bits", "SetStreamingFramerate", R"("Framerate":"60p")",
       "99999999999", "2147483640"},
      {"bit rate of the largest value", "SetStreamingBitrate", R"("Bitrate":"12M")", "2147483647",
       "111"},
      {"no number", "SetStreamingBitrate", R"("Bitrate":"12M")", "none", "104"},
      {"no value", "SetStreamingFramerate", R"("Framerate":"25p")", "", "5"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    ExpectChange(row.command, row.params, StreamingFile("0", row.before, "1"),
                 StreamingFile("0", row.after, "1"));
  }
}

TEST_F(StreamingSettingsTest, AMissingFileIsWrittenWithDefaults) {
  FakeDaemon daemon;
  EXPECT_THAT(Post(Body("SetStreamingResolution", R"("Resolution":"1280x720")")),
              Replied(ResultJson("SetStreamingResolution")));
  EXPECT_EQ(ReadFile(kStreamingSettingsFile),
            "resolution\t2\nquality\t0\nserver\t0\nrfresolution\t0\ncldstrmusername\t0\n"
            "cldstrmpassword\t0\nserverurl\t0\n");
}

TEST_F(StreamingSettingsTest, AFileInAnyOrderIsWrittenInItsOwnWithEmptySettings) {
  ExpectChange("SetStreamingBitrate", R"("Bitrate":"12M")",
               "serverurl\thost\r\nquality 43\nserver\t2\nunknown\t5\nserver\t3 4\n",
               "resolution\t\nquality\t107\nserver\t3\nrfresolution\t\ncldstrmusername\t\n"
               "cldstrmpassword\t\nserverurl\thost\n");
}

TEST_F(StreamingSettingsTest, WithoutParamsZerosAreStored) {
  const struct {
    const char* command;
    std::string after;
  } rows[] = {{"SetStreamingSettings", StreamingFile("0", "0", "1")},
              {"SetStreamingResolution", StreamingFile("0", "42", "1")},
              {"SetStreamingFramerate", StreamingFile("3", "0", "1")},
              {"SetStreamingBitrate", StreamingFile("3", "0", "1")},
              {"SetCurrentStreamingServerID", StreamingFile("3", "42", "0")}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.command);
    FakeDaemon daemon;
    WriteFile(kStreamingSettingsFile, StreamingFile("3", "42", "1"));
    EXPECT_THAT(Post(Body(row.command)), Replied(ResultJson(row.command)));
    EXPECT_EQ(ReadFile(kStreamingSettingsFile), row.after);
    EXPECT_THAT(daemon.Received(), ElementsAre(RenewalNotice()));
  }
}

TEST_F(StreamingSettingsTest, MissingParametersAreRefused) {
  ExpectMissing("SetStreamingSettings", R"("Bitrate":"1.5M")", "Resolution");
  ExpectMissing("SetStreamingSettings", R"("Resolution":"720x480")", "Bitrate");
  ExpectMissing("SetStreamingResolution", R"("Bitrate":"1.5M")", "Resolution");
  ExpectMissing("SetStreamingFramerate", "", "Framerate");
  ExpectMissing("SetStreamingBitrate", R"("bitrate":"1.5M")", "Bitrate");
  ExpectMissing("SetCurrentStreamingServerID", R"("Id":1)", "ID");
  ExpectMissing("AvailableStreamingFramerateSettings", R"("Type":"UDP")", "Resolution",
                {Info("##### AvailableStreamingFramerateSettings Parse() "
                      "params={\"Type\":\"UDP\"}}}")});
}

TEST_F(StreamingSettingsTest, MissingParametersOfTheBitrateQuestionAreRefused) {
  const struct {
    const char* params;
    const char* missing;
  } rows[] = {{R"("Resolution":"1280x720","Framerate":"60p")", "Type"},
              {R"("Type":"UDP","Framerate":"60p")", "Resolution"},
              {R"("Type":"UDP","Resolution":"1280x720")", "Framerate"}};
  for (const auto& row : rows) {
    ExpectMissing("AvailableStreamingBitrateSettings", row.params, row.missing,
                  {Info(std::string("##### AvailableStreamingBitrateSettings Parse() params={") +
                        row.params + "}}}")});
  }
}

/// The log of a Set command whose parameter trace is `parsed` and whose file goes from `before` to
/// `after`.
LogLines SetLog(const std::string& command, const std::string& body, const LogLines& parsed,
                const std::string& before, const std::string& after) {
  LogLines lines = {Error("rcv post_data = " + body)};
  lines.insert(lines.end(), parsed.begin(), parsed.end());
  lines.push_back(Info("##### " + command + " Transmit() bofore " + before));
  lines.push_back(Info("##### " + command + " Transmit() after " + after));
  lines.push_back(Info(kRenewalTrace));
  lines.push_back(Error("send res_str = " + ResultJson(command)));
  return lines;
}

TEST_F(StreamingSettingsTest, SettingBothIsTracedAtLevel2) {
  FakeDaemon daemon;
  WriteFile(kStreamingSettingsFile, StreamingFile("0", "42", "1"));
  const std::string body =
      Body("SetStreamingSettings", R"("Resolution":"720x480","Bitrate":"1.5M")");
  Post(body);
  EXPECT_EQ(log_.Lines(),
            SetLog("SetStreamingSettings", body,
                   {Info("##### SetStreamingSettings Parse() m_resolution=720x480 m_bitrate=1.5M")},
                   "res:0 qua:42 ser:1", "res:3 qua:66 ser:1"));
}

TEST_F(StreamingSettingsTest, SettingTheFramerateIsTracedAtLevel2ButItsFirstLineAtLevel4) {
  FakeDaemon daemon;
  WriteFile(kStreamingSettingsFile, StreamingFile("0", "42", "1"));
  const std::string body = Body("SetStreamingFramerate", R"("Framerate":"50i")");
  const LogLine parsed = Info("##### SetStreamingFramerate Parse() m_framerate=50i");
  Post(body);
  EXPECT_EQ(log_.TakeLines(), SetLog("SetStreamingFramerate", body, {parsed}, "res:0 qua:42 ser:1",
                                     "res:0 qua:43 ser:1"));
  WriteFile(kLogLevelFile, "cmd=4\n");
  Post(body);
  EXPECT_EQ(log_.TakeLines(), SetLog("SetStreamingFramerate", body, {parsed, parsed},
                                     "res:0 qua:43 ser:1", "res:0 qua:43 ser:1"));
}

TEST_F(StreamingSettingsTest, SettingTheResolutionIsTracedAtLevel4) {
  FakeDaemon daemon;
  WriteFile(kStreamingSettingsFile, StreamingFile("0", "42", "1"));
  const std::string body = Body("SetStreamingResolution", R"("Resolution":"640x360")");
  const LogLine parsed = Info("##### SetStreamingResolution Parse() m_resolution=640x360");
  Post(body);
  EXPECT_THAT(log_.TakeLines(),
              Logged(Error("rcv post_data = " + body), Info(kRenewalTrace),
                     Error("send res_str = " + ResultJson("SetStreamingResolution"))));
  WriteFile(kLogLevelFile, "cmd=4\n");
  Post(body);
  EXPECT_EQ(log_.TakeLines(), SetLog("SetStreamingResolution", body, {parsed, parsed},
                                     "res:6 qua:42 ser:1", "res:6 qua:42 ser:1"));
}

TEST_F(StreamingSettingsTest, SettingTheBitrateIsTracedAtLevel4) {
  FakeDaemon daemon;
  WriteFile(kStreamingSettingsFile, StreamingFile("0", "42", "1"));
  const std::string body = Body("SetStreamingBitrate", R"("Bitrate":"12M")");
  const LogLine parsed = Info("##### SetStreamingBitrate Parse() m_bitrate=12M");
  Post(body);
  EXPECT_THAT(log_.TakeLines(),
              Logged(Error("rcv post_data = " + body), Info(kRenewalTrace),
                     Error("send res_str = " + ResultJson("SetStreamingBitrate"))));
  WriteFile(kLogLevelFile, "cmd=4\n");
  Post(body);
  EXPECT_EQ(log_.TakeLines(), SetLog("SetStreamingBitrate", body, {parsed, parsed},
                                     "res:0 qua:106 ser:1", "res:0 qua:106 ser:1"));
}

TEST_F(StreamingSettingsTest, NamesAreTruncatedTo30Characters) {
  FakeDaemon daemon;
  const std::string longest(30, 'r');
  Post(Body("SetStreamingSettings",
            "\"Resolution\":\"" + longest + "cut\",\"Bitrate\":\"" + longest + "cut\""));
  EXPECT_THAT(log_.Lines(), testing::Contains(Info("##### SetStreamingSettings Parse() "
                                                   "m_resolution=" +
                                                   longest + " m_bitrate=" + longest)));
}

TEST_F(StreamingSettingsTest, AnAbsentDaemonEndsTheRequestAfterTheFileIsWritten) {
  for (const char* command : {"SetStreamingSettings", "SetCurrentStreamingServerID"}) {
    SCOPED_TRACE(command);
    WriteFile(kStreamingSettingsFile, StreamingFile("3", "42", "1"));
    EXPECT_THAT(Post(Body(command)), EndedSilently(1));
    EXPECT_NE(ReadFile(kStreamingSettingsFile), StreamingFile("3", "42", "1"));
    const LogLines lines = log_.TakeLines();
    ASSERT_GE(lines.size(), 3U);
    EXPECT_THAT(LogLines(lines.end() - 3, lines.end()),
                Logged(Info(kRenewalTrace), Error("error: socket connect error.\n"),
                       Error("cmd:6374: Can't connect SOCK_NAME")));
  }
}

TEST_F(StreamingSettingsTest, AWriteFailureDoesNotChangeTheReply) {
  FakeDaemon daemon;
  WriteFile(kStreamingSettingsFile, StreamingFile("0", "42", "1"));
  const std::string body = Body("SetStreamingBitrate", R"("Bitrate":"12M")");
  {
    const ReadOnly folder(kSettingsFolder);
    EXPECT_THAT(Post(body), Replied(ResultJson("SetStreamingBitrate")));
    EXPECT_EQ(ReadFile(kStreamingSettingsFile), StreamingFile("0", "42", "1"));
  }
  EXPECT_THAT(daemon.Received(), ElementsAre(RenewalNotice()));
}

TEST_F(StreamingSettingsTest, AFullDiskDoesNotChangeTheReply) {
  FakeDaemon daemon;
  const std::string body = Body("SetStreamingBitrate", R"("Bitrate":"12M")");
  EXPECT_THAT(RunHandler(Request(body).LimitFileSize(16)),
              Replied(ResultJson("SetStreamingBitrate")));
  EXPECT_FALSE(Exists(kStreamingSettingsFile));  // a partial file would be worse than none
  EXPECT_THAT(daemon.Received(), ElementsAre(RenewalNotice()));
}

TEST_F(StreamingSettingsTest, WithoutAnyRoomAFileKeepsItsContents) {
  const FakeDaemon daemon;
  WriteFile(kStreamingSettingsFile, StreamingFile("0", "42", "1"));
  const std::string body = Body("SetStreamingBitrate", R"("Bitrate":"12M")");
  EXPECT_THAT(RunHandler(Request(body).LimitFileSize(0)),
              Replied(ResultJson("SetStreamingBitrate")));
  EXPECT_EQ(ReadFile(kStreamingSettingsFile), StreamingFile("0", "42", "1"));
}

TEST_F(StreamingSettingsTest, AFolderInPlaceOfTheFileCountsAsMissing) {
  FakeDaemon daemon;
  mkdir(kStreamingSettingsFile, 0755);
  EXPECT_THAT(Post(Body("GetStreamingSettings")), Replied(Format("1920x1080", "60p", "")));
  EXPECT_THAT(Post(Body("GetCurrentStreamingServerID")),
              Replied(DataJson("GetCurrentStreamingServerID", "\"ID\":0")));
  EXPECT_THAT(Post(Body("SetStreamingFramerate", R"("Framerate":"25p")")),
              Replied(ResultJson("SetStreamingFramerate")));
  EXPECT_THAT(daemon.Received(), ElementsAre(RenewalNotice()));
}

TEST_F(StreamingSettingsTest, TheCurrentServerIsReportedAsItIsStored) {
  const RepliesMayBreak may_break;
  EXPECT_THAT(Post(Body("GetCurrentStreamingServerID")),
              Replied(DataJson("GetCurrentStreamingServerID", "\"ID\":0")));
  EXPECT_FALSE(Exists(kStreamingSettingsFile));
  for (const std::string stored : {"2", "-1", "007", "none"}) {
    WriteFile(kStreamingSettingsFile, StreamingFile("0", "0", stored));
    EXPECT_THAT(Post(Body("GetCurrentStreamingServerID")),
                Replied(DataJson("GetCurrentStreamingServerID", "\"ID\":" + stored)));
  }
}

TEST_F(StreamingSettingsTest, TheServerAndItsUrlAreToldApart) {
  const RepliesMayBreak may_break;
  WriteFile(kStreamingSettingsFile, "server\t2\nserverurl\t3\n");
  EXPECT_THAT(Post(Body("GetCurrentStreamingServerID")),
              Replied(DataJson("GetCurrentStreamingServerID", "\"ID\":2")));
  WriteFile(kStreamingSettingsFile, "serverurl\t3\n");
  EXPECT_THAT(Post(Body("GetCurrentStreamingServerID")),
              Replied(DataJson("GetCurrentStreamingServerID", "\"ID\":")));
}

TEST_F(StreamingSettingsTest, TheCurrentServerIsStored) {
  const struct {
    const char* params;
    const char* server;
  } rows[] = {{R"("ID":3)", "3"},     {R"("ID":0)", "0"},
              {R"("ID":-1)", "-1"},   {R"("ID":"2")", "2"},
              {R"("ID":"two")", "0"}, {R"("ID":-99999999999)", "-2147483648"},
              {R"("ID":-5.5)", "-5"}};
  for (const auto& row : rows) {
    ExpectChange("SetCurrentStreamingServerID", row.params, StreamingFile("0", "42", "1"),
                 StreamingFile("0", "42", row.server));
  }
}

TEST_F(StreamingSettingsTest, ChoosingTheCurrentServerIsTraced) {
  FakeDaemon daemon;
  WriteFile(kStreamingSettingsFile, StreamingFile("0", "42", "1"));
  const std::string body = Body("SetCurrentStreamingServerID", R"("ID":-1)");
  Post(body);
  EXPECT_EQ(log_.Lines(), SetLog("SetCurrentStreamingServerID", body,
                                 {Info("##### SetCurrentStreamingServerID Parse() m_server=-1 OK")},
                                 "res:0 qua:42 ser:1", "res:0 qua:42 ser:-1"));
}

TEST_F(StreamingSettingsTest, ServersFrom4OnAreRefused) {
  FakeDaemon daemon;
  WriteFile(kStreamingSettingsFile, StreamingFile("0", "42", "1"));
  const struct {
    const char* id;
    const char* logged;
  } rows[] = {{"4", "4"}, {"2147483648", "2147483647"}};
  for (const auto& row : rows) {
    const std::string params = std::string("\"ID\":") + row.id;
    const std::string body = Body("SetCurrentStreamingServerID", params);
    EXPECT_THAT(Post(body), Replied(ErrorJson("RequestedError")));
    EXPECT_THAT(log_.TakeLines(),
                Logged(Error("rcv post_data = " + body),
                       Info(std::string("##### SetCurrentStreamingServerID Parse() m_server=") +
                            row.logged + " NG"),
                       Error("requested error ret=1, params=\"Params\":{" + params + "}}}")));
  }
  EXPECT_EQ(ReadFile(kStreamingSettingsFile), StreamingFile("0", "42", "1"));
  EXPECT_THAT(daemon.Received(), IsEmpty());
}

}  // namespace
