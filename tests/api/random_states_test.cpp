// Requests to cameras in random states: status block, settings files, daemons' replies and
// parameters. Only that the handler answers is checked here; the replies are kept, and the
// description of the API has to describe them all (see tests/api/random_states).
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "api/schemas.h"
#include "harness/camera_test.h"
#include "harness/random_camera.h"

namespace {

using namespace harness;

int FromEnvironment(const char* name, int otherwise) {
  const char* const value = std::getenv(name);
  return value != nullptr ? std::atoi(value) : otherwise;
}

bool Often(Random& random, int percent) { return Number(random, 1, 100) <= percent; }

/// A text that a request can carry and a settings file can hold.
std::string RandomToken(Random& random, int longest) {
  std::string text(static_cast<std::size_t>(Number(random, 1, longest)), '\0');
  for (char& c : text) {
    do {
      c = static_cast<char>(Number(random, '!', '~'));
    } while (std::string("\",}\\").find(c) != std::string::npos);
  }
  return text;
}

std::int32_t RandomInt32(Random& random) { return static_cast<std::int32_t>(random()); }

struct File {
  const char* name;
  std::vector<const char*> numbers;
  std::vector<const char*> texts;
};

const std::vector<File>& Files() {
  static const std::vector<File> files = {
      {"ntp", {"tc_sync"}, {"address"}},
      {"ifb", {"ifb_function", "ifb_port"}, {"ifb_address", "ifb_mountpoint"}},
      {"web_zoom_preset", {"preset_a", "preset_b", "preset_c"}, {}},
      {"streaming", {"resolution", "quality", "server", "rfresolution"}, {"serverurl"}},
      {"streaming_server1",
       {"udp_dst_port", "udp_pcr_jitter", "tcp_dst_port", "zixi_dst_port", "zixi_latency",
        "zixi_adaptive_bitrate", "rtsp_dst_port", "rtp_dst_port", "rtp_smpte2022_fec",
        "rtp_fec_matrix_l", "rtp_fec_matrix_d", "type"},
       {"str_alias", "udp_dst_address", "tcp_dst_address", "zixi_dst_address", "zixi_stream_id",
        "zixi_password", "rtsp_stream_id", "rtsp_username", "rtsp_password", "rtmp_destination_url",
        "rtmp_stream_key", "rtp_dst_address"}}};
  return files;
}

void StoreRandomSettings(Random& random) {
  std::filesystem::remove_all(kSettingsFolder);
  std::filesystem::create_directory(kSettingsFolder);
  WriteSession(kSession);
  for (const File& file : Files()) {
    if (Often(random, 25)) {
      continue;
    }
    std::string content;
    for (const char* const key : file.numbers) {
      // Small numbers are indexes of names, bit rates with frame rates, recording formats.
      const std::int32_t number = Often(random, 80)   ? Number(random, -2, 12)
                                  : Often(random, 50) ? Number(random, 0, 255)
                                                      : RandomInt32(random);
      content += std::string(key) + "\t" + std::to_string(number) + "\n";
    }
    for (const char* const key : file.texts) {
      content +=
          std::string(key) + "\t" + (Often(random, 5) ? "" : RandomToken(random, 250)) + "\n";
    }
    WriteFile(std::string("/var/tmp/lighttpd/") + file.name, content);
  }
}

Json RandomValue(Random& random, const std::string& name, const Json& schema) {
  if (schema.contains("enum")) {
    const int last = static_cast<int>(schema["enum"].size()) - 1;
    return schema["enum"][static_cast<std::size_t>(Number(random, 0, last))];
  }
  if (name == "ID" && Often(random, 70)) {
    return Number(random, 0, 3);
  }
  if (schema["type"] == "integer") {
    const std::int64_t lowest = schema["minimum"];
    const std::int64_t highest = name == "ClipNum" ? 40 : schema["maximum"].get<std::int64_t>();
    return lowest + static_cast<std::int64_t>(random()) % (highest - lowest + 1);
  }
  return RandomToken(random, schema.value("maxLength", 10));
}

std::string RandomRequest(Random& random, const std::string& command) {
  if (Often(random, 2)) {
    return BodyWithSession(command, "other-session");
  }
  Params params = SampleParams(command);
  const Json schema = ParamsSchema(command);
  if (!schema.contains("oneOf")) {
    for (auto& [name, value] : params) {
      value = RandomValue(random, name, schema["properties"][name]);
    }
  }
  if (!params.empty() && Often(random, 3)) {
    params.pop_back();
  }
  return BodyOf(command, params);
}

/// What a daemon answers, by the command that asks it.
std::string RandomReply(Random& random, const std::string& command) {
  const std::string result(1, static_cast<char>(Often(random, 70) ? 0 : Number(random, 0, 255)));
  if (command == "GetClipInfo") {
    int clips = 0;
    return RandomClipReply(random, clips).replace(0, 1, result);
  }
  if (command == "GetGPSInfo") {
    return result + RandomBytes(random, 3) +
           RandomText(random, static_cast<std::size_t>(Number(random, 0, 80)));
  }
  if (command == "GetCldstrmEventList") {  // a count, or the beginning of a title
    const std::string title = RandomText(random, static_cast<std::size_t>(Number(random, 1, 126)));
    return result + std::string(3, '\0') +
           (Often(random, 30) ? std::string(1, static_cast<char>(Number(random, 0, 25))) + '\0'
                              : std::string(1, static_cast<char>(Number(random, 1, 20))) + '\0') +
           title;
  }
  return result + RandomBytes(random, static_cast<std::size_t>(Number(random, 0, 60)));
}

bool Reports(const std::string& command) {
  return command.rfind("Get", 0) == 0 || command.rfind("Available", 0) == 0 ||
         command == "PageChange" || command == "HeartbeatConfirmation";
}

class RandomStatesTest : public CameraTest {};

TEST_F(RandomStatesTest, EveryRequestIsAnswered) {
  Random random(static_cast<std::uint32_t>(FromEnvironment("CAMERA_RANDOM_SEED", 16)));
  std::vector<std::string> reporting;
  std::copy_if(CommandNames().begin(), CommandNames().end(), std::back_inserter(reporting),
               Reports);
  const int rounds = FromEnvironment("CAMERA_RANDOM_STATES", 500);
  for (int round = 0; round < rounds; ++round) {
    SCOPED_TRACE(round);
    const std::vector<std::string>& names = Often(random, 60) ? reporting : CommandNames();
    const std::string& command =
        names[static_cast<std::size_t>(Number(random, 0, static_cast<int>(names.size()) - 1))];
    StoreRandomSettings(random);
    RandomBlock(random).SetText(228, RandomText(random, 10)).Store();
    const Script answer = Answer(ReplyMessage(RandomReply(random, command)));
    FakeDaemon control(kControlSocket, answer);
    FakeDaemon streaming(kStreamingSocket, answer);
    const Outcome outcome = Post(RandomRequest(random, command));
    ASSERT_EQ(outcome.signal, 0) << outcome;
    // At most the number of events and 20 events.
    ASSERT_LE(control.Received().size() + streaming.Received().size(), 21U);
    ASSERT_EQ(outcome.output.rfind("Content-type: application/json\n", 0), 0U) << outcome;
  }
}

}  // namespace
