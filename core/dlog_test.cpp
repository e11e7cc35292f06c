#include "core/dlog.h"

#include <gtest/gtest.h>

#include <string>

#include "harness/files.h"
#include "harness/system_log.h"

namespace {

using harness::Debug;
using harness::Error;
using harness::Info;
using harness::Logged;

constexpr char kThresholdPath[] = "/var/tmp/lighttpd/cgilog";
constexpr std::int32_t kUsualLimit = 3;

class Dlog : public testing::Test {
 protected:
  ~Dlog() override { g_log_level_limit = kUsualLimit; }
};

class InitDlog : public Dlog {};

TEST_F(Dlog, GivesEachLevelItsPriority) {
  harness::SystemLog log;
  g_log_level_limit = 100;
  for (const int level : {-1, 0, 1, 2, 3, 4, 5, 7, 100}) {
    DLOG(level, "level %d", level);
  }
  EXPECT_THAT(log.Lines(), Logged(Error("level -1"), Error("level 0"), Error("level 1"),
                                  Info("level 2"), Info("level 3"), Info("level 4"),
                                  Debug("level 5"), Debug("level 7"), Debug("level 100")));
}

TEST_F(Dlog, EmitsLevelsUpToTheThreshold) {
  harness::SystemLog log;
  DLOG(3, "three");
  DLOG(4, "four");
  EXPECT_THAT(log.Lines(), Logged(Info("three")));
}

TEST_F(Dlog, ShowsPercentSignsOfLoggedDataAsTheyAre) {
  harness::SystemLog log;
  DLOG(1, "%s", "100%s%n%%");
  EXPECT_THAT(log.Lines(), Logged(Error("100%s%n%%")));
}

TEST_F(Dlog, FormatsNumbersCharactersAndTexts) {
  harness::SystemLog log;
  DLOG(1, "%d %d %d|%x %x %x", 0, -2147483647 - 1, 2147483647, 0U, 0xA0BU, 0xFFFFFFFFU);
  DLOG(1, "[%s]%s(%c) 100%%", "text", "", 'A');
  DLOG(1, "%c ends here: %d", '\0', 1);
  DLOG(1, "alone");
  EXPECT_THAT(log.Lines(), Logged(Error("0 -2147483648 2147483647|0 a0b ffffffff"),
                                  Error("[text](A) 100%"), Error(""), Error("alone")));
}

TEST_F(Dlog, TruncatesAMessageTo4999Bytes) {
  harness::SystemLog log;
  DLOG(1, "%s", std::string(4999, 'x').c_str());
  DLOG(1, "%s", std::string(5000, 'y').c_str());
  DLOG(1, "%s", std::string(9000, '%').c_str());
  DLOG(1, "%s%d", std::string(4997, 'z').c_str(), 123);
  EXPECT_THAT(log.Lines(),
              Logged(Error(std::string(4999, 'x')), Error(std::string(4999, 'y')),
                     Error(std::string(4999, '%')), Error(std::string(4997, 'z') + "12")));
}

TEST_F(InitDlog, TakesTheThresholdFromTheControlFile) {
  const struct {
    const char* what;
    const char* contents;
    std::int32_t limit;
  } cases[] = {
      {"a plain line", "cmd=5\n", 5},
      {"no line feed", "cmd=5", 5},
      {"text before the equals sign", "cmd level=6\n", 6},
      {"white space before the number", "cmd= 4\n", 4},
      {"the last line wins", "cmd=5\ncmd=7\ncmd=2\n", 2},
      {"zero is ignored", "cmd=0\n", 3},
      {"a negative number is ignored", "cmd=-1\n", 3},
      {"zero does not undo an earlier line", "cmd=5\ncmd=0\n", 5},
      {"no equals sign", "cmd\n", 3},
      {"no equals sign, number on the next line", "cmd\n=5\n", 3},
      {"no number", "cmd=abc\n", 3},
      {"another key", "xcmd=5\n", 3},
      {"other lines around it", "# note\ncmd=5\nend\n", 5},
      {"a number beyond 32 bits saturates", "cmd=99999999999\n", 2147483647},
      {"a piece ends after 15 characters", "cmd.........=56789\n", 56},
      {"the rest of a long line is a line of its own", "123456789012345cmd=7\n", 7},
      {"an empty file", "", 3},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.what);
    harness::WriteFile(kThresholdPath, row.contents);
    g_log_level_limit = kUsualLimit;
    EXPECT_EQ(INIT_DLOG(), 0);
    EXPECT_EQ(g_log_level_limit, row.limit);
  }
}

TEST_F(InitDlog, KeepsTheThresholdWithoutAControlFile) {
  EXPECT_EQ(INIT_DLOG(), 0);
  EXPECT_EQ(g_log_level_limit, 3);
}

}  // namespace
