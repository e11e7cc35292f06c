#include "simulator/scenes.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "simulator/lens.h"
#include "simulator/list_text.h"
#include "simulator/recording.h"
#include "simulator/state_fields.h"

namespace simulator {
namespace {

namespace fs = std::filesystem;

constexpr char kSettings[] = "settings";
constexpr char kExtension[] = ".json";

/// What follows from members that were set from outside: what was under way is under way no more,
/// and what is new begins now.
void Settle(const State& before, State& after) {
  if (after.recording.status != before.recording.status) {
    after.recording.in_status = 0;
    if (!HasOpenClip(before)) {
      after.recording.first_frame = CurrentTimeCode(after);
    }
  }
  if (after.zoom.position != before.zoom.position && after.zoom.target == before.zoom.target) {
    after.zoom.target = after.zoom.position;
  }
  if (after.upload.phase != before.upload.phase) {
    after.upload.in_phase = 0;
  }
  if (after.streaming.status != before.streaming.status) {
    after.streaming.in_status = 0;
  }
  const auto begin = [&after](const CloudProgress& old, CloudProgress& now) {
    if (now.step == CloudStep::kDoing && old.step != CloudStep::kDoing) {
      now.outcome = after.cloud.service;
      now.left = after.cloud.delay;
    }
  };
  begin(before.cloud.login, after.cloud.login);
  begin(before.cloud.event_list, after.cloud.event_list);
  begin(before.cloud.stream_info, after.cloud.stream_info);
}

/// What members may be one by one, but not together.
void CheckTogether(const State& state) {
  const Upload& upload = state.upload;
  const bool sends = upload.phase != UploadPhase::kOff;
  if (sends && upload.files.empty()) {
    throw Rejected("upload.phase: an upload needs files; give upload.files, too");
  }
  if (sends && upload.file > static_cast<int>(upload.files.size())) {
    throw Rejected("upload.file: must not be more than the number of files");
  }
}

/// Stores the recording format in the settings file where the handler looks for it.
SettingsFiles WithFormat(const SettingsFiles& settings, int format) {
  if (settings.RecordingFormat() == format) {
    return settings;
  }
  return settings.Patched({{"streaming", {{"rfresolution", std::to_string(format)}}}});
}

bool Names(const Json& patch, const char* part, const char* member) {
  return patch.is_object() && patch.contains(part) && patch[part].is_object() &&
         patch[part].contains(member);
}

/// Applies a patch to a state and settings, which are thrown away if it is rejected.
void Apply(State& state, SettingsFiles& settings, Json patch) {
  if (!patch.is_object()) {
    throw Rejected("the state must be an object");
  }
  const State before = state;
  if (patch.contains(kSettings)) {
    settings = settings.Patched(patch[kSettings]);
    patch.erase(kSettings);
    state.recording.format = settings.RecordingFormat();
  }
  ApplyPatch(state, patch);
  if (Names(patch, "recording", "format")) {
    settings = WithFormat(settings, state.recording.format);
  }
  CheckTogether(state);
  Settle(before, state);
}

Json ParseFile(const fs::path& path) {
  std::ifstream file(path);
  if (!file || fs::is_directory(path)) {
    throw Rejected(path.string() + ": cannot be read");
  }
  return ParseJson({std::istreambuf_iterator<char>(file), {}}, path.string());
}

}  // namespace

Json WholeState(const Camera& camera) {
  Json whole = ToJson(camera.state());
  whole[kSettings] = camera.settings().ToJson();
  return whole;
}

void PatchWholeState(Camera& camera, const Json& patch) {
  State state = camera.state();
  SettingsFiles settings = camera.settings();
  Apply(state, settings, patch);
  settings.Write();
  camera.settings() = std::move(settings);
  camera.state() = std::move(state);
}

void SetScene(Camera& camera, const Json& scene) {
  State state = DefaultState();
  SettingsFiles settings;
  Apply(state, settings, scene);
  settings.Write();
  camera.settings() = std::move(settings);
  camera.state() = std::move(state);
}

std::vector<std::string> SceneNames(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
    if (entry.path().extension() == kExtension) {
      names.push_back(entry.path().stem());
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

Json ReadScene(const std::string& folder, const std::string& name) {
  const std::vector<std::string> names = SceneNames(folder);
  if (std::find(names.begin(), names.end(), name) == names.end()) {
    std::string known;
    for (const std::string& candidate : names) {
      AddToList(known, candidate);
    }
    throw Rejected("scene: there is no \"" + name + "\"; there are " + known);
  }
  return ParseFile(fs::path(folder) / (name + kExtension));
}

Json ReadSceneFile(const std::string& path) { return ParseFile(path); }

}  // namespace simulator
