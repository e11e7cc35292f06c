// The request schemas of api/openapi.json against the handler: parameters, words, ranges and
// lengths in both directions. A schema has to name exactly the values that the camera takes as they
// are; every other one is refused, or means the same as one that the schema names.
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "api/schemas.h"
#include "harness/camera_test.h"

namespace {

using namespace harness;

const char kNonsense[] = "Xyzzy";

/// What a request leads to: the reply, the daemons' messages and the settings files.
using Effect = std::string;

class RequestsTest : public CameraTest, public testing::WithParamInterface<std::string> {
 protected:
  /// The effect on a camera without settings files.
  Effect EffectOf(const Params& params) { return EffectOf(GetParam(), params); }

  static Effect EffectOf(const std::string& command, const Params& params) {
    ForgetSettings();
    FakeDaemon control(kControlSocket, Answer(ReplyMessage(Bytes({0}))));
    FakeDaemon streaming(kStreamingSocket, Answer(ReplyMessage(Bytes({0}))));
    Effect effect = Post(BodyOf(command, params)).output;
    for (FakeDaemon* const daemon : {&control, &streaming}) {
      for (std::string message : daemon->Received()) {
        effect += "\nmessage " + message.replace(8, 4, "pid.");
      }
    }
    return effect + Settings();
  }

  static bool IsRefused(const Effect& effect) {
    return effect == Reply(ErrorJson("RequestedError")) + UntouchedSettings();
  }

  /// The samples with one of them replaced, or added.
  static Params With(Params params, const std::string& name, const Json& value) {
    for (auto& [parameter, sample] : params) {
      if (parameter == name) {
        sample = value;
        return params;
      }
    }
    params.emplace_back(name, value);
    return params;
  }

  static Params Without(Params params, const std::string& name) {
    params.erase(std::remove_if(params.begin(), params.end(),
                                [&](const auto& parameter) { return parameter.first == name; }),
                 params.end());
    return params;
  }

  Effect EffectWith(const std::string& name, const Json& value) {
    Params params = SampleParams(GetParam());
    if (name == "YPosition") {  // the high byte of a larger one is ORed into the X position
      params = With(params, "XPosition", 255);
    }
    return EffectOf(With(params, name, value));
  }

  void CheckNumber(const std::string& name, std::int64_t lowest, std::int64_t highest);
  void CheckWords(const std::string& name, const Json& words);
  void CheckText(const std::string& name, std::size_t longest);

 private:
  /// A server for each number at the ends of the range, so that their replies differ.
  static std::map<std::string, std::string> InitialSettings() {
    std::map<std::string, std::string> files;
    for (const char* const server :
         {"-2147483648", "-2147483647", "0", "2147483646", "2147483647"}) {
      files["streaming_server" + std::string(server)] =
          "str_alias\tserver" + std::string(server) + "\ntype\t4\n";
    }
    return files;
  }

  static void ForgetSettings() {
    std::filesystem::remove_all(kSettingsFolder);
    std::filesystem::create_directory(kSettingsFolder);
    for (const auto& [name, content] : InitialSettings()) {
      WriteFile(std::string(kSettingsFolder) + "/" + name, content);
    }
    WriteSession(kSession);
  }

  static std::string UntouchedSettings() {
    std::string text;
    for (const auto& [name, content] : InitialSettings()) {
      text += "\nfile " + name + "\n" + content;
    }
    return text;
  }

  /// All files as the handler reads them: 255 bytes of each line.
  static std::string Settings() {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(kSettingsFolder)) {
      const std::string name = entry.path().filename();
      if (name != ".session" && entry.is_regular_file()) {
        std::istringstream content(ReadFile(entry.path()));
        for (std::string line; std::getline(content, line);) {
          files[name] += line.substr(0, 255) + "\n";
        }
      }
    }
    std::string text;
    for (const auto& [name, content] : files) {
      text += "\nfile " + name + "\n" + content;
    }
    return text;
  }
};

TEST_P(RequestsTest, RequiredParametersAreThoseWithoutWhichItIsRefused) {
  const Params samples = SampleParams(GetParam());
  EXPECT_FALSE(IsRefused(EffectOf(samples))) << TextOf(samples);
  for (const auto& [name, value] : samples) {
    EXPECT_TRUE(IsRefused(EffectOf(Without(samples, name)))) << "without " << name;
  }
}

void RequestsTest::CheckNumber(const std::string& name, std::int64_t lowest, std::int64_t highest) {
  const auto effect = [&](std::int64_t number) { return EffectWith(name, number); };
  std::set<Effect> inside;
  for (const std::int64_t number : {lowest, lowest + 1, highest - 1, highest}) {
    const Effect its = effect(number);
    EXPECT_FALSE(IsRefused(its)) << name << " " << number;
    EXPECT_TRUE(inside.insert(its).second) << name << " " << number << " is like another number";
  }
  // What the low bits of a number outside the range can be.
  for (const std::int64_t number : {0, INT16_MAX, INT32_MAX}) {
    if (lowest <= number && number <= highest) {
      inside.insert(effect(number));
    }
  }
  for (const std::int64_t number : {lowest - 1, highest + 1}) {
    const Effect its = effect(number);
    EXPECT_TRUE(IsRefused(its) || inside.count(its) == 1)
        << name << " " << number << " is a number of its own:\n"
        << testing::PrintToString(its);
  }
}

/// Every word that any schema names, and some that none names.
std::set<std::string> AllWords() {
  std::set<std::string> words = {kNonsense, "", "on", "ON"};
  const auto add = [&words](const Json& properties) {
    for (const Json& schema : properties) {
      for (const Json& word : schema.value("enum", Json::array())) {
        if (word.is_string()) {
          words.insert(word.get<std::string>());
        }
      }
    }
  };
  for (const std::string& command : CommandNames()) {
    const Json params = ParamsSchema(command);
    add(params.value("properties", Json::object()));
    for (const Json& pair : params.value("oneOf", Json::array())) {
      add(pair["properties"]);
    }
  }
  return words;
}

void RequestsTest::CheckWords(const std::string& name, const Json& words) {
  const Effect otherwise = EffectWith(name, kNonsense);
  std::set<Effect> effects;
  for (const Json& word : words) {
    const Effect its = EffectWith(name, word);
    EXPECT_FALSE(IsRefused(its)) << name << " " << word;
    // Where everything is taken, only a word with an effect of its own is one.
    EXPECT_TRUE(effects.insert(its).second || IsRefused(otherwise))
        << name << " " << word << " is like another word";
  }
  effects.insert(otherwise);
  for (const std::string& word : AllWords()) {
    EXPECT_EQ(effects.count(EffectWith(name, word)), 1U)
        << name << " " << word << " is a word, too";
  }
}

void RequestsTest::CheckText(const std::string& name, std::size_t longest) {
  const std::string full(longest, 'x');
  const Effect its = EffectWith(name, full);
  EXPECT_FALSE(IsRefused(its)) << name;
  EXPECT_NE(EffectWith(name, full.substr(1) + "a"), its) << name << ": its last byte is not kept";
  EXPECT_EQ(EffectWith(name, full + "a"), its) << name << ": a longer text is kept";
  const Json schema = ParamsSchema(GetParam())["properties"][name];
  EXPECT_EQ(IsRefused(EffectWith(name, "")), schema.contains("minLength")) << name;
}

TEST_P(RequestsTest, ValuesAreThoseThatAreTakenAsTheyAre) {
  const Json schema = ParamsSchema(GetParam());
  std::size_t position = 0;
  const Json properties = schema.value("properties", Json::object());
  for (const auto& [name, parameter] : properties.items()) {
    // The 125 blocks of a selection are alike: the first and the last one will do.
    const bool is_outside_of_selection = name.rfind("block", 0) != 0;
    const bool is_at_an_end = position == 0 || position + 1 == properties.size();
    ++position;
    if (parameter["type"] == "integer" && parameter.contains("minimum")) {
      if (is_outside_of_selection || is_at_an_end) {
        CheckNumber(name, parameter["minimum"], parameter["maximum"]);
      }
    } else if (parameter.contains("enum") && parameter["type"] == "string" &&
               !schema.contains("oneOf")) {
      CheckWords(name, parameter["enum"]);
    } else if (parameter.contains("maxLength")) {
      CheckText(name, parameter["maxLength"]);
    }
  }
}

class KeysTest : public RequestsTest {};

/// Each control is taken with its own keys, and refused with those of the control before it.
TEST_P(KeysTest, ControlsAreTakenWithTheirOwnKeys) {
  const Json pairs = ParamsSchema(GetParam())["oneOf"];
  const std::string key_name = std::next(pairs[0]["properties"].begin()).key();
  FakeDaemon control(kControlSocket, Answer(ReplyMessage(Bytes({0}))));
  const auto is_taken = [&](const Json& kind, const Json& key) {
    const Params params = With(With(SampleParams(GetParam()), "Kind", kind), key_name, key);
    return Post(BodyOf(GetParam(), params)).output != Reply(ErrorJson("RequestedError"));
  };
  Json keys_before = {kNonsense};
  for (const Json& pair : pairs) {
    const Json& kind = pair["properties"]["Kind"]["const"];
    const Json& keys = pair["properties"][key_name]["enum"];
    for (const Json& key : keys) {
      EXPECT_TRUE(is_taken(kind, key)) << kind << key;
      EXPECT_FALSE(is_taken(kNonsense, key)) << key;
    }
    for (const Json& key : keys_before) {
      const bool is_own = std::find(keys.begin(), keys.end(), key) != keys.end();
      EXPECT_EQ(is_taken(kind, key), is_own) << kind << key;
    }
    keys_before = keys;
  }
}

INSTANTIATE_TEST_SUITE_P(Command, KeysTest,
                         testing::Values("SetWebKeyEvent", "SetWebButtonEvent",
                                         "SeesawSwitchOperation"),
                         [](const auto& command) { return command.param; });

INSTANTIATE_TEST_SUITE_P(Command, RequestsTest, testing::ValuesIn(CommandNames()),
                         [](const auto& command) { return command.param; });

}  // namespace
