#include "simulator/state_fields.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include "simulator/date_time.h"
#include "simulator/recording.h"
#include "simulator/values.h"

namespace simulator {
namespace {

template <typename Owner>
constexpr Owner& MemberOf(Owner& owner) {
  return owner;
}

template <auto kFirst, auto... kRest, typename Owner>
constexpr auto& MemberOf(Owner& owner) {
  return MemberOf<kRest...>(owner.*kFirst);
}

/// A member of the state, or of a member of it and so on.
template <auto... kMembers>
constexpr auto kAt = [](auto& state) -> auto& {
  return MemberOf<kMembers...>(state);
};

/// An element of an array that `array` finds in the state, or a member of the element and so on.
template <auto... kMembers, typename AtArray>
constexpr auto AtElement(AtArray array, std::size_t index) {
  return [ array, index ](auto& state) -> auto& {
    return MemberOf<kMembers...>(array(state)[index]);
  };
}

// --- Kinds of members ---------------------------------------------------------------------------

template <typename Words>
std::string Listed(const Words& words) {
  std::string text;
  for (const std::string_view word : words) {
    text += (text.empty() ? "\"" : ", \"") + std::string(word) + '"';
  }
  return text;
}

template <typename At>
Field YesOrNo(std::string path, At at) {
  return {path, "true, false", [at](const State& state) { return Json(at(state)); },
          [at, path](State& state, const Json& value) {
            if (!value.is_boolean()) {
              Reject(path, "must be true or false");
            }
            at(state) = value.get<bool>();
          }};
}

template <typename At>
Field Number(std::string path, int lowest, int highest, At at) {
  const std::string values = std::to_string(lowest) + " to " + std::to_string(highest);
  return {path, values, [at](const State& state) { return Json(at(state)); },
          [at, path, lowest, highest, values](State& state, const Json& value) {
            if (!value.is_number_integer() || value < lowest || value > highest) {
              Reject(path, "must be a whole number from " + values);
            }
            at(state) = value.get<int>();
          }};
}

/// One of a few words; the member holds the word's place in the list, as a number or enumeration.
template <typename Words, typename At>
Field Word(std::string path, const Words& words, At at) {
  return {
      path, Listed(words),
      [at, &words](const State& state) { return Json(words[static_cast<std::size_t>(at(state))]); },
      [at, path, &words](State& state, const Json& value) {
        const auto word = value.is_string()
                              ? std::find(words.begin(), words.end(), value.get<std::string>())
                              : words.end();
        if (word == words.end()) {
          Reject(path, "must be one of " + Listed(words));
        }
        using Value = std::remove_reference_t<decltype(at(state))>;
        at(state) = static_cast<Value>(word - words.begin());
      }};
}

/// A text of at most `longest` bytes without control characters.
std::string TextFrom(const std::string& path, std::size_t longest, const Json& value) {
  const auto is_control = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; };
  if (!value.is_string()) {
    Reject(path, "must be a text");
  }
  auto text = value.get<std::string>();
  if (text.size() > longest || std::any_of(text.begin(), text.end(), is_control)) {
    Reject(path,
           "must have at most " + std::to_string(longest) + " bytes, without control characters");
  }
  return text;
}

template <typename At>
Field Text(std::string path, std::size_t longest, At at) {
  return {path, "text of at most " + std::to_string(longest) + " bytes",
          [at](const State& state) { return Json(at(state)); },
          [at, path, longest](State& state, const Json& value) {
            at(state) = TextFrom(path, longest, value);
          }};
}

/// A number with one digit after the point, held in tenths.
template <typename At>
Field Tenths(std::string path, int lowest, int highest, At at) {
  const std::string values = std::to_string(lowest / 10) + " to " + std::to_string(highest / 10);
  return {path, values + ", tenths", [at](const State& state) { return Json(at(state) / 10.0); },
          [at, path, lowest, highest, values](State& state, const Json& value) {
            const double tenths = value.is_number() ? value.get<double>() * 10 : lowest - 1;
            if (!(tenths >= lowest && tenths <= highest)) {
              Reject(path, "must be a number from " + values);
            }
            at(state) = static_cast<int>(std::lround(tenths));
          }};
}

// --- Lists of words -----------------------------------------------------------------------------

using Name = std::string_view;

constexpr std::array<Name, 12> kModels = {"RV130/140", "RV110", "RV120", "RV130", "RV140", "RV150",
                                          "RV160",     "RV170", "RV180", "RV190", "RV210", "RV220"};
constexpr std::array<Name, 19> kDestinations = {"JP", "US", "KR", "EU", "ER", "AC", "AA",
                                                "AG", "TW", "AS", "UC", "UA", "UB", "EZ",
                                                "EY", "EK", "EY", "AH", "UN"};
constexpr std::array<Name, 5> kModes = {"Camera", "Thumbnail", "Play", "USB", "EditMetadata"};
constexpr std::array<Name, 3> kBatteryInfos = {"Time", "Capacity", "Voltage"};
constexpr std::array<Name, 4> kCards = {"None", "Ok", "Invalid", "Unknown"};
constexpr std::array<Name, 2> kSlots = {"A", "B"};
constexpr std::array<Name, 4> kRecordingStatus = {"Stop", "Standby", "Rec", "RecPause"};
constexpr std::array<Name, 5> kRecordingModes = {"Normal", "Pre", "Clip", "Frame", "Interval"};
constexpr std::array<Name, 2> kAspects = {"16:9", "4:3"};
constexpr std::array<Name, 2> kTimeCodeRuns = {"FreeRun", "RecRun"};
constexpr std::array<Name, 2> kIrisModes = {"Manual", "Auto"};
constexpr std::array<Name, 5> kGainModes = {"ManualL", "ManualM", "ManualH", "Alc", "Lolux"};
constexpr std::array<Name, 6> kShutterModes = {"Off",  "Manual",   "Eei",
                                               "Step", "Variable", "Unknown"};
constexpr std::array<Name, 4> kWhiteBalanceModes = {"Preset", "A", "B", "Faw"};
constexpr std::array<Name, 3> kFocusModes = {"Auto", "Manual", "OnePush"};
constexpr std::array<Name, 2> kFocusUnits = {"m", "ft"};
constexpr std::array<Name, 2> kTallyControls = {"Camera", "Web"};
constexpr std::array<Name, 3> kStudioTallies = {"Off", "Program", "Preview"};
constexpr std::array<Name, 7> kAdaptors = {"Off",      "None",     "Mismatch", "WLAN_AP",
                                           "WLAN_P2P", "Ethernet", "Cellular"};
constexpr std::array<Name, 4> kNtpStatus = {"Master", "NotSynchronized", "Synchronized", "Unknown"};
constexpr std::array<Name, 4> kStreamingStatus = {"Stopped", "Connecting", "Running",
                                                  "Reconnecting"};
constexpr std::array<Name, 15> kUploadPhases = {
    "OFF",   "START", "OCCUPY_SLOT", "CLEAR",   "MOUNT",        "PARSE",   "TRANS", "PUT_FILE",
    "?????", "TRUST", "PROMPT",      "UNMOUNT", "RELEASE_SLOT", "RECOVER", "RESUME"};
constexpr std::array<Name, 4> kFtpServers = {"FTP1", "FTP2", "FTP3", "FTP4"};
constexpr std::array<Name, 4> kServerAnswers = {"Ok", "Unreachable", "LoginRefused", "NoSpace"};
constexpr std::array<Name, 4> kCloudSteps = {"Idle", "Doing", "Finished", "Failed"};
constexpr std::array<Name, 7> kCloudErrors = {"None",   "Ssl", "Timeout", "Authorization",
                                              "Server", "Url", "Other"};
constexpr std::array<Name, 12> kUserSwitches = {"Sw1", "Sw2", "Sw3", "Sw4",  "Sw5",  "Sw6",
                                                "Sw7", "Sw8", "Sw9", "Sw10", "Sw11", "LensRet"};

// --- Members with a form of their own -----------------------------------------------------------

Field Date() {
  const std::string path = "clock.date";
  return {path, "date and time, for example \"2026-05-04T09:30:00\"",
          [](const State& state) { return Json(DateText(CurrentSecond(state.clock))); },
          [path](State& state, const Json& value) {
            const auto second =
                value.is_string() ? ParseDate(value.get<std::string>()) : std::nullopt;
            if (!second) {
              Reject(path, "must be a date and time like \"2026-05-04T09:30:00\"");
            }
            state.clock.date_at_power_on += *second - CurrentSecond(state.clock);
          }};
}

Field Speed() {
  const std::string path = "clock.speed";
  constexpr double kSlowest = 0.1;
  constexpr double kFastest = 1000;
  return {path, "0.1 to 1000", [](const State& state) { return Json(state.clock.speed); },
          [path](State& state, const Json& value) {
            if (!value.is_number() || value < kSlowest || value > kFastest) {
              Reject(path, "must be a number from 0.1 to 1000");
            }
            state.clock.speed = value.get<double>();
          }};
}

TimeCode TimeCodeFrom(const std::string& path, const Json& value) {
  const auto time_code = value.is_string() ? ParseTimeCode(value.get<std::string>()) : std::nullopt;
  if (!time_code) {
    Reject(path, "must be a time code, hh:mm:ss:ff or hh:mm:ss.ff");
  }
  return *time_code;
}

Field TimeCodeValue() {
  const std::string path = "timecode.value";
  return {
      path, "time code, hh:mm:ss:ff, or hh:mm:ss.ff in drop frame",
      [](const State& state) { return Json(TimeCodeText(CurrentTimeCode(state))); },
      [path](State& state, const Json& value) { SetTimeCode(state, TimeCodeFrom(path, value)); }};
}

Field Format() {
  const std::string path = "recording.format";
  constexpr int kHighest = 11;
  return {path, "0 to 11, or 255: none",
          [](const State& state) { return Json(state.recording.format); },
          [path](State& state, const Json& value) {
            const std::int64_t format = value.is_number_integer() ? value.get<std::int64_t>() : -1;
            if (format < 0 || (format > kHighest && format != Recording::kNoFormat)) {
              Reject(path, "must be a number from 0 to 11, or 255");
            }
            state.recording.format = value.get<int>();
          }};
}

/// Minutes, with as many digits after the point as it takes; null is unknown.
Field Remain(const std::string& slot, std::size_t index) {
  const std::string path = "slots." + slot + ".remain";
  constexpr double kMinute = 60000;
  constexpr double kMaxMinutes = 65534;
  return {path, "minutes, 0 to 65534, or null: unknown",
          [index](const State& state) {
            const Milliseconds remain = state.slots[index].remain;
            return remain == Slot::kUnknown ? Json() : Json(static_cast<double>(remain) / kMinute);
          },
          [path, index](State& state, const Json& value) {
            if (!value.is_null() && (!value.is_number() || value < 0 || value > kMaxMinutes)) {
              Reject(path, "must be minutes from 0 to 65534, or null");
            }
            state.slots[index].remain =
                value.is_null() ? Slot::kUnknown : std::llround(value.get<double>() * kMinute);
          }};
}

const Json& MemberOf(const Json& object, const std::string& path, const char* name) {
  const auto member = object.find(name);
  if (member == object.end()) {
    Reject(path, std::string("has no member \"") + name + '"');
  }
  return *member;
}

void RejectOthers(const Json& object, const std::string& path,
                  std::initializer_list<std::string_view> names) {
  for (const auto& [name, value] : object.items()) {
    if (std::find(names.begin(), names.end(), name) == names.end()) {
      Reject(std::string(path).append(".").append(name), "no such member");
    }
  }
}

/// "cloud.events[2]"
std::string Element(const std::string& path, std::size_t index) {
  return path + "[" + std::to_string(index) + "]";
}

Json ClipJson(const Clip& clip) {
  return {{"name", clip.name},
          {"first", TimeCodeText(clip.first_frame)},
          {"last", TimeCodeText(clip.last_frame)},
          {"date", DateText(clip.recorded_at)},
          {"ok_mark", clip.ok_mark},
          {"aspect", kAspects[clip.four_to_three ? 1 : 0]},
          {"edit_lock", clip.edit_lock}};
}

bool BooleanFrom(const std::string& path, const Json& value) {
  if (!value.is_boolean()) {
    Reject(path, "must be true or false");
  }
  return value.get<bool>();
}

Clip ClipFrom(const Json& value, const std::string& path) {
  if (!value.is_object()) {
    Reject(path, "must be an object");
  }
  RejectOthers(value, path, {"name", "first", "last", "date", "ok_mark", "aspect", "edit_lock"});
  Clip clip;
  constexpr std::size_t kMaxNameLength = 9;
  clip.name = TextFrom(path + ".name", kMaxNameLength, MemberOf(value, path, "name"));
  clip.first_frame = TimeCodeFrom(path + ".first", MemberOf(value, path, "first"));
  clip.last_frame = TimeCodeFrom(path + ".last", MemberOf(value, path, "last"));
  const Json& date = MemberOf(value, path, "date");
  const auto second = date.is_string() ? ParseDate(date.get<std::string>()) : std::nullopt;
  if (!second) {
    Reject(path + ".date", "must be a date and time like \"2026-05-04T09:30:00\"");
  }
  clip.recorded_at = *second;
  clip.ok_mark = BooleanFrom(path + ".ok_mark", value.value("ok_mark", Json(false)));
  clip.edit_lock = BooleanFrom(path + ".edit_lock", value.value("edit_lock", Json(false)));
  const Json aspect = value.value("aspect", Json("16:9"));
  if (aspect != "16:9" && aspect != "4:3") {
    Reject(path + ".aspect", "must be one of " + Listed(kAspects));
  }
  clip.four_to_three = aspect == "4:3";
  return clip;
}

constexpr int kMaxClips = 4000;  // as many as the upload's selection can name

Clips ClipsFrom(const std::string& path, char card, const Json& value) {
  if (value.is_number_integer() && value >= 0 && value <= kMaxClips) {
    return RecordedClips(card, value.get<std::size_t>());
  }
  if (!value.is_array() || value.size() > static_cast<std::size_t>(kMaxClips)) {
    Reject(path, "must be a list of at most 4000 clips, or the number of clips to make up");
  }
  Clips clips;
  for (std::size_t i = 0; i < value.size(); ++i) {
    clips.push_back(ClipFrom(value[i], Element(path, i)));
  }
  return clips;
}

Field ClipList(const std::string& slot, std::size_t index) {
  const std::string path = "slots." + slot + ".clips";
  return {path, "list of clips, or a number of clips to make up",
          [index](const State& state) {
            Json list = Json::array();
            for (const Clip& clip : state.slots[index].clips) {
              list.push_back(ClipJson(clip));
            }
            return list;
          },
          [path, slot, index](State& state, const Json& value) {
            state.slots[index].clips = ClipsFrom(path, slot[0], value);
          },
          [index](const State& before, const State& after) {
            return before.slots[index].clips == after.slots[index].clips;
          }};
}

Field UploadFiles() {
  const std::string path = "upload.files";
  return {path, "list of at most 4000 file names",
          [](const State& state) { return Json(state.upload.files); },
          [path](State& state, const Json& value) {
            if (!value.is_array() || value.size() > static_cast<std::size_t>(kMaxClips)) {
              Reject(path, "must be a list of at most 4000 file names");
            }
            constexpr std::size_t kMaxNameLength = 30;
            std::vector<std::string> files;
            for (const Json& name : value) {
              files.push_back(TextFrom(Element(path, files.size()), kMaxNameLength, name));
            }
            state.upload.files = std::move(files);
          }};
}

CloudEvent CloudEventFrom(const Json& value, const std::string& path) {
  if (!value.is_object()) {
    Reject(path, "must be an object");
  }
  RejectOthers(value, path, {"title", "url", "stream_key"});
  return {TextFrom(path + ".title", 127, MemberOf(value, path, "title")),
          TextFrom(path + ".url", 191, MemberOf(value, path, "url")),
          TextFrom(path + ".stream_key", 63, MemberOf(value, path, "stream_key"))};
}

Field CloudEvents() {
  const std::string path = "cloud.events";
  return {path, "list of events, each with title, url and stream_key",
          [](const State& state) {
            Json list = Json::array();
            for (const CloudEvent& event : state.cloud.events) {
              list.push_back(
                  {{"title", event.title}, {"url", event.url}, {"stream_key", event.stream_key}});
            }
            return list;
          },
          [path](State& state, const Json& value) {
            constexpr std::size_t kMostEvents = 100;
            if (!value.is_array() || value.size() > kMostEvents) {
              Reject(path, "must be a list of at most 100 events");
            }
            std::vector<CloudEvent> events;
            for (const Json& event : value) {
              events.push_back(CloudEventFrom(event, Element(path, events.size())));
            }
            state.cloud.events = std::move(events);
          }};
}

Field ServerKey(const std::string& server, std::size_t index) {
  const std::string path = "upload.servers." + server + ".key";
  return {path, "40 hexadecimal digits",
          [index](const State& state) { return Json(state.upload.servers[index].key); },
          [path, index](State& state, const Json& value) {
            constexpr std::size_t kDigits = 40;
            const auto is_hex = [](unsigned char c) { return std::isxdigit(c) != 0; };
            const std::string key = value.is_string() ? value.get<std::string>() : "";
            if (key.size() != kDigits || !std::all_of(key.begin(), key.end(), is_hex)) {
              Reject(path, "must be 40 hexadecimal digits");
            }
            state.upload.servers[index].key = key;
          }};
}

// --- The state ----------------------------------------------------------------------------------

void AddSlot(std::vector<Field>& fields, std::size_t index) {
  const std::string slot(kSlots[index]);
  const std::string path = "slots." + slot;
  fields.push_back(Word(path + ".card", kCards, AtElement<&Slot::card>(kAt<&State::slots>, index)));
  fields.push_back(
      YesOrNo(path + ".protect", AtElement<&Slot::write_protected>(kAt<&State::slots>, index)));
  fields.push_back(Remain(slot, index));
  fields.push_back(ClipList(slot, index));
}

void AddUserSwitches(std::vector<Field>& fields) {
  constexpr std::size_t kMaxLabelLength = 20;
  for (std::size_t i = 0; i < kUserSwitches.size(); ++i) {
    const std::string path = "user." + std::string(kUserSwitches[i]);
    fields.push_back(Text(path + ".label", kMaxLabelLength,
                          AtElement<&UserSwitch::label>(kAt<&State::user>, i)));
    fields.push_back(YesOrNo(path + ".on", AtElement<&UserSwitch::on>(kAt<&State::user>, i)));
  }
}

void AddFtpServers(std::vector<Field>& fields) {
  for (std::size_t i = 0; i < kFtpServers.size(); ++i) {
    const std::string server(kFtpServers[i]);
    const std::string path = "upload.servers." + server;
    constexpr auto kServers = kAt<&State::upload, &Upload::servers>;
    fields.push_back(
        Word(path + ".answer", kServerAnswers, AtElement<&FtpServer::answer>(kServers, i)));
    fields.push_back(YesOrNo(path + ".trusted", AtElement<&FtpServer::trusted>(kServers, i)));
    fields.push_back(YesOrNo(path + ".asks_to_overwrite",
                             AtElement<&FtpServer::asks_to_overwrite>(kServers, i)));
    fields.push_back(
        Number(path + ".key_type", 0, 255, AtElement<&FtpServer::key_type>(kServers, i)));
    fields.push_back(ServerKey(server, i));
  }
}

template <auto kControl>
Field LevelOf(std::string path, int end) {
  return Number(std::move(path), -end, end, kAt<kControl, &Leveled::level>);
}

std::vector<Field> MakeFields() {
  using S = State;
  std::vector<Field> fields = {
      Word("model", kModels, kAt<&S::model>),
      Word("destination", kDestinations, kAt<&S::destination>),
      Text("serial", 9, kAt<&S::serial>),
      Text("firmware", 9, kAt<&S::firmware>),
      Date(),
      YesOrNo("clock.paused", kAt<&S::clock, &CameraClock::paused>),
      Speed(),
      Word("mode", kModes, kAt<&S::mode>),
      YesOrNo("suspended", kAt<&S::suspended>),
      Number("page", 0, 255, kAt<&S::page>),
      YesOrNo("pages.planning_metadata", kAt<&S::pages, &Pages::planning_metadata>),
      YesOrNo("pages.edit_metadata", kAt<&S::pages, &Pages::edit_metadata>),
      YesOrNo("pages.view_remote", kAt<&S::pages, &Pages::view_remote>),
      YesOrNo("pages.camera_control", kAt<&S::pages, &Pages::camera_control>),
      YesOrNo("pages.setting", kAt<&S::pages, &Pages::setting>),
      Word("battery.info", kBatteryInfos, kAt<&S::battery, &Battery::info>),
      Number("battery.level", 0, 255, kAt<&S::battery, &Battery::level>),
      Number("battery.value", 0, 65535, kAt<&S::battery, &Battery::value>),
  };
  AddSlot(fields, 0);
  AddSlot(fields, 1);
  const std::vector<Field> rest = {
      Word("recording.status", kRecordingStatus, kAt<&S::recording, &Recording::status>),
      Word("recording.mode", kRecordingModes, kAt<&S::recording, &Recording::mode>),
      Word("recording.slot", kSlots, kAt<&S::recording, &Recording::slot>),
      YesOrNo("recording.dual", kAt<&S::recording, &Recording::dual>),
      Format(),
      Word("recording.aspect", kAspects, kAt<&S::recording, &Recording::four_to_three>),
      TimeCodeValue(),
      Word("timecode.run", kTimeCodeRuns, kAt<&S::time_code, &TimeCodeState::run>),
      YesOrNo("timecode.drop_frame", kAt<&S::time_code, &TimeCodeState::drop_frame>),
      YesOrNo("full_auto", kAt<&S::full_auto>),
      YesOrNo("face_detection", kAt<&S::face_detection>),
      Number("light.ev", 0, 20, kAt<&S::light, &Light::ev>),
      Number("light.kelvin", kKelvinLowest, kKelvinHighest, kAt<&S::light, &Light::kelvin>),
      Word("iris.mode", kIrisModes, kAt<&S::iris, &Iris::mode>),
      Word("iris.stop", kIrisStops, kAt<&S::iris, &Iris::stop>),
      Word("gain.mode", kGainModes, kAt<&S::gain, &Gain::mode>),
      Number("gain.L", kGainLowest, kGainHighest, AtElement(kAt<&S::gain, &Gain::db>, 0)),
      Number("gain.M", kGainLowest, kGainHighest, AtElement(kAt<&S::gain, &Gain::db>, 1)),
      Number("gain.H", kGainLowest, kGainHighest, AtElement(kAt<&S::gain, &Gain::db>, 2)),
      Number("ae.level", -kAeLevelEnd, kAeLevelEnd, kAt<&S::ae, &Exposure::level>),
      YesOrNo("ae.lock", kAt<&S::ae, &Exposure::lock>),
      Word("shutter.mode", kShutterModes, kAt<&S::shutter, &Shutter::mode>),
      Word("shutter.speed", kShutterSpeeds, kAt<&S::shutter, &Shutter::step>),
      Tenths("shutter.variable_hz", kVariableLowest, kVariableHighest,
             kAt<&S::shutter, &Shutter::variable_tenth_hz>),
      Word("white_balance.mode", kWhiteBalanceModes, kAt<&S::white_balance, &WhiteBalance::mode>),
      Number("white_balance.preset_kelvin", kKelvinLowest, kKelvinHighest,
             kAt<&S::white_balance, &WhiteBalance::preset_kelvin>),
      Number("white_balance.a_kelvin", kKelvinLowest, kKelvinHighest,
             kAt<&S::white_balance, &WhiteBalance::a_kelvin>),
      Number("white_balance.b_kelvin", kKelvinLowest, kKelvinHighest,
             kAt<&S::white_balance, &WhiteBalance::b_kelvin>),
      Number("white_balance.paint_red", -kPaintScale, kPaintScale,
             kAt<&S::white_balance, &WhiteBalance::paint_red>),
      Number("white_balance.paint_blue", -kPaintScale, kPaintScale,
             kAt<&S::white_balance, &WhiteBalance::paint_blue>),
      Number("zoom.position", 0, kZoomTele, kAt<&S::zoom, &Zoom::position>),
      Number("zoom.target", 0, kZoomTele, kAt<&S::zoom, &Zoom::target>),
      Number("zoom.speed", 0, 5100, kAt<&S::zoom, &Zoom::speed>),
      Word("focus.mode", kFocusModes, kAt<&S::focus, &Focus::mode>),
      Number("focus.position", 0, kFocusInfinity, kAt<&S::focus, &Focus::position>),
      Number("focus.subject", 0, kFocusInfinity, kAt<&S::focus, &Focus::subject>),
      Word("focus.unit", kFocusUnits, kAt<&S::focus, &Focus::unit>),
      LevelOf<&S::master_black>("master_black.level", kMasterBlackEnd),
      LevelOf<&S::detail>("detail.level", kDetailEnd),
      YesOrNo("display.on", kAt<&S::display, &Display::on>),
      Number("display.information", 0, 2, kAt<&S::display, &Display::information>),
      YesOrNo("display.status_screen", kAt<&S::display, &Display::status_screen>),
      YesOrNo("display.menu", kAt<&S::display, &Display::menu>),
      YesOrNo("display.mix_sdi", kAt<&S::display, &Display::mix_sdi>),
      YesOrNo("display.mix_hdmi", kAt<&S::display, &Display::mix_hdmi>),
      YesOrNo("display.mix_video", kAt<&S::display, &Display::mix_video>),
      YesOrNo("tally.lamp", kAt<&S::tally, &Tally::lamp>),
      Word("tally.control", kTallyControls, kAt<&S::tally, &Tally::control>),
      Word("tally.studio", kStudioTallies, kAt<&S::tally, &Tally::studio>),
      YesOrNo("monitor", kAt<&S::monitor>),
      Word("network.adaptor", kAdaptors, kAt<&S::network, &Network::adaptor>),
      YesOrNo("network.link", kAt<&S::network, &Network::link>),
      YesOrNo("network.connected", kAt<&S::network, &Network::connected>),
      YesOrNo("network.web_access", kAt<&S::network, &Network::web_access>),
      Word("ntp.status", kNtpStatus, kAt<&S::ntp, &Ntp::status>),
      YesOrNo("ntp.reachable", kAt<&S::ntp, &Ntp::reachable>),
      Text("gps.antenna", 20, kAt<&S::gps, &Gps::antenna>),
      Text("gps.location", 200, kAt<&S::gps, &Gps::location>),
      YesOrNo("ifb.on", kAt<&S::ifb, &Ifb::on>),
      YesOrNo("ifb.reachable", kAt<&S::ifb, &Ifb::reachable>),
      Word("streaming.status", kStreamingStatus, kAt<&S::streaming, &Streaming::status>),
      YesOrNo("streaming.reachable", kAt<&S::streaming, &Streaming::reachable>),
      Word("upload.phase", kUploadPhases, kAt<&S::upload, &Upload::phase>),
      Word("upload.second_job", kUploadPhases, kAt<&S::upload, &Upload::second_job>),
      Word("upload.server", kFtpServers, kAt<&S::upload, &Upload::server>),
      Number("upload.error", 0, 255, kAt<&S::upload, &Upload::error>),
      UploadFiles(),
      Number("upload.file", 0, kMaxClips, kAt<&S::upload, &Upload::file>),
      Word("cloud.login", kCloudSteps, kAt<&S::cloud, &Cloud::login, &CloudProgress::step>),
      Word("cloud.event_list", kCloudSteps,
           kAt<&S::cloud, &Cloud::event_list, &CloudProgress::step>),
      Word("cloud.stream_info", kCloudSteps,
           kAt<&S::cloud, &Cloud::stream_info, &CloudProgress::step>),
      Word("cloud.error", kCloudErrors, kAt<&S::cloud, &Cloud::error>),
      Word("cloud.service", kCloudErrors, kAt<&S::cloud, &Cloud::service>),
      Text("cloud.password", 63, kAt<&S::cloud, &Cloud::password>),
      Number("cloud.delay_ms", 0, 60000, kAt<&S::cloud, &Cloud::delay>),
      YesOrNo("cloud.logged_in", kAt<&S::cloud, &Cloud::logged_in>),
      YesOrNo("cloud.has_events", kAt<&S::cloud, &Cloud::has_events>),
      Number("cloud.stream_event", Cloud::kNoEvent, 99, kAt<&S::cloud, &Cloud::stream_event>),
      CloudEvents(),
  };
  fields.insert(fields.end(), rest.begin(), rest.end());
  AddUserSwitches(fields);
  AddFtpServers(fields);
  return fields;
}

Json::json_pointer Pointer(const std::string& path) {
  std::string text = "/" + path;
  std::replace(text.begin(), text.end(), '.', '/');
  return Json::json_pointer(text);
}

const Field* FindField(const std::string& path) {
  const std::vector<Field>& fields = StateFields();
  const auto field = std::find_if(fields.begin(), fields.end(), [&path](const Field& candidate) {
    return candidate.path == path;
  });
  return field != fields.end() ? &*field : nullptr;
}

bool HasMembers(const std::string& path) {
  const std::vector<Field>& fields = StateFields();
  return std::any_of(fields.begin(), fields.end(), [&path](const Field& field) {
    return field.path.compare(0, path.size() + 1, path + ".") == 0;
  });
}

void ApplyMembers(State& state, const Json& patch, const std::string& prefix) {
  for (const auto& [name, value] : patch.items()) {
    const std::string path = prefix + name;
    const bool is_one_name = name.find('.') == std::string::npos;
    if (const Field* const field = is_one_name ? FindField(path) : nullptr) {
      field->set(state, value);
    } else if (!is_one_name || !HasMembers(path)) {
      Reject(path, "no such member");
    } else if (!value.is_object()) {
      Reject(path, "must be an object");
    } else {
      ApplyMembers(state, value, path + ".");
    }
  }
}

}  // namespace

const std::vector<Field>& StateFields() {
  static const std::vector<Field> fields = MakeFields();
  return fields;
}

Json ToJson(const State& state) {
  Json whole = Json::object();
  for (const Field& field : StateFields()) {
    whole[Pointer(field.path)] = field.get(state);
  }
  return whole;
}

void ApplyPatch(State& state, const Json& patch) {
  if (!patch.is_object()) {
    throw Rejected("the state must be an object");
  }
  ApplyMembers(state, patch, "");
}

std::vector<std::string> Differences(const State& before, const State& after) {
  std::vector<std::string> lines;
  for (const Field& field : StateFields()) {
    if (field.is_same ? field.is_same(before, after) : field.get(before) == field.get(after)) {
      continue;
    }
    const Json old = field.get(before);
    const Json now = field.get(after);
    const auto shown = [](const Json& value) {
      if (value.is_array()) {
        return "[" + std::to_string(value.size()) + "]";
      }
      return value.is_string() ? value.get<std::string>() : value.dump();
    };
    lines.push_back(field.path + " " + shown(old) + " -> " + shown(now));
  }
  return lines;
}

}  // namespace simulator
