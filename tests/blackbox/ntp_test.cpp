// The NTP server and the time code that follows it.
#include <string>

#include "settings_test.h"

namespace {

using namespace harness;

std::string File(const std::string& address, const std::string& tc_sync) {
  return "address\t" + address + "\ntc_sync\t" + tc_sync + "\n";
}

std::string Status(const std::string& address, const std::string& tc_sync,
                   const std::string& status) {
  return "\"Address\":\"" + address + "\",\"TcSync\":\"" + tc_sync + "\",\"Status\":\"" + status +
         "\"";
}

class NtpTest : public SettingsTest {
 protected:
  NtpTest() : SettingsTest("/var/tmp/lighttpd/ntp") {}
};

TEST_F(NtpTest, WithoutAFileTheDefaultsAreReported) {
  EXPECT_THAT(Post(Body("GetNTPStatus")),
              Replied(DataJson("GetNTPStatus", Status("192.168.0.100", "On", "Master"))));
  EXPECT_FALSE(Exists(file_));
}

TEST_F(NtpTest, EachStateHasItsWord) {
  WriteFile(file_, File("ntp.example", "0"));
  const struct {
    int state;
    const char* word;
  } rows[] = {{0, "Master"}, {1, "Not Syncronized"}, {2, "Syncronized"}, {3, ""}, {255, ""}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.state);
    StatusBlock().Fill(1).SetByte(46, row.state).Store();
    EXPECT_THAT(Post(Body("GetNTPStatus")),
                Replied(DataJson("GetNTPStatus", Status("ntp.example", "Off", row.word))));
  }
}

TEST_F(NtpTest, SettingsAreReported) {
  const std::string longest(129, 'h');
  const struct {
    std::string address;
    std::string tc_sync;
    std::string data;
  } rows[] = {
      {"10.0.0.1", "1", Status("10.0.0.1", "On", "Master")},
      {"10.0.0.1", "0", Status("10.0.0.1", "Off", "Master")},
      {"a b", "2", Status("a", "On", "Master")},
      {"", "-1", Status("", "On", "Master")},
      {longest, "", Status(longest, "Off", "Master")},
      {longest + "x", "On", Status(longest, "Off", "Master")},
      {"h", "256", Status("h", "On", "Master")},
  };
  for (const auto& row : rows) {
    ExpectReported("GetNTPStatus", File(row.address, row.tc_sync), row.data);
  }
}

TEST_F(NtpTest, AnExistingFileHasNoDefaults) {
  ExpectReported("GetNTPStatus", "", Status("", "Off", "Master"));
  ExpectReported("GetNTPStatus", "tc_sync\t1\n", Status("", "On", "Master"));
  ExpectReported("GetNTPStatus", "other\tx\naddress\ta\naddress\tb\n",
                 Status("b", "Off", "Master"));
}

TEST_F(NtpTest, TheStatusIsTraced) {
  WriteFile(file_, File("a", "01"));
  const std::string body = Body("GetNTPStatus");
  const LogLine output = Info("##### GetNTPStatus Output()");
  const LogLine flag = Info("##### GetNTPStatus ntp tc_sync 1 01");
  const LogLine request = Info("rcv post_data = " + body);
  const LogLine reply =
      Info("send res_str = " + DataJson("GetNTPStatus", Status("a", "On", "Master")));
  WriteFile(kLogLevelFile, "cmd=4\n");
  Post(body);
  EXPECT_THAT(log_.TakeLines(), Logged(request, output, flag, reply));
  WriteFile(kLogLevelFile, "cmd=2\n");
  Post(body);
  EXPECT_THAT(log_.TakeLines(), Logged(output, flag));
  WriteFile(kLogLevelFile, "cmd=1\n");
  Post(body);
  EXPECT_THAT(log_.TakeLines(), Logged());
}

TEST_F(NtpTest, StoringTheServerKeepsTheTimeCodeFlag) {
  ExpectStored("SetNTPServer", R"("Address":"10.0.0.1")", File("10.0.0.1", "1"));
  WriteFile(file_, "tc_sync\t0\nother\t1\naddress\told\n");
  ExpectStored("SetNTPServer", R"("Address":"ntp.example")", File("ntp.example", "0"));
  ExpectStored("SetNTPServer", R"("Address":"")", File("", "0"));
}

TEST_F(NtpTest, TheServersAddressIsTruncatedTo30Characters) {
  const std::string address = "abcdefghijklmnopqrstuvwxyz0123";
  ExpectStored("SetNTPServer", "\"Address\":\"" + address + "\"", File(address, "1"));
  ExpectStored("SetNTPServer", "\"Address\":\"" + address + "4\"", File(address, "1"));
}

TEST_F(NtpTest, StoringTheServerIsTraced) {
  ExpectTraces(
      "SetNTPServer", R"("Address":"10.0.0.1")",
      {Info("##### SetNTPServer Parse() addr:10.0.0.1"),
       Info("##### SetNTPServer Transmit() bofore addr:192.168.0.100 tc_sync:1"),
       Info("##### SetNTPServer Transmit() after addr:10.0.0.1 tc_sync:1"), kRenewalTrace});
}

TEST_F(NtpTest, OnlyTheWordOnLetsTheTimeCodeFollow) {
  const std::string address(129, 'h');
  const struct {
    const char* word;
    const char* stored;
  } rows[] = {{"On", "1"},   {"Off", "0"}, {"on", "0"}, {"ON", "0"},
              {"Only", "0"}, {"", "0"},    {"1", "0"}};
  for (const auto& row : rows) {
    WriteFile(file_, File(address, "7"));
    ExpectStored("SetNTPSettings", std::string(R"("TcSync":")") + row.word + '"',
                 File(address, row.stored));
  }
}

TEST_F(NtpTest, StoringTheTimeCodeFlagIsTraced) {
  const std::string word = "Off23456789012345678901234567890";
  ExpectTraces(
      "SetNTPSettings", "\"TcSync\":\"" + word + "\"",
      {Info("##### SetNTPSettings Parse() tc_sync:" + word.substr(0, 30)),
       Info("##### SetNTPSettings Transmit() bofore addr:192.168.0.100 tc_sync:1"),
       Info("##### SetNTPSettings Transmit() after addr:192.168.0.100 tc_sync:0"), kRenewalTrace});
}

TEST_F(NtpTest, WithoutParametersEmptyTextsAreStored) {
  WriteFile(file_, File("a", "1"));
  ExpectStoredBy(Body("SetNTPSettings"), "SetNTPSettings", File("a", "0"));
  WriteFile(file_, File("a", "1"));
  ExpectStoredBy(Body("SetNTPServer"), "SetNTPServer", File("", "1"));
}

TEST_F(NtpTest, MissingParametersAreRefused) {
  ExpectMissing("SetNTPServer", R"("address":"a")", "Address");
  ExpectMissing("SetNTPSettings", R"("Sync":"On")", "TcSync");
}

TEST_F(NtpTest, FailuresOfStoringTheServer) {
  ExpectFailures("SetNTPServer", R"("Address":"a")", File("a", "1"));
}

TEST_F(NtpTest, FailuresOfStoringTheTimeCodeFlag) {
  ExpectFailures("SetNTPSettings", R"("TcSync":"Off")", File("192.168.0.100", "0"));
}

}  // namespace
