#include "streaming/settings_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "core/text.h"
#include "harness/fake_daemon.h"
#include "harness/files.h"
#include "harness/messages.h"
#include "harness/system_log.h"

namespace {

using harness::Bytes;
using harness::Info;
using harness::Logged;
using testing::ElementsAre;

constexpr char kTestPath[] = "/var/tmp/lighttpd/test_settings";

struct TestRecord {
  char name[8];
  char server[30];
  char server_url[256];
  char empty_by_default[4];
};

constexpr SettingTable kFields = {
    SETTING_FIELD(TestRecord, name, "camera"),
    SETTING_FIELD(TestRecord, server, "0"),
    SETTING_FIELD(TestRecord, server_url, "0.0.0.0"),
    SETTING_FIELD(TestRecord, empty_by_default, ""),
};
constexpr SettingsFile<TestRecord> kTestFile(kFields);

class SettingsFileTest : public testing::Test {
 protected:
  static TestRecord Read() {
    TestRecord record;
    std::memset(&record, 'x', sizeof record);
    kTestFile.Read(kTestPath, record);
    return record;
  }

  static TestRecord Read(const std::string& contents) {
    harness::WriteFile(kTestPath, contents);
    return Read();
  }
};

auto Holds(const char* name, const char* server, const std::string& server_url,
           const char* empty_by_default) {
  return testing::AllOf(
      testing::Field("name", &TestRecord::name, testing::StrEq(name)),
      testing::Field("server", &TestRecord::server, testing::StrEq(server)),
      testing::Field("server_url", &TestRecord::server_url, testing::StrEq(server_url)),
      testing::Field("empty_by_default", &TestRecord::empty_by_default,
                     testing::StrEq(empty_by_default)));
}

TEST_F(SettingsFileTest, AMissingFileGivesTheDefaultsAndIsNotCreated) {
  EXPECT_THAT(Read(), Holds("camera", "0", "0.0.0.0", ""));
  EXPECT_FALSE(harness::Exists(kTestPath));
}

TEST_F(SettingsFileTest, AnUnreadableFileCountsAsMissing) {
  mkdir(kTestPath, 0755);
  EXPECT_THAT(Read(), Holds("camera", "0", "0.0.0.0", ""));
}

TEST_F(SettingsFileTest, SettingsThatAFileDoesNotMentionAreEmpty) {
  EXPECT_THAT(Read("server\t3\n"), Holds("", "3", "", ""));
  EXPECT_THAT(Read("unknown\t3\n\n \nName\t3\n\tname\t4\n"), Holds("", "", "", ""));
  EXPECT_THAT(Read(""), Holds("", "", "", ""));
}

TEST_F(SettingsFileTest, AValueIsTheFirstWordAfterTheKey) {
  const struct {
    const char* what;
    const char* line;
    const char* value;
  } rows[] = {
      {"tab", "name\tab\n", "ab"},
      {"blanks", "name  \t ab\n", "ab"},
      {"no separator", "nameab\n", "ab"},
      {"blank in the value", "name\tab cd\n", "ab"},
      {"tab in the value", "name\tab\tcd\n", "ab"},
      {"carriage return", "name\tab\r\n", "ab"},
      {"no line feed at the end of the file", "name\tab", "ab"},
      {"longest value that fits", "name\t1234567\n", "1234567"},
      {"value that is cut", "name\t12345678\n", "1234567"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    EXPECT_THAT(Read(row.line), Holds(row.value, "", "", ""));
  }
}

TEST_F(SettingsFileTest, OfTwoLinesTheLaterOneCounts) {
  EXPECT_THAT(Read("server\t1\nserver\t2\n"), Holds("", "2", "", ""));
  EXPECT_THAT(Read("name\tlonger\nname\tab\n"), Holds("ab", "", "", ""));
}

TEST_F(SettingsFileTest, AKeyWithoutAValueLeavesTheSettingAsItWas) {
  EXPECT_THAT(Read("server\t1\nserver\t\nserver\nserver \n"), Holds("", "1", "", ""));
  EXPECT_THAT(Read("server\t\n"), Holds("", "", "", ""));
}

TEST_F(SettingsFileTest, AKeyThatBeginsWithAnotherKeyIsToldApart) {
  EXPECT_THAT(Read("server\t2\n"), Holds("", "2", "", ""));
  EXPECT_THAT(Read("server_url\thost\n"), Holds("", "", "host", ""));
  EXPECT_THAT(Read("server_url\thost\nserver\t2\n"), Holds("", "2", "host", ""));
  EXPECT_THAT(Read("server_ur\tx\n"), Holds("", "_ur", "", ""));
}

TEST_F(SettingsFileTest, TheLongerOfTwoKeysCountsInAnyOrder) {
  static constexpr SettingTable kLongerKeyFirst = {
      SETTING_FIELD(TestRecord, server_url, ""),
      SETTING_FIELD(TestRecord, server, ""),
  };
  harness::WriteFile(kTestPath, "server_url\thost\nserver\t2\n");
  TestRecord record = {};
  SettingsFile<TestRecord>(kLongerKeyFirst).Read(kTestPath, record);
  EXPECT_THAT(record, Holds("", "2", "host", ""));
}

TEST_F(SettingsFileTest, LinesAreReadInPiecesOf255Characters) {
  // 255 characters with the key and its tab: the next piece is a line of its own.
  const std::string longest(244, 'u');
  EXPECT_THAT(Read("server_url\t" + longest + "\nserver\t5\n"), Holds("", "5", longest, ""));
  EXPECT_THAT(Read("server_url\t" + longest + "tail\n"), Holds("", "", longest, ""));
  EXPECT_THAT(Read("server_url\t" + longest + "server\t7\n"), Holds("", "7", longest, ""));
  EXPECT_THAT(Read("server_url\t" + longest + "server\t7\nserver\t8\n"),
              Holds("", "8", longest, ""));
}

// Found by fuzzing: a line without a tab between key and value grows when it is rewritten.
TEST_F(SettingsFileTest, AValueThatFillsItsLineLosesItsEndWhenATabIsAdded) {
  TestRecord record = Read("server_url" + std::string(245, 'u') + "\n");
  EXPECT_EQ(record.server_url, std::string(245, 'u'));
  kTestFile.Write(kTestPath, record);
  EXPECT_EQ(Read().server_url, std::string(244, 'u'));
}

TEST_F(SettingsFileTest, WritesEverySettingInTheOrderOfTheTableEmptyOnesIncluded) {
  TestRecord record = {};
  CopyText(record.name, "two words");
  CopyText(record.server_url, "host");
  harness::WriteFile(kTestPath,
                     "something longer that was there before, to be replaced as a whole\n");
  kTestFile.Write(kTestPath, record);
  EXPECT_EQ(harness::ReadFile(kTestPath),
            "name\ttwo wor\nserver\t\nserver_url\thost\nempty_by_default\t\n");
}

TEST_F(SettingsFileTest, AValueWithABlankIsWrittenWholeAndReadUpToTheBlank) {
  TestRecord record = {};
  CopyText(record.server_url, "two words");
  kTestFile.Write(kTestPath, record);
  EXPECT_EQ(harness::ReadFile(kTestPath),
            "name\t\nserver\t\nserver_url\ttwo words\nempty_by_default\t\n");
  EXPECT_THAT(Read(), Holds("", "", "two", ""));
}

TEST_F(SettingsFileTest, AWriteThatFailsIsSkipped) {
  const TestRecord record = {};
  kTestFile.Write("/var/tmp/lighttpd/no/such/folder", record);
  EXPECT_FALSE(harness::Exists("/var/tmp/lighttpd/no"));
  mkdir(kTestPath, 0755);
  kTestFile.Write(kTestPath, record);
  EXPECT_THAT(Read(), Holds("camera", "0", "0.0.0.0", ""));
}

TEST_F(SettingsFileTest, AnUpdateKeepsOtherSettingsAndTellsTheDaemon) {
  harness::FakeDaemon daemon;
  harness::WriteFile(kTestPath, "name\tab\nserver\t1\nserver_url\thost\nempty_by_default\tx\n");
  kTestFile.Update(kTestPath, [](TestRecord& record) { CopyNumber(record.server, -12); });
  EXPECT_EQ(harness::ReadFile(kTestPath),
            "name\tab\nserver\t-12\nserver_url\thost\nempty_by_default\tx\n");
  EXPECT_THAT(daemon.Received(), ElementsAre(harness::RenewalNotice()));
}

TEST(RenewSetting, SendsThirteenBytesAndOnlyOneMeansReconnect) {
  harness::SystemLog log;
  harness::FakeDaemon daemon;
  for (const int renew_reconnect : {1, 0, 2, -1}) {
    EXPECT_EQ(RenewSetting(renew_reconnect), 0);
  }
  const std::string keep = Bytes({0, 1, 1, 0, 1, 1, 0, 0, 0, 0, 0, 0, 0});
  const std::string reconnect = Bytes({0, 1, 1, 0, 1, 1, 0, 0, 0, 0, 0, 0, 1});
  EXPECT_THAT(daemon.Received(), ElementsAre(reconnect, keep, keep, keep));
  EXPECT_THAT(log.Lines(), Logged(Info("##### RenewSetting socket_send_msg() renew_reconnect 1"),
                                  Info("##### RenewSetting socket_send_msg() renew_reconnect 0"),
                                  Info("##### RenewSetting socket_send_msg() renew_reconnect 2"),
                                  Info("##### RenewSetting socket_send_msg() renew_reconnect -1")));
}

}  // namespace
