// The zoom positions of the buttons A, B and C.
#include <string>

#include "settings_test.h"

namespace {

using namespace harness;

std::string PresetFile(const std::string& a, const std::string& b, const std::string& c) {
  return "preset_a\t" + a + "\npreset_b\t" + b + "\npreset_c\t" + c + "\n";
}

std::string Positions(const std::string& a, const std::string& b, const std::string& c) {
  return "\"A\":" + a + ",\"B\":" + b + ",\"C\":" + c;
}

class PresetZoomTest : public SettingsTest {
 protected:
  PresetZoomTest() : SettingsTest("/var/tmp/lighttpd/web_zoom_preset") {}
};

TEST_F(PresetZoomTest, WithoutAFileNoPositionIsSet) {
  const std::string body = Body("GetPresetZoomPosition");
  const std::string reply = DataJson("GetPresetZoomPosition", R"("A":-1,"B":-1,"C":-1)");
  EXPECT_THAT(Post(body), Replied(reply));
  EXPECT_FALSE(Exists(file_));
  EXPECT_THAT(log_.Lines(),
              Logged(Error("rcv post_data = " + body), Error("send res_str = " + reply)));
}

TEST_F(PresetZoomTest, PositionsAreReportedAsTheyAreStored) {
  const RepliesMayBreak may_break;
  const std::string longest(29, '9');
  const struct {
    std::string stored;
    std::string reported;
  } rows[] = {
      {"0", "0"},           {"499", "499"},       {"-20", "-20"},     {"65535", "-1"},
      {"065535", "065535"}, {"655350", "655350"}, {"wide", "wide"},   {"", "-1"},
      {"1 2", "1"},         {"7\r", "7"},         {longest, longest}, {longest + "8", longest},
  };
  for (const auto& row : rows) {
    ExpectReported("GetPresetZoomPosition", PresetFile(row.stored, "1", "2"),
                   Positions(row.reported, "1", "2"));
    ExpectReported("GetPresetZoomPosition", PresetFile("1", row.stored, "2"),
                   Positions("1", row.reported, "2"));
    ExpectReported("GetPresetZoomPosition", PresetFile("1", "2", row.stored),
                   Positions("1", "2", row.reported));
  }
}

TEST_F(PresetZoomTest, AnExistingFileHasNoDefaults) {
  ExpectReported("GetPresetZoomPosition", "", Positions("-1", "-1", "-1"));
  ExpectReported("GetPresetZoomPosition", "preset_b\t5\n", Positions("-1", "5", "-1"));
  ExpectReported("GetPresetZoomPosition", "other\t3\npreset_c\t5\npreset_c\t6\n preset_a\t1\n",
                 Positions("-1", "-1", "6"));
}

TEST_F(PresetZoomTest, EachButtonStoresItsOwnPosition) {
  WriteFile(file_, PresetFile("1", "2", "3"));
  ExpectStored("SetPresetZoomPosition", R"("ID":"A","Position":100)", PresetFile("100", "2", "3"));
  ExpectStored("SetPresetZoomPosition", R"("ID":"B","Position":200)",
               PresetFile("100", "200", "3"));
  ExpectStored("SetPresetZoomPosition", R"("ID":"C","Position":300)",
               PresetFile("100", "200", "300"));
}

TEST_F(PresetZoomTest, ThePositionHasNoRange) {
  const struct {
    const char* position;
    const char* stored;
  } rows[] = {
      {"0", "0"},
      {"-20", "-20"},
      {"\"499\"", "499"},
      {"70000", "70000"},
      {"+7", "7"},
      {"9.5", "9"},
      {"\"tele\"", "0"},
      {"\"\"", "0"},
      {"99999999999", "2147483647"},
      {"-99999999999", "-2147483648"},
  };
  for (const auto& row : rows) {
    WriteFile(file_, PresetFile("1", "2", "3"));
    ExpectStored("SetPresetZoomPosition", std::string(R"("ID":"B","Position":)") + row.position,
                 PresetFile("1", row.stored, "3"));
  }
}

TEST_F(PresetZoomTest, ANegativePositionReadsBack) {
  ExpectStored("SetPresetZoomPosition", R"("ID":"A","Position":-20)",
               PresetFile("-20", "65535", "65535"));
  EXPECT_THAT(Post(Body("GetPresetZoomPosition")),
              Replied(DataJson("GetPresetZoomPosition", Positions("-20", "-1", "-1"))));
}

TEST_F(PresetZoomTest, Position65535ClearsAButton) {
  WriteFile(file_, PresetFile("1", "2", "3"));
  ExpectStored("SetPresetZoomPosition", R"("ID":"B","Position":65535)",
               PresetFile("1", "65535", "3"));
  EXPECT_THAT(Post(Body("GetPresetZoomPosition")),
              Replied(DataJson("GetPresetZoomPosition", Positions("1", "-1", "3"))));
}

/// The reply does not show it: the file is rewritten and the notice is sent.
TEST_F(PresetZoomTest, UnknownButtonsChangeNoPosition) {
  for (const char* id : {"a", "D", "AB", "", "0"}) {
    WriteFile(file_, "preset_c\t3\nother\t1\npreset_a\t1\n");
    ExpectStored("SetPresetZoomPosition", std::string(R"("ID":")") + id + R"(","Position":9)",
                 PresetFile("1", "", "3"));
  }
}

TEST_F(PresetZoomTest, UnknownButtonsCreateTheFileWithItsDefaults) {
  ExpectStored("SetPresetZoomPosition", R"("ID":"a","Position":9)",
               PresetFile("65535", "65535", "65535"));
}

TEST_F(PresetZoomTest, WithoutParametersTheFileIsRewritten) {
  WriteFile(file_, PresetFile("1", "2", "3"));
  ExpectStoredBy(Body("SetPresetZoomPosition"), "SetPresetZoomPosition", PresetFile("1", "2", "3"));
}

TEST_F(PresetZoomTest, StoringLogsOnlyTheNotice) {
  ExpectTraces("SetPresetZoomPosition", R"("ID":"A","Position":1)", {kRenewalTrace});
}

TEST_F(PresetZoomTest, MissingParametersAreRefused) {
  ExpectMissing("SetPresetZoomPosition", R"("Position":1)", "ID");
  ExpectMissing("SetPresetZoomPosition", R"("ID":"A")", "Position");
}

TEST_F(PresetZoomTest, Failures) {
  ExpectFailures("SetPresetZoomPosition", R"("ID":"C","Position":5)",
                 PresetFile("65535", "65535", "5"));
}

}  // namespace
