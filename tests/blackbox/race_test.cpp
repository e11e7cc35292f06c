// Commands that use the same settings file at the same moment: no update may be lost, no file or
// reply may mix two versions, and no session may return after its end. tests/race/run does many
// rounds.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include "harness/camera_test.h"

namespace {

using namespace harness;
using testing::StartsWith;

int Rounds() {
  const char* const rounds = std::getenv("CAMERA_RACE_ROUNDS");
  return rounds != nullptr ? std::atoi(rounds) : Repetitions(50);
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

struct WriterCommand {
  std::string name;
  std::string params;
};

/// Two writers, a reader, and all that they may find and leave.
struct Race {
  std::string file;
  std::string before;  // empty: there is no file
  WriterCommand writers[2];
  std::string reader;
  std::vector<std::string> replies;      // to the reader
  std::vector<std::string> after;        // contents with what both have stored, or the later one
  std::vector<std::string> one_is_lost;  // contents with what one of them has stored
};

class RaceTest : public CameraTest {
 protected:
  void Run(const char* title, const Race& race) {
    for (int round = 0; round < Rounds(); ++round) {
      Run(race);
    }
    std::printf("%s: of %d rounds, %d lost updates, %d torn files, %d invalid replies\n", title,
                Rounds(), lost_updates_, torn_files_, invalid_replies_);
    EXPECT_EQ(lost_updates_, 0);
    EXPECT_EQ(torn_files_, 0);
    EXPECT_EQ(invalid_replies_, 0);
  }

 private:
  void Run(const Race& race) {
    if (race.before.empty()) {
      std::filesystem::remove(race.file);
    } else {
      WriteFile(race.file, race.before);
    }
    std::vector<std::string> bodies = {Body(race.reader)};
    for (const WriterCommand& writer : race.writers) {
      bodies.push_back(Body(writer.name, writer.params));
    }
    const std::vector<Outcome> outcomes = PostAtOnce(bodies);
    CountReply(outcomes[0], race.replies);
    CountReply(outcomes[1], {ResultJson(race.writers[0].name)});
    CountReply(outcomes[2], {ResultJson(race.writers[1].name)});
    const std::string after = ReadFile(race.file);
    if (Contains(race.one_is_lost, after)) {
      ++lost_updates_;
    } else if (!Contains(race.after, after)) {
      ++torn_files_;
    }
  }

  void CountReply(const Outcome& outcome, const std::vector<std::string>& possible) {
    const bool is_valid =
        std::any_of(possible.begin(), possible.end(),
                    [&outcome](const std::string& json) { return outcome.output == Reply(json); });
    if (!is_valid || outcome.exit_status != 0) {
      std::printf("invalid reply: %s\n", outcome.output.c_str());
      ++invalid_replies_;
    }
  }

  const ConcurrentDaemon control_{kControlSocket, ""};
  int lost_updates_ = 0;
  int torn_files_ = 0;
  int invalid_replies_ = 0;
};

std::string StreamingFile(const std::string& resolution, const std::string& quality) {
  return "resolution\t" + resolution + "\nquality\t" + quality +
         "\nserver\t1\nrfresolution\t4\ncldstrmusername\tuser\ncldstrmpassword\tpw\n"
         "serverurl\thost\n";
}

std::string StreamingReply(const std::string& resolution, const std::string& framerate,
                           const std::string& bitrate) {
  return DataJson("GetStreamingSettings", "\"Resolution\":\"" + resolution + "\",\"Framerate\":\"" +
                                              framerate + "\",\"Bitrate\":\"" + bitrate + '"');
}

TEST_F(RaceTest, OfTwoSettingsInOneFile) {
  Run("Two settings in one file",
      {kStreamingSettingsFile,
       StreamingFile("1", "42"),
       {{"SetStreamingResolution", R"("Resolution":"640x360")"},
        {"SetStreamingBitrate", R"("Bitrate":"12M")"}},
       "GetStreamingSettings",
       {StreamingReply("1440x1080", "60i", "5.0M"), StreamingReply("640x360", "60i", "5.0M"),
        StreamingReply("1440x1080", "60i", "12M"), StreamingReply("640x360", "60i", "12M")},
       {StreamingFile("6", "106")},
       {StreamingFile("6", "42"), StreamingFile("1", "106")}});
}

std::string NewStreamingFile(const std::string& resolution, const std::string& quality) {
  return "resolution\t" + resolution + "\nquality\t" + quality +
         "\nserver\t0\nrfresolution\t0\ncldstrmusername\t0\ncldstrmpassword\t0\n"
         "serverurl\t0\n";
}

TEST_F(RaceTest, OfTwoSettingsInAMissingFile) {
  Run("Two settings in a missing file",
      {kStreamingSettingsFile,
       "",
       {{"SetStreamingResolution", R"("Resolution":"640x360")"},
        {"SetStreamingBitrate", R"("Bitrate":"12M")"}},
       "GetStreamingSettings",
       {StreamingReply("1920x1080", "60p", ""), StreamingReply("640x360", "60p", ""),
        StreamingReply("1920x1080", "60p", "12M"), StreamingReply("640x360", "60p", "12M")},
       {NewStreamingFile("6", "104")},
       {NewStreamingFile("6", "0"), NewStreamingFile("0", "104")}});
}

const std::string kLong(30, 'l');

std::string NtpFile(const std::string& address, const std::string& tc_sync = "1") {
  return "address\t" + address + "\ntc_sync\t" + tc_sync + "\n";
}

std::string NtpReply(const std::string& address, const std::string& tc_sync = "On") {
  return DataJson("GetNTPStatus", "\"Address\":\"" + address + "\",\"TcSync\":\"" + tc_sync +
                                      R"(","Status":"Master")");
}

WriterCommand SetAddress(const std::string& address) {
  return {"SetNTPServer", "\"Address\":\"" + address + '"'};
}

const WriterCommand kSwitchOff = {"SetNTPSettings", R"("TcSync":"Off")"};

TEST_F(RaceTest, OfAShortAndALongValue) {
  Run("A short and a long value", {"/var/tmp/lighttpd/ntp",
                                   NtpFile("old"),
                                   {SetAddress("s"), SetAddress(kLong)},
                                   "GetNTPStatus",
                                   {NtpReply("old"), NtpReply("s"), NtpReply(kLong)},
                                   {NtpFile("s"), NtpFile(kLong)},
                                   {}});
}

TEST_F(RaceTest, OfAShortAndALongValueInAMissingFile) {
  Run("A short and a long value in a missing file",
      {"/var/tmp/lighttpd/ntp",
       "",
       {SetAddress("s"), SetAddress(kLong)},
       "GetNTPStatus",
       {NtpReply("192.168.0.100"), NtpReply("s"), NtpReply(kLong)},
       {NtpFile("s"), NtpFile(kLong)},
       {}});
}

TEST_F(RaceTest, OfAValueThatShrinksAndAnother) {
  Run("A value that shrinks and another",
      {"/var/tmp/lighttpd/ntp",
       NtpFile(kLong),
       {SetAddress("s"), kSwitchOff},
       "GetNTPStatus",
       {NtpReply(kLong), NtpReply("s"), NtpReply(kLong, "Off"), NtpReply("s", "Off")},
       {NtpFile("s", "0")},
       {NtpFile("s"), NtpFile(kLong, "0")}});
}

TEST_F(RaceTest, OfAValueThatGrowsAndAnother) {
  Run("A value that grows and another",
      {"/var/tmp/lighttpd/ntp",
       NtpFile("s"),
       {SetAddress(kLong), kSwitchOff},
       "GetNTPStatus",
       {NtpReply("s"), NtpReply(kLong), NtpReply("s", "Off"), NtpReply(kLong, "Off")},
       {NtpFile(kLong, "0")},
       {NtpFile(kLong), NtpFile("s", "0")}});
}

TEST_F(RaceTest, OfRenewalsOfTheSession) {
  const std::string renewal = Body("SessionRenewal", R"("Update":1)");
  int missed = 0;
  for (int round = 0; round < Rounds(); ++round) {
    for (const Outcome& outcome : PostAtOnce({renewal, renewal, renewal})) {
      missed += outcome.output == Reply(ResultJson("SessionRenewal")) ? 0 : 1;
    }
    ASSERT_THAT(ReadFile(kSessionFile), StartsWith(std::string("ID\t") + kSession + "\n"));
  }
  std::printf("Renewing the session: of %d rounds of three requests, %d requests were refused\n",
              Rounds(), missed);
  EXPECT_EQ(missed, 0);
}

/// Clients that renew a session all the time.
class RenewingClients {
 public:
  explicit RenewingClients(const std::string& session)
      : body_(BodyWithSession("SessionRenewal", session, R"("Update":1)")) {
    for (std::atomic<int>& renewals : renewals_) {
      threads_.emplace_back([this, &renewals] {
        while (!stop_) {
          RunHandler(Request(body_));
          ++renewals;
        }
      });
    }
  }

  ~RenewingClients() {
    stop_ = true;
    for (std::thread& thread : threads_) {
      thread.join();
    }
  }
  RenewingClients(const RenewingClients&) = delete;
  RenewingClients& operator=(const RenewingClients&) = delete;

  /// Waits until every request that is running now, and one more of each client, has ended.
  void AwaitEach() const {
    for (const std::atomic<int>& renewals : renewals_) {
      const int enough = renewals + 2;
      while (renewals < enough) {
        std::this_thread::sleep_for(std::chrono::microseconds(200));
      }
    }
  }

 private:
  static constexpr int kClients = 4;

  std::string body_;
  std::atomic<bool> stop_{false};
  std::atomic<int> renewals_[kClients] = {};
  std::vector<std::thread> threads_;
};

class SessionRaceTest : public CameraTest {
 protected:
  /// Ends the session many times while clients renew it, each time at another point of their
  /// requests.
  static void Run(const char* title, const std::function<void()>& end,
                  const std::function<bool()>& is_over) {
    const RenewingClients clients(kSession);
    // Such a round takes as long as twenty rounds of two writers and a reader.
    const int rounds = std::min(Rounds(), 1000);
    int undone = 0;
    for (int round = 0; round < rounds; ++round) {
      WriteSession(kSession);
      clients.AwaitEach();
      std::this_thread::sleep_for(std::chrono::microseconds(100 * (round % 20)));
      end();
      clients.AwaitEach();
      undone += is_over() ? 0 : 1;
    }
    std::printf("%s: of %d, %d were undone\n", title, rounds, undone);
    EXPECT_EQ(undone, 0);
  }
};

TEST_F(SessionRaceTest, OfLogoutsAndRenewals) {
  Run(
      "Logouts while four clients renew the session", [] { std::filesystem::remove(kSessionFile); },
      [] { return !Exists(kSessionFile); });
}

TEST_F(SessionRaceTest, OfLoginsAndRenewals) {
  Run(
      "New logins while four clients renew the old session", [] { WriteSession("new"); },
      [] {
        return ReadFile(kSessionFile) == "ID\tnew\nlifetime\t1700000030\nsessiontime\t1700000000\n";
      });
}

}  // namespace
