// Two commands that store settings in the same file at the same moment, and one that reads it.
// Files are rewritten in place and without a lock, as the camera's other programs do it, so an
// update can get lost and a file can be met, or left, in pieces. Here stands what holds all the
// same; how often the rest happens is counted: tests/race/run shows the figures of many rounds.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "harness/camera_test.h"

namespace {

using namespace harness;
using testing::AnyOf;
using testing::StartsWith;

int Rounds() {
  const char* const rounds = std::getenv("CAMERA_RACE_ROUNDS");
  return rounds != nullptr ? std::atoi(rounds) : 20;
}

bool Contains(const std::vector<std::string>& texts, const std::string& text) {
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

/// Posts all of them at the same moment.
std::vector<Outcome> PostAtOnce(const std::vector<std::string>& bodies) {
  std::promise<void> start;
  const std::shared_future<void> started = start.get_future().share();
  std::vector<std::future<Outcome>> clients;
  for (const std::string& body : bodies) {
    clients.push_back(std::async(std::launch::async, [&body, started] {
      started.wait();
      return RunHandler(Request(body));
    }));
  }
  start.set_value();
  std::vector<Outcome> outcomes;
  for (std::future<Outcome>& client : clients) {
    outcomes.push_back(client.get());
  }
  return outcomes;
}

/// Two writers, a reader, and what they may find and leave.
struct Race {
  std::string file;
  std::string before;
  std::string writers[2];  // commands
  std::string params[2];
  std::string reader;
  std::vector<std::string> replies;      // to the reader, from a whole file
  std::vector<std::string> after;        // with what both have stored, or the later one
  std::vector<std::string> one_is_lost;  // with what one of them has stored, though both were told
                                         // that theirs is
  std::string wiped;                     // stands in a file that was written from an empty one
};

struct Figures {
  int lost_updates = 0;
  int wiped = 0;
  int torn = 0;
  int reads_in_pieces = 0;
};

class RaceTest : public CameraTest {
 protected:
  /// One round: checks what has to hold and counts what may happen.
  static void Run(const Race& race, Figures& figures) {
    WriteFile(race.file, race.before);
    const std::vector<Outcome> outcomes =
        PostAtOnce({Body(race.writers[0], race.params[0]), Body(race.writers[1], race.params[1]),
                    Body(race.reader)});
    EXPECT_THAT(outcomes[0], Replied(ResultJson(race.writers[0])));
    EXPECT_THAT(outcomes[1], Replied(ResultJson(race.writers[1])));
    figures.reads_in_pieces += ReadWhole(race, outcomes[2]) ? 0 : 1;
    const std::string after = ReadFile(race.file);
    if (Contains(race.one_is_lost, after)) {
      ++figures.lost_updates;
    } else if (!Contains(race.after, after)) {
      ++(after.find(race.wiped) != std::string::npos ? figures.wiped : figures.torn);
    }
  }

  /// Any reply is well-formed and a success.
  static bool ReadWhole(const Race& race, const Outcome& outcome) {
    EXPECT_EQ(outcome.exit_status, 0);
    const std::string text = outcome.output.substr(outcome.output.find("\n\n") + 2);
    EXPECT_EQ(outcome.output, Reply(text));
    const nlohmann::json json = nlohmann::json::parse(text, nullptr, false);
    EXPECT_FALSE(json.is_discarded()) << text;
    EXPECT_THAT(text, StartsWith("{\"Response\":{\"Requested\":\"" + race.reader +
                                 "\",\"Result\":\"Success\""));
    return Contains(race.replies, text);
  }

  static void Run(const char* title, const Race& race) {
    Figures figures;
    for (int round = 0; round < Rounds(); ++round) {
      Run(race, figures);
    }
    std::printf(
        "%s: of %d rounds, %d with a lost update, %d with settings wiped, %d with a torn "
        "file; %d reads of an empty or torn file\n",
        title, Rounds(), figures.lost_updates, figures.wiped, figures.torn,
        figures.reads_in_pieces);
  }

  const ConcurrentDaemon control_{kControlSocket, ""};
};

std::string StreamingFile(const std::string& resolution, const std::string& quality) {
  return "resolution\t" + resolution + "\nquality\t" + quality +
         "\nserver\t1\nrfresolution\t4\ncldstrmusername\tuser\ncldstrmpassword\tpw\n"
         "serverurl\thost\n";
}

std::string StreamingReply(const std::string& resolution, const std::string& bitrate) {
  return DataJson("GetStreamingSettings", "\"Resolution\":\"" + resolution +
                                              R"(","Framerate":"60i","Bitrate":")" + bitrate + '"');
}

TEST_F(RaceTest, OfTwoSettingsInOneFile) {
  Run("Two settings in one file",
      {"/var/tmp/lighttpd/streaming",
       StreamingFile("1", "42"),
       {"SetStreamingResolution", "SetStreamingBitrate"},
       {R"("Resolution":"640x360")", R"("Bitrate":"12M")"},
       "GetStreamingSettings",
       {StreamingReply("1440x1080", "5.0M"), StreamingReply("640x360", "5.0M"),
        StreamingReply("1440x1080", "12M"), StreamingReply("640x360", "12M")},
       {StreamingFile("6", "106")},
       {StreamingFile("6", "42"), StreamingFile("1", "106")},
       "rfresolution\t\n"});
}

std::string NtpFile(const std::string& address) { return "address\t" + address + "\ntc_sync\t1\n"; }

std::string NtpReply(const std::string& address) {
  return DataJson("GetNTPStatus",
                  "\"Address\":\"" + address + R"(","TcSync":"On","Status":"Master")");
}

TEST_F(RaceTest, OfAShortAndALongValue) {
  const std::string longest(30, 'l');
  Run("A short and a long value", {"/var/tmp/lighttpd/ntp",
                                   NtpFile("old"),
                                   {"SetNTPServer", "SetNTPServer"},
                                   {R"("Address":"s")", "\"Address\":\"" + longest + '"'},
                                   "GetNTPStatus",
                                   {NtpReply("old"), NtpReply("s"), NtpReply(longest)},
                                   {NtpFile("s"), NtpFile(longest)},
                                   {},
                                   "tc_sync\t\n"});
}

// A session that is being renewed can be missed by a request at the same moment, but not be lost.
TEST_F(RaceTest, OfTheSession) {
  const std::string renewal = Body("SessionRenewal", R"("Update":1)");
  int missed = 0;
  for (int round = 0; round < Rounds(); ++round) {
    for (const Outcome& outcome : PostAtOnce({renewal, renewal, renewal})) {
      EXPECT_THAT(outcome, AnyOf(Replied(ResultJson("SessionRenewal")),
                                 Replied("{\"Response\":{\"Result\":\"SessionError\"}}")));
      missed += outcome.output == Reply(ErrorJson("SessionError")) ? 1 : 0;
    }
    EXPECT_THAT(ReadFile(kSessionFile), StartsWith(std::string("ID\t") + kSession + "\n"));
  }
  std::printf(
      "Renewing the session: of %d rounds of three requests, %d requests got SessionError\n",
      Rounds(), missed);
}

}  // namespace
