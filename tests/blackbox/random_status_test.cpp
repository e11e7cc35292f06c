#include <algorithm>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "harness/camera_test.h"
#include "harness/random_camera.h"

// What is true for any contents of the status block and the replies. The seeds are fixed, so that a
// failure can be repeated.

namespace {

using namespace harness;
using Json = nlohmann::ordered_json;

std::string JsonOf(const Outcome& outcome) {
  const std::size_t end_of_header = outcome.output.find("\n\n");
  return end_of_header == std::string::npos ? "" : outcome.output.substr(end_of_header + 2);
}

/// The paths of all members, in their order.
void CollectKeys(const Json& json, const std::string& path, std::vector<std::string>& keys) {
  for (const auto& [key, value] : json.items()) {
    const std::string member = path + "/" + key;
    keys.push_back(member);
    if (value.is_object()) {
      CollectKeys(value, member, keys);
    }
  }
}

std::vector<std::string> KeysOf(const Json& json) {
  std::vector<std::string> keys;
  CollectKeys(json, "", keys);
  return keys;
}

class RandomStatusTest : public CameraTest {
 protected:
  FakeDaemon daemon_;
};

TEST_F(RandomStatusTest, ReportIsAlwaysJsonWithTheSameKeys) {
  Random random(20231123);
  std::vector<std::string> keys;
  for (int round = 0; round < Repetitions(150); ++round) {
    SCOPED_TRACE(round);
    RandomBlock(random).Store();
    const auto size = static_cast<std::size_t>(Number(random, 0, 45));
    const std::string payload = RandomBytes(random, size);
    daemon_.Next(Answer(ReplyMessage(payload)));
    const Outcome outcome = Post(Body("GetCamStatus"));
    ASSERT_EQ(outcome.exit_status, 0) << outcome;
    const Json report = Json::parse(JsonOf(outcome), nullptr, false);
    ASSERT_FALSE(report.is_discarded()) << outcome;
    if (keys.empty()) {
      keys = KeysOf(report);
      ASSERT_EQ(keys.size(), 227U);  // 4 around the data, 191 values and 32 objects in it
    }
    ASSERT_EQ(KeysOf(report), keys);

    std::string padded = payload;
    padded.resize(38, '\0');
    const Json& data = report["Response"]["Data"];
    EXPECT_EQ(data["SlotB"]["ClipNum"],
              static_cast<std::uint8_t>(padded[22]) * 256 + static_cast<std::uint8_t>(padded[23]));
    EXPECT_EQ(data["ZoomDisplayValue"], static_cast<std::int8_t>(padded[35]));
  }
}

TEST_F(RandomStatusTest, ClipListIsAlwaysJsonWithTheSameKeys) {
  const std::vector<std::string> keys = {"/IndexNo", "/Name",        "/TC",  "/DateTime",
                                         "/OKMark",  "/AspectRaotp", "/Edit"};
  Random random(19991231);
  for (int round = 0; round < Repetitions(100); ++round) {
    SCOPED_TRACE(round);
    const int asked = Number(random, 1, 60);
    int expected = 0;
    for (int exchange = 0; exchange < (asked + 14) / 15; ++exchange) {
      int clips = 0;
      daemon_.Next(Answer(ReplyMessage(RandomClipReply(random, clips))));
      expected += clips;
    }
    const Outcome outcome = Post(
        Body("GetClipInfo", R"("Slot":"A","StartIndexNo":1,"ClipNum":)" + std::to_string(asked)));
    ASSERT_EQ(outcome.exit_status, 0) << outcome;
    const Json list = Json::parse(JsonOf(outcome), nullptr, false);
    ASSERT_FALSE(list.is_discarded()) << outcome;
    const Json& data = list["Response"]["Data"];
    EXPECT_EQ(data["ClipNum"], expected);
    ASSERT_EQ(data["ClipInfo"].size(), static_cast<std::size_t>(expected));
    for (const Json& clip : data["ClipInfo"]) {
      ASSERT_EQ(KeysOf(clip), keys);
    }
  }
}

TEST_F(RandomStatusTest, BytesOfAnyKindDoNoHarm) {
  const RepliesMayBreak may_break;
  Random random(4711);
  for (int round = 0; round < Repetitions(60); ++round) {
    SCOPED_TRACE(round);
    StatusBlock().SetBytes(0, RandomBytes(random, kStatusBlockSize)).Store();
    const auto size = static_cast<std::size_t>(Number(random, 0, 600));
    const std::string bytes = RandomBytes(random, size);
    for (const char* const command : {"GetCamStatus", "GetClipInfo"}) {
      daemon_.Next(AnswerAndClose(bytes));
      const Outcome outcome = Post(Body(command, R"("Slot":"B","StartIndexNo":1,"ClipNum":1)"));
      EXPECT_EQ(outcome.exit_status, 0) << outcome;
      EXPECT_EQ(outcome.output, Reply(JsonOf(outcome)));
    }
  }
}

}  // namespace
