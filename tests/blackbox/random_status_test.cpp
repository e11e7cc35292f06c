#include <algorithm>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <vector>

#include "harness/camera_test.h"

// What is true for any contents of the status block and the replies. The seeds are fixed, so that a
// failure can be repeated.

namespace {

using namespace harness;
using Json = nlohmann::ordered_json;

using Random = std::mt19937;

int Number(Random& random, int lowest, int highest) {
  // Not std::uniform_int_distribution: its numbers differ from library to library.
  return lowest + static_cast<int>(random() % static_cast<std::uint32_t>(highest - lowest + 1));
}

std::string RandomBytes(Random& random, std::size_t size) {
  std::string bytes(size, '\0');
  std::generate(bytes.begin(), bytes.end(),
                [&random] { return static_cast<char>(Number(random, 0, 255)); });
  return bytes;
}

/// A text as a camera shows it: printable, without quotes and backslashes; some end early.
std::string RandomText(Random& random, std::size_t size) {
  std::string text(size, '\0');
  for (char& c : text) {
    do {
      c = static_cast<char>(Number(random, ' ', '~'));
    } while (c == '"' || c == '\\');
    if (Number(random, 0, 15) == 0) {
      c = '\0';
    }
  }
  return text;
}

struct TextArea {
  std::size_t offset;
  std::size_t size;
};

/// Where the status block contains consecutive texts.
constexpr TextArea kTextAreas[] = {{54, 8},   {64, 5},  {71, 17},  {90, 8},   {100, 9},  {238, 140},
                                   {390, 20}, {412, 4}, {452, 30}, {486, 10}, {520, 140}};

StatusBlock RandomBlock(Random& random) {
  StatusBlock block;
  block.SetBytes(0, RandomBytes(random, kStatusBlockSize));
  for (const TextArea& area : kTextAreas) {
    block.SetText(area.offset, RandomText(random, area.size));
  }
  if (Number(random, 0, 3) == 0) {
    block.SetByte(420, 9).SetByte(452, Number(random, 0, 3));
  }
  return block;
}

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
  for (int round = 0; round < 150; ++round) {
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

/// A reply to the clip list's request: usually correct, sometimes truncated or with a wrong count.
std::string RandomClipReply(Random& random, int& clips) {
  clips = Number(random, 0, 18);
  std::string payload = RandomBytes(random, 2) + Be16(static_cast<std::uint16_t>(clips));
  for (int i = 0; i < clips; ++i) {
    payload += RandomBytes(random, 2) + RandomText(random, 10) + RandomBytes(random, 20);
  }
  if (Number(random, 0, 2) == 0) {
    payload.resize(static_cast<std::size_t>(Number(random, 4, static_cast<int>(payload.size()))));
  }
  clips = std::min(clips, 15);
  return payload;
}

TEST_F(RandomStatusTest, ClipListIsAlwaysJsonWithTheSameKeys) {
  const std::vector<std::string> keys = {"/IndexNo", "/Name",        "/TC",  "/DateTime",
                                         "/OKMark",  "/AspectRaotp", "/Edit"};
  Random random(19991231);
  for (int round = 0; round < 100; ++round) {
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
  for (int round = 0; round < 60; ++round) {
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
