#include <initializer_list>
#include <string>
#include <vector>

#include "camera_status_reports.h"
#include "harness/camera_test.h"

// The camera status report: where each of its values comes from, and its exact text.

namespace {

using namespace harness;

// The daemon's reply in the report of distinct values.
std::string FullReply() {
  return Bytes({0, 0xEE, 3, 1, 4, 1, 0x02, 0x03, 0x01, 0x23, 0x45, 0x96}) +
         Bytes({3, 1, 0x0E, 0x0F, 0x10, 0x11}) +    // slot A
         Bytes({2, 0, 0xFF, 0xFF, 0x00, 0x03}) +    // slot B
         Bytes({2, 200, 0x04, 0xD2, 1}) +           // battery, aspect ratio
         Bytes({1, 0xFE, 0x7F, 0x80, 10, 1, 0x9C})  // pages, network, zoom display
         + Bytes({5, 0xFB});                        // remaining space
}

StatusBlock FullBlock() {
  StatusBlock block;
  for (int offset = 120; offset <= 221; ++offset) {
    block.SetByte(static_cast<std::size_t>(offset), offset);
  }
  block.SetByte(115, 201)
      .SetBytes(420, Bytes({6, 14, 87, 3, 2}))
      .SetBytes(444, Bytes({0x00, 0x00, 0x01, 0x2C, 0x01, 0x02, 0x00, 0x33}))
      .SetText(452,
               "clip 0051 is being uploaded to"
               "!!");
  block.SetText(76, "-3dB12dB18dB")
      .SetText(238, "Focus assist, tele  Zebra 1, seventy per")
      .SetText(278, "Marker, centre only Stabiliser, strong. ")
      .SetText(318, "Black stretch (threeRecord review, five ")
      .SetText(358, "Clip review, latest ")
      .SetText(520, "Load picture file 08Spot meter, small...")
      .SetText(560, "Colour bars and toneNo function at all..")
      .SetText(600, "Return video, line 23200 K sun4300 K [A]5600 K [B]");
  block.SetByte(62, 1).SetByte(63, 2).SetText(64, "F11.0");
  block.SetByte(70, 3).SetText(71, "-3.0d");
  block.SetByte(410, 2).SetText(412, "+1.5");
  block.SetByte(88, 4).SetText(90, "1/2000.5");
  block.SetByte(98, 3).SetText(100, "12345 Kel");
  block.SetBytes(382, Bytes({0x02, 0x01, 0xFD, 0xFE, 0x7F, 0xFF, 0x80, 0x00}));
  block.SetText(390, "R: +12.345B: -67.890");
  block.SetByte(52, 2).SetText(54, "1234.56m");
  block.SetText(486, "+0.12-9.99");
  block.SetByte(110, 1).SetBytes(416, Bytes({1, 1, 1}));
  return block.SetBytes(504, Bytes({1, 2, 3, 3}));
}

class CameraStatusTest : public CameraTest {
 protected:
  /// The reply to a poll while the daemon answers with this payload.
  Outcome Poll(const std::string& payload) {
    daemon_.Next(Answer(ReplyMessage(payload)));
    return Post(Body("GetCamStatus"));
  }

  FakeDaemon daemon_;
};

/// The daemon's reply: these bytes at the offset, otherwise zeros.
std::string ReplyWith(std::size_t offset, const std::string& bytes) {
  return std::string(38, '\0').replace(offset, bytes.size(), bytes);
}

/// The report with `from`, which must occur exactly once, replaced by `to`.
std::string Changed(std::string report, const std::string& from, const std::string& to) {
  const std::size_t at = report.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  EXPECT_EQ(report.find(from, at + 1), std::string::npos) << from;
  return report.replace(at, from.size(), to);
}

TEST_F(CameraStatusTest, AsksTheControlDaemonWithTheBareHeader) {
  const Outcome outcome = Poll(std::string(38, '\0'));
  EXPECT_THAT(outcome, Replied(DataJson("GetCamStatus", kZeroReport)));
  EXPECT_THAT(daemon_.Received(), testing::ElementsAre(Message(5, 0, 0, outcome.pid)));
}

TEST_F(CameraStatusTest, TakesEveryValueFromItsOwnSource) {
  FullBlock().Store();
  EXPECT_THAT(Poll(FullReply()), Replied(DataJson("GetCamStatus", kFullReport)));
}

TEST_F(CameraStatusTest, IsCompleteAtItsLongest) {
  StatusBlock block;
  block.Fill('W');  // no text has a terminator
  for (std::size_t offset = 115; offset <= 221; ++offset) {
    block.SetByte(offset, 255);
  }
  block.SetBytes(382, Bytes({0x80, 0, 0x80, 0, 0x80, 0, 0x80, 0}));
  block.SetBytes(420, Bytes({9, 12, 255, 255, 3}));
  block.SetBytes(444, std::string(29, '\xFF'));
  block.SetByte(62, 0).SetByte(70, 4).SetByte(88, 3).SetByte(410, 2).SetByte(52, 2);
  block.SetByte(110, 1).SetBytes(416, Bytes({0, 0, 0})).SetBytes(504, Bytes({2, 2, 2, 3}));
  block.Store();
  const std::string slot = Bytes({4, 0, 0xFF, 0xFE, 0xFF, 0xFF});
  const Outcome outcome =
      Poll(Bytes({1, 0, 4, 5, 4, 0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}) + slot + slot +
           Bytes({1, 255, 0xFF, 0xFF, 0, 0x80, 0x80, 0x80, 0x80, 5, 0, 0x80, 0x80, 0x80}));
  EXPECT_THAT(outcome, Replied(DataJson("GetCamStatus", kMaxReport, "RequestedError")));
  EXPECT_THAT(outcome.output, testing::HasSubstr("\nContent-Length:3531\n\n"));
}

TEST_F(CameraStatusTest, ReportsZerosWithoutStatusBlockAndReply) {
  struct Row {
    const char* description;
    Script script;
  };
  const Row rows[] = {
      {"no reply at all", CloseAfterReading()},
      {"half a header", AnswerAndClose(ReplyHeader(38).substr(0, 6))},
      {"a header that announces nothing", Answer(ReplyMessage(""))},
      {"a header alone", AnswerAndClose(ReplyHeader(38))},
      {"a result alone", Answer(ReplyMessage(Bytes({0})))},
      {"fewer bytes than announced", AnswerAndClose(ReplyHeader(38) + Bytes({0, 0, 0, 0}))},
      {"more bytes than are known", Answer(ReplyMessage(std::string(38, '\0') + "surplus"))},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.description);
    daemon_.Next(row.script);
    EXPECT_THAT(Post(Body("GetCamStatus")), Replied(DataJson("GetCamStatus", kZeroReport)));
  }
}

TEST_F(CameraStatusTest, ReadsMissingBytesOfAShortReplyAsZero) {
  FullBlock().Store();
  const std::string whole = FullReply();
  for (std::size_t length = 0; length < whole.size(); ++length) {
    SCOPED_TRACE(length);
    std::string padded = whole.substr(0, length);
    padded.resize(whole.size(), '\0');
    EXPECT_EQ(Poll(whole.substr(0, length)).output, Poll(padded).output);
  }
}

TEST_F(CameraStatusTest, EndsInTheMiddleOfASlotWithZeros) {
  // The last byte that arrived is the high byte of slot A's remaining time.
  EXPECT_THAT(Poll(Bytes({0, 0, 1, 5, 2, 1, 0x01, 0x02, 0x10, 0x20, 0x30, 0x04, 1, 1, 0x01})),
              Replied(DataJson(
                  "GetCamStatus",
                  Changed(Changed(kZeroReport,
                                  R"("Status":"NoCard","Mode":"Camera","RecMode":"Normal",)"
                                  R"("ZoomStatus":"Idol","ZoomPosition":"0","TC":"00:00:00:00")",
                                  R"("Status":"Stop","Mode":"EditMetadata","RecMode":"Clip",)"
                                  R"("ZoomStatus":"Zoom","ZoomPosition":"258","TC":"10:20:30:04")"),
                          R"("SlotA":{"Status":"NoCard","Protect":"Unlock","Remain":"0")",
                          R"("SlotA":{"Status":"Select","Protect":"Lock","Remain":"256")"))));
}

TEST_F(CameraStatusTest, ReadsZerosAfterTheEndOfAShortStatusBlock) {
  FullBlock().Store(600);  // up to the lens return button's label
  EXPECT_THAT(
      Poll(FullReply()),
      Replied(DataJson("GetCamStatus",
                       Changed(kFullReport,
                               R"("LenzRet":"Return video, line 2"},"Whb":{"Preset":"3200 K sun",)"
                               R"("A":"4300 K [A]","B":"5600 K [B]"}})",
                               R"("LenzRet":""},"Whb":{"Preset":"","A":"","B":""}})"))));
}

// Words.

/// Where a code comes from.
enum class Source { kReply, kBlock };

struct CodeAndWord {
  int code;
  const char* word;
};

class StatusWordTest : public CameraStatusTest {
 protected:
  /// Each code at `offset` must change the zero report in only one place: the word between `before`
  /// and `after`. The first row is that of code 0.
  void ExpectWords(Source source, std::size_t offset, const std::string& before,
                   std::initializer_list<CodeAndWord> rows, const std::string& after = "\"") {
    const std::string zero_word = rows.begin()->word;
    for (const CodeAndWord& row : rows) {
      SCOPED_TRACE(before + " of code " + std::to_string(row.code));
      StatusBlock block;
      if (source == Source::kBlock) {
        block.SetByte(offset, row.code);
      }
      block.Store();
      const std::string payload =
          source == Source::kReply ? ReplyWith(offset, Bytes({row.code})) : std::string(38, '\0');
      const std::string report =
          Changed(kZeroReport, before + zero_word + after, before + row.word + after);
      EXPECT_THAT(Poll(payload), Replied(DataJson("GetCamStatus", report)));
    }
  }
};

TEST_F(StatusWordTest, Recording) {
  ExpectWords(Source::kReply, 2, R"("Status":")",
              {{0, "NoCard"},
               {1, "Stop"},
               {2, "Standby"},
               {3, "Rec"},
               {4, "RecPause"},
               {5, "Standby"},
               {128, "Standby"},
               {255, "Standby"}},
              R"(","Mode":)");
}

TEST_F(StatusWordTest, CameraMode) {
  ExpectWords(Source::kReply, 3, R"("Mode":")",
              {{0, "Camera"},
               {1, "Thmubnail"},
               {2, "Play"},
               {3, "Camera"},
               {4, "USB"},
               {5, "EditMetadata"},
               {6, "Camera"},
               {255, "Camera"}});
}

TEST_F(StatusWordTest, RecordingMode) {
  ExpectWords(Source::kReply, 4, R"("RecMode":")",
              {{0, "Normal"},
               {1, "Pre"},
               {2, "Clip"},
               {3, "Frame"},
               {4, "Interval"},
               {5, "Normal"},
               {255, "Normal"}});
}

TEST_F(StatusWordTest, Zooming) {
  ExpectWords(Source::kReply, 5, R"("ZoomStatus":")",
              {{0, "Idol"}, {1, "Zoom"}, {2, "Zoom"}, {255, "Zoom"}});
}

TEST_F(StatusWordTest, Slots) {
  const std::initializer_list<CodeAndWord> rows = {
      {0, "NoCard"},      {1, "Select"},  {2, "NoSelect"}, {3, "SelectRec"},
      {4, "NoSelectRec"}, {5, "Invalid"}, {6, "Unknown"},  {255, "Unknown"}};
  ExpectWords(Source::kReply, 12, R"("SlotA":{"Status":")", rows);
  ExpectWords(Source::kReply, 18, R"("SlotB":{"Status":")", rows);
}

TEST_F(StatusWordTest, SlotProtection) {
  const std::initializer_list<CodeAndWord> rows = {
      {0, "Unlock"}, {1, "Lock"}, {2, "Lock"}, {255, "Lock"}};
  ExpectWords(Source::kReply, 13, R"("SlotA":{"Status":"NoCard","Protect":")", rows);
  ExpectWords(Source::kReply, 19, R"("SlotB":{"Status":"NoCard","Protect":")", rows);
}

TEST_F(StatusWordTest, Battery) {
  ExpectWords(Source::kReply, 24, R"("Info":")",
              {{0, "Time"}, {1, "Capacity"}, {2, "Voltage"}, {3, "Time"}, {255, "Time"}});
}

TEST_F(StatusWordTest, AspectRatio) {
  ExpectWords(Source::kReply, 28, R"("AspectRatio":")",
              {{0, "16:9"}, {1, "4:3"}, {2, "16:9"}, {255, "16:9"}});
}

TEST_F(StatusWordTest, NetAdaptor) {
  ExpectWords(Source::kReply, 33, R"("NetAdaptorStatus":")",
              {{0, R"(Off","NetAdaptorType":"Unknown)"},
               {1, R"(None","NetAdaptorType":"Unknown)"},
               {2, R"(Mismatch","NetAdaptorType":"Unknown)"},
               {3, R"(Connecting","NetAdaptorType":"WLAN_AP)"},
               {4, R"(Connected","NetAdaptorType":"WLAN_AP)"},
               {5, R"(Connecting","NetAdaptorType":"WLAN_P2P)"},
               {6, R"(Connected","NetAdaptorType":"WLAN_P2P)"},
               {7, R"(Connecting","NetAdaptorType":"Ethernet)"},
               {8, R"(Connected","NetAdaptorType":"Ethernet)"},
               {9, R"(Connecting","NetAdaptorType":"Cellular)"},
               {10, R"(Connected","NetAdaptorType":"Cellular)"},
               {11, R"(Off","NetAdaptorType":"Unknown)"},
               {255, R"(Off","NetAdaptorType":"Unknown)"}});
}

TEST_F(StatusWordTest, WebAccess) {
  ExpectWords(Source::kReply, 34, R"("WebAccess":")",
              {{0, "Off"}, {1, "On"}, {2, "On"}, {255, "On"}});
}

TEST_F(StatusWordTest, FtpPhases) {
  const std::initializer_list<CodeAndWord> rows = {
      {0, "OFF"},      {1, "START"},   {2, "OCCUPY_SLOT"}, {3, "CLEAR"},
      {4, "MOUNT"},    {5, "PARSE"},   {6, "TRANS"},       {7, "PUT_FILE"},
      {8, "?????"},    {10, "PROMPT"}, {11, "UNMOUNT"},    {12, "RELEASE_SLOT"},
      {13, "RECOVER"}, {14, "RESUME"}, {15, "?????"},      {255, "?????"}};
  ExpectWords(Source::kBlock, 420, R"("Phase1":")", rows);
  ExpectWords(Source::kBlock, 421, R"("Phase2":")", rows);
  // Only the first job's question about a key shows in the message (see below).
  ExpectWords(Source::kBlock, 421, R"("Phase2":")", {{0, "OFF"}, {9, "TRUST"}});
}

TEST_F(StatusWordTest, FtpServer) {
  ExpectWords(Source::kBlock, 424, R"("Server":")",
              {{0, "FTP1"}, {1, "FTP2"}, {2, "FTP3"}, {3, "FTP4"}, {4, "FTP1"}, {255, "FTP1"}});
}

TEST_F(StatusWordTest, Fullauto) {
  ExpectWords(Source::kBlock, 62, R"("Fullauto":")",
              {{0, "Off"}, {1, "On"}, {2, "On"}, {255, "On"}});
}

TEST_F(StatusWordTest, Iris) {
  ExpectWords(
      Source::kBlock, 63, R"("Iris":{"Status":")",
      {{0, "Manual"}, {1, "Auto"}, {2, "AutoAELock"}, {3, "AutoAELock"}, {255, "AutoAELock"}});
}

TEST_F(StatusWordTest, Gain) {
  ExpectWords(Source::kBlock, 70, R"("Gain":{"Status":")",
              {{0, "ManualL"},
               {1, "ManualM"},
               {2, "ManualH"},
               {3, "Alc"},
               {4, "AlcAELock"},
               {5, "Lolux"},
               {6, "Lolux"},
               {255, "Lolux"}});
}

TEST_F(StatusWordTest, AeLevel) {
  ExpectWords(Source::kBlock, 410, R"("AeLevel":{"Status":")",
              {{0, "AeOff"}, {1, "AeOn"}, {2, "AeOnFace"}, {3, "AeOff"}, {255, "AeOff"}});
}

TEST_F(StatusWordTest, Shutter) {
  ExpectWords(Source::kBlock, 88, R"("Shutter":{"Status":")",
              {{0, "Off"},
               {1, "Manual"},
               {2, "Eei"},
               {3, "EeiAELock"},
               {4, "Step"},
               {5, "Variable"},
               {6, ""},
               {255, ""}});
}

TEST_F(StatusWordTest, WhiteBalance) {
  ExpectWords(
      Source::kBlock, 98, R"("Whb":{"Status":")",
      {{0, "Preset"}, {1, "A"}, {2, "B"}, {3, "Faw"}, {4, "FawAELock"}, {255, "FawAELock"}});
}

TEST_F(StatusWordTest, Focus) {
  ExpectWords(
      Source::kBlock, 52, R"("Focus":{"Status":")",
      {{0, "AFFace"}, {1, "AF"}, {2, "MFOnePush"}, {3, "MF"}, {4, "MFFace"}, {255, "MFFace"}});
}

TEST_F(StatusWordTest, DisplayIsOnWhenItsByteIsZero) {
  ExpectWords(Source::kBlock, 110, R"("Disptv":")",
              {{0, "On"}, {1, "Off"}, {2, "Off"}, {255, "Off"}});
}

TEST_F(StatusWordTest, CharacterMixIsOffWhenItsByteIsZero) {
  const std::initializer_list<CodeAndWord> rows = {{0, "Off"}, {1, "On"}, {2, "On"}, {255, "On"}};
  ExpectWords(Source::kBlock, 416, R"("CharMix":{"Sdi":")", rows);
  ExpectWords(Source::kBlock, 417, R"("Hdmi":")", rows);
  ExpectWords(Source::kBlock, 418, R"("Video":")", rows);
}

TEST_F(StatusWordTest, CloudStreaming) {
  const std::initializer_list<CodeAndWord> rows = {
      {0, "Idle"}, {1, "Doing"}, {2, "Finished"}, {3, "Failed"}, {255, "Failed"}};
  ExpectWords(Source::kBlock, 504, R"("LoginStatus":")", rows);
  ExpectWords(Source::kBlock, 505, R"("GetEventListStatus":")", rows);
  ExpectWords(Source::kBlock, 506, R"("GetStreamInfoStatus":")", rows);
}

TEST_F(StatusWordTest, CloudError) {
  ExpectWords(Source::kBlock, 507, R"("Error":")",
              {{0, "None"},
               {1, "Ssl"},
               {2, "Timeout"},
               {3, "Authorization"},
               {4, "Server"},
               {5, "Url"},
               {6, "Other"},
               {255, "Other"}});
}

// Numbers and texts.

TEST_F(CameraStatusTest, RemainingTimeOfASlotIsMinusOneWhenUnknown) {
  struct Row {
    std::string bytes;
    const char* remain;
  };
  const Row rows[] = {
      {Bytes({0xFF, 0xFF}), "-1"},    {Bytes({0xFF, 0xFE}), "65534"},
      {Bytes({0x7F, 0xFF}), "32767"}, {Bytes({0x80, 0x00}), "32768"},
      {Bytes({0x00, 0x5F}), "95"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.remain);
    for (const char* const slot : {"SlotA", "SlotB"}) {
      const std::string before =
          '"' + std::string(slot) + R"(":{"Status":"NoCard","Protect":"Unlock","Remain":")";
      EXPECT_THAT(Poll(ReplyWith(slot[4] == 'A' ? 14 : 20, row.bytes)),
                  Replied(DataJson("GetCamStatus", Changed(kZeroReport, before + "0\"",
                                                           before + row.remain + '"'))));
    }
  }
}

TEST_F(CameraStatusTest, TimeCode) {
  struct Row {
    const char* description;
    std::string bytes;
    const char* text;
  };
  const Row rows[] = {
      {"drop frame", Bytes({0x01, 0x23, 0x45, 0x96}), "01:23:45.16"},
      {"drop frame, no frames", Bytes({0x10, 0x00, 0x00, 0x80}), "10:00:00.00"},
      {"no drop frame", Bytes({0x23, 0x59, 0x59, 0x29}), "23:59:59:29"},
      {"nibbles above 9", Bytes({0xC1, 0x82, 0x83, 0x04}), "01:02:03:04"},
      {"digits that are none", Bytes({0x3A, 0x6B, 0x7C, 0x0F}), "3a:6b:7c:0f"},
      {"all bits", Bytes({0xFF, 0xFF, 0xFF, 0xFF}), "3f:7f:7f.7f"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.description);
    EXPECT_THAT(
        Poll(ReplyWith(8, row.bytes)),
        Replied(DataJson("GetCamStatus", Changed(kZeroReport, R"("TC":"00:00:00:00")",
                                                 R"("TC":")" + std::string(row.text) + '"'))));
  }
}

TEST_F(CameraStatusTest, SignedAndUnsignedPagePermissions) {
  StatusBlock().SetByte(115, 255).Store();
  EXPECT_THAT(
      Poll(ReplyWith(29, Bytes({255, 255, 255, 255}))),
      Replied(DataJson("GetCamStatus",
                       Changed(kZeroReport,
                               R"({"PlanningMetadata":0,"EditMetadata":0,"ViewRemote":0,)"
                               R"("CameraControl":0,"Setting":0})",
                               R"({"PlanningMetadata":-1,"EditMetadata":-1,"ViewRemote":-1,)"
                               R"("CameraControl":255,"Setting":-1})"))));
}

TEST_F(CameraStatusTest, RemainingTimeOfAnUpload) {
  struct Row {
    std::string bytes;
    const char* seconds;
  };
  const Row rows[] = {
      {Bytes({0x00, 0x00, 0x01, 0x2C}), "300"},
      {Bytes({0x7F, 0xFF, 0xFF, 0xFF}), "2147483647"},
      {Bytes({0x80, 0x00, 0x00, 0x00}), "2147483648"},
      {Bytes({0xFF, 0xFF, 0xFF, 0xFF}), "4294967295"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.seconds);
    StatusBlock().SetBytes(444, row.bytes).Store();
    EXPECT_THAT(Poll(std::string(38, '\0')),
                Replied(DataJson("GetCamStatus", Changed(kZeroReport, R"("NowSize":0,"Remain":0,)",
                                                         R"("NowSize":0,"Remain":)" +
                                                             std::string(row.seconds) + ','))));
  }
}

TEST_F(CameraStatusTest, KeyOfAnFtpServerThatAsksForTrust) {
  struct Row {
    int type;
    const char* message;
  };
  constexpr char kFourByFour[] = "00:01:0A:0F: 10:A0:FF:7F: 80:12:34:56: 78:9A:BC:DE: F0:C0:D1:E2";
  const Row rows[] = {
      {0, kFourByFour},
      {1, "00:01:0A:0F:10:A0:FF:7F:80:12: 34:56:78:9A:BC:DE:F0:C0:D1:E2"},
      {2, "00:01:0A:0F:10:A0:FF:7F: 80:12:34:56:78:9A:BC:DE"},
      {3, kFourByFour},
      {255, kFourByFour},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.type);
    StatusBlock()
        .SetByte(420, 9)
        .SetByte(452, row.type)
        .SetBytes(453, Bytes({0x00, 0x01, 0x0A, 0x0F, 0x10, 0xA0, 0xFF, 0x7F, 0x80, 0x12, 0x34,
                              0x56, 0x78, 0x9A, 0xBC, 0xDE, 0xF0, 0xC0, 0xD1, 0xE2, 0xEE}))
        .Store();
    const std::string report =
        Changed(Changed(kZeroReport, R"("Phase1":"OFF")", R"("Phase1":"TRUST")"),
                R"("Type":0,"Message":"")",
                R"("Type":)" + std::to_string(row.type) + R"(,"Message":")" + row.message + '"');
    EXPECT_THAT(Poll(std::string(38, '\0')), Replied(DataJson("GetCamStatus", report)));
  }
}

TEST_F(CameraStatusTest, MessageIsATextWhenOnlyTheSecondJobAsksForTrust) {
  StatusBlock().SetByte(421, 9).SetText(452, "server is busy").Store();
  const std::string report =
      Changed(Changed(kZeroReport, R"("Phase2":"OFF")", R"("Phase2":"TRUST")"),
              R"("Type":0,"Message":"")", R"("Type":115,"Message":"server is busy")");
  EXPECT_THAT(Poll(std::string(38, '\0')), Replied(DataJson("GetCamStatus", report)));
}

TEST_F(CameraStatusTest, TextsEndAtTheirTerminator) {
  StatusBlock()
      .SetBytes(64, std::string("F4\0ab", 5))
      .SetBytes(600, std::string("\0abc", 4))
      .Store();
  EXPECT_THAT(Poll(std::string(38, '\0')),
              Replied(DataJson("GetCamStatus",
                               Changed(kZeroReport, R"("Iris":{"Status":"Manual","Letter":"")",
                                       R"("Iris":{"Status":"Manual","Letter":"F4")"))));
}

TEST_F(CameraStatusTest, TextsAreNotEscaped) {
  const RepliesMayBreak may_break;
  StatusBlock().SetText(238, "50% \"\\\n").Store();
  EXPECT_THAT(Poll(std::string(38, '\0')),
              Replied(DataJson("GetCamStatus",
                               Changed(kZeroReport, R"("Sw1":"")", "\"Sw1\":\"50% \"\\\n\""))));
}

TEST_F(CameraStatusTest, ReportsTheResultOfTheDaemonWithTheData) {
  struct Row {
    int result;
    const char* word;
  };
  constexpr Row kRows[] = {
      {0, "Success"}, {1, "RequestedError"}, {2, "DisableError"}, {3, "Success"}};
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.result);
    EXPECT_THAT(Poll(ReplyWith(0, Bytes({row.result}))),
                Replied(DataJson("GetCamStatus", kZeroReport, row.word)));
  }
}

TEST_F(CameraStatusTest, ParametersAreIgnored) {
  daemon_.Next(Answer(ReplyMessage(std::string(38, '\0'))));
  const Outcome outcome = Post(Body("GetCamStatus", R"("Page":1)"));
  EXPECT_THAT(outcome, Replied(DataJson("GetCamStatus", kZeroReport)));
  EXPECT_THAT(daemon_.Received(), testing::ElementsAre(Message(5, 0, 0, outcome.pid)));
}

TEST_F(CameraStatusTest, LeavesNoTraceAtAnyLevel) {
  WriteFile(kLogLevelFile, "cmd=7\n");
  Poll(std::string(38, '\0'));
  EXPECT_THAT(log_.Lines(), testing::IsEmpty());
}

TEST_F(CameraStatusTest, EndsSilentlyWithoutItsDaemon) {
  LeaveDeadSocket();
  EXPECT_THAT(Post(Body("GetCamStatus")), EndedSilently(1));
  EXPECT_THAT(log_.Lines(), Logged(Error("cannot connect sockname.")));
}

}  // namespace
