// The server that return audio (IFB) comes from.
#include <string>

#include "settings_test.h"

namespace {

using namespace harness;

/// The settings that clients can change, followed by those that they cannot change.
std::string IfbFile(const std::string& function, const std::string& address,
                    const std::string& port, const std::string& mountpoint,
                    const std::string& rest =
                        "ifb_type\t1\nifb_codec\t2\nifb_channel\t6\n"
                        "ifb_sample_rate\t44100\nifb_username\tuser\n"
                        "ifb_password\tsecret\n") {
  return "ifb_function\t" + function + "\nifb_address\t" + address + "\nifb_port\t" + port +
         "\nifb_mountpoint\t" + mountpoint + "\n" + rest;
}

const std::string kDefaultRest =
    "ifb_type\t0\nifb_codec\t0\nifb_channel\t1\nifb_sample_rate\t48000\nifb_username\t\n"
    "ifb_password\t\n";

std::string IfbSettings(const std::string& function, const std::string& address,
                        const std::string& port, const std::string& mountpoint) {
  return "\"Function\":\"" + function + "\",\"Address\":\"" + address + "\",\"Port\":" + port +
         ",\"Mountpoint\":\"" + mountpoint + "\"";
}

std::string Params(const std::string& function, const std::string& address, const std::string& port,
                   const std::string& mountpoint) {
  return "\"Function\":\"" + function + "\",\"Address\":\"" + address + "\",\"Port\":" + port +
         ",\"Mountpoint\":\"" + mountpoint + "\"";
}

class IfbTest : public SettingsTest {
 protected:
  IfbTest() : SettingsTest("/var/tmp/lighttpd/ifb") {}
};

TEST_F(IfbTest, WithoutAFileTheDefaultsAreReported) {
  EXPECT_THAT(Post(Body("GetIFBSettings")),
              Replied(DataJson("GetIFBSettings",
                               R"("Function":"Disable","Address":"192.168.0.100","Port":5000,)"
                               R"("Mountpoint":"DB90TX")")));
  EXPECT_FALSE(Exists(file_));
}

TEST_F(IfbTest, TheLowByteOfTheFunctionCounts) {
  const struct {
    const char* stored;
    const char* word;
  } rows[] = {{"0", "Disable"},   {"1", "Enable"},      {"2", "Enable"},  {"255", "Enable"},
              {"256", "Disable"}, {"257", "Enable"},    {"-1", "Enable"}, {"-256", "Disable"},
              {"", "Disable"},    {"Enable", "Disable"}};
  for (const auto& row : rows) {
    ExpectReported("GetIFBSettings", IfbFile(row.stored, "a", "1", "m"),
                   IfbSettings(row.word, "a", "1", "m"));
  }
}

TEST_F(IfbTest, SettingsAreReportedAsTheyAreStored) {
  const RepliesMayBreak may_break;
  const std::string address(129, 'a');
  const std::string port(29, '5');
  const std::string mountpoint(69, 'm');
  ExpectReported("GetIFBSettings", IfbFile("1", address, port, mountpoint),
                 IfbSettings("Enable", address, port, mountpoint));
  ExpectReported("GetIFBSettings", IfbFile("1", address + "x", port + "6", mountpoint + "x"),
                 IfbSettings("Enable", address, port, mountpoint));
  ExpectReported("GetIFBSettings", IfbFile("1", "two words", "0x50", "studio 1"),
                 IfbSettings("Enable", "two", "0x50", "studio"));
}

TEST_F(IfbTest, AnExistingFileHasNoDefaults) {
  const RepliesMayBreak may_break;
  ExpectReported("GetIFBSettings", "", IfbSettings("Disable", "", "", ""));
  ExpectReported("GetIFBSettings", "ifb_port\t1\nother\t2\nifb_port\t3\nifb_function\t1\n",
                 IfbSettings("Enable", "", "3", ""));
}

TEST_F(IfbTest, ReportingIsTraced) {
  WriteFile(file_, IfbFile("1", "a", "1", "m"));
  const std::string body = Body("GetIFBSettings");
  const LogLine output = Info("##### GetIFBSettings Output()");
  WriteFile(kLogLevelFile, "cmd=4\n");
  Post(body);
  EXPECT_THAT(log_.TakeLines(),
              Logged(Info("rcv post_data = " + body), output,
                     Info("send res_str = " +
                          DataJson("GetIFBSettings", IfbSettings("Enable", "a", "1", "m")))));
  WriteFile(kLogLevelFile, "cmd=2\n");
  Post(body);
  EXPECT_THAT(log_.TakeLines(), Logged(output));
  WriteFile(kLogLevelFile, "cmd=1\n");
  Post(body);
  EXPECT_THAT(log_.TakeLines(), Logged());
}

TEST_F(IfbTest, FourSettingsAreStoredAndSixKept) {
  ExpectStored("SetIFBSettings", Params("Enable", "10.0.0.1", "8000", "STUDIO"),
               IfbFile("1", "10.0.0.1", "8000", "STUDIO", kDefaultRest));
  WriteFile(file_, IfbFile("1", "a", "1", "m"));
  ExpectStored("SetIFBSettings", Params("Disable", "10.0.0.1", "8000", "STUDIO"),
               IfbFile("0", "10.0.0.1", "8000", "STUDIO"));
}

TEST_F(IfbTest, KeptSettingsAreTruncatedToTheirFields) {
  const std::string c29(29, 'c');
  const std::string u69(69, 'u');
  const std::string p200(200, 'p');
  WriteFile(file_, "ifb_password\t" + p200 + "\nifb_username\t" + u69 + "x\nifb_sample_rate\t" +
                       c29 + "x\nifb_channel\t" + c29 + "x\nifb_codec\t" + c29 + "x\nifb_type\t" +
                       c29 + "x\n");
  ExpectStored("SetIFBSettings", Params("Enable", "a", "1", "m"),
               IfbFile("1", "a", "1", "m",
                       "ifb_type\t" + c29 + "\nifb_codec\t" + c29 + "\nifb_channel\t" + c29 +
                           "\nifb_sample_rate\t" + c29 + "\nifb_username\t" + u69 +
                           "\nifb_password\t" + p200 + "\n"));
}

TEST_F(IfbTest, TheWordEnableAloneEnables) {
  const struct {
    const char* word;
    const char* stored;
  } rows[] = {{"Enable", "1"},  {"Disable", "0"}, {"enable", "0"},
              {"Enabled", "0"}, {"1", "0"},       {"", "0"}};
  for (const auto& row : rows) {
    ExpectStored("SetIFBSettings", Params(row.word, "a", "1", "m"),
                 IfbFile(row.stored, "a", "1", "m", kDefaultRest));
  }
}

TEST_F(IfbTest, ThePortIsStoredAsANumber) {
  const struct {
    const char* port;
    const char* stored;
  } rows[] = {{"\"5001\"", "5001"}, {"70000", "70000"}, {"-1", "-1"},
              {"\"http\"", "0"},    {"\"\"", "0"},      {"99999999999", "2147483647"}};
  for (const auto& row : rows) {
    ExpectStored("SetIFBSettings", Params("Enable", "a", row.port, "m"),
                 IfbFile("1", "a", row.stored, "m", kDefaultRest));
  }
}

TEST_F(IfbTest, TextsAreTruncatedTo30Characters) {
  const std::string text = "abcdefghijklmnopqrstuvwxyz0123";
  ExpectStored("SetIFBSettings", Params("Enable", text + "4", "1", text + "56"),
               IfbFile("1", text, "1", text, kDefaultRest));
}

TEST_F(IfbTest, StoringIsTraced) {
  const std::string word = "disable890123456789012345678901";
  ExpectTraces(
      "SetIFBSettings", Params(word, "10.0.0.1", "\"08\"", "STUDIO"),
      {Info("##### SetIFBSettings Parse() func:disable89012345678901234567890"
            " addr:10.0.0.1 port:8 mntp:STUDIO"),
       Info("##### SetIFBSettings Transmit() bofore func:0 addr:192.168.0.100 port:5000"
            " mntp:DB90TX"),
       Info("##### SetIFBSettings Transmit() after func:0 addr:10.0.0.1 port:8 mntp:STUDIO"),
       kRenewalTrace});
}

TEST_F(IfbTest, WithoutParametersZerosAndEmptyTextsAreStored) {
  WriteFile(file_, IfbFile("1", "a", "1", "m"));
  ExpectStoredBy(Body("SetIFBSettings"), "SetIFBSettings", IfbFile("0", "", "0", ""));
}

TEST_F(IfbTest, MissingParametersAreRefused) {
  ExpectMissing("SetIFBSettings", R"("Address":"a","Port":1,"Mountpoint":"m")", "Function");
  ExpectMissing("SetIFBSettings", R"("Function":"Enable","Port":1,"Mountpoint":"m")", "Address");
  ExpectMissing("SetIFBSettings", R"("Function":"Enable","Address":"a","Mountpoint":"m")", "Port");
  ExpectMissing("SetIFBSettings", R"("Function":"Enable","Address":"a","Port":1)", "Mountpoint");
}

TEST_F(IfbTest, Failures) {
  ExpectFailures("SetIFBSettings", Params("Enable", "a", "1", "m"),
                 IfbFile("1", "a", "1", "m", kDefaultRest));
}

}  // namespace
