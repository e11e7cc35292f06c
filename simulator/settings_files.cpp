#include "simulator/settings_files.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <utility>

#include "simulator/list_text.h"

namespace simulator {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kServerFile = "streaming_server";

/// A key and its value in a new file.
struct KeyRow {
  std::string_view key;
  std::string_view standard;
};

struct FileKeys {
  std::string_view file;
  std::vector<KeyRow> keys;  ///< in the file's order
};

/// Every settings file; the streaming servers' names have a number at the end.
const std::vector<FileKeys>& AllKeys() {
  static const std::vector<FileKeys> all = {
      {"ntp", {{"address", "192.168.0.100"}, {"tc_sync", "1"}}},
      {"ifb",
       {{"ifb_function", "0"},
        {"ifb_address", "192.168.0.100"},
        {"ifb_port", "5000"},
        {"ifb_mountpoint", "DB90TX"},
        {"ifb_type", "0"},
        {"ifb_codec", "0"},
        {"ifb_channel", "1"},
        {"ifb_sample_rate", "48000"},
        {"ifb_username", ""},
        {"ifb_password", ""}}},
      {"web_zoom_preset", {{"preset_a", "65535"}, {"preset_b", "65535"}, {"preset_c", "65535"}}},
      {"streaming",
       {{"resolution", "0"},
        {"quality", "0"},
        {"server", "0"},
        {"rfresolution", "0"},
        {"cldstrmusername", "0"},
        {"cldstrmpassword", "0"},
        {"serverurl", "0"}}},
      {kServerFile,
       {{"str_alias", "0"},
        {"type", "0"},
        {"udp_dst_address", "0.0.0.0"},
        {"udp_dst_port", "0"},
        {"udp_pcr_jitter", "0"},
        {"tcp_dst_address", "0.0.0.0"},
        {"tcp_dst_port", "0"},
        {"zixi_dst_address", "0"},
        {"zixi_dst_port", "0"},
        {"zixi_stream_id", "0"},
        {"zixi_username", "0"},
        {"zixi_password", "0"},
        {"zixi_latency", "0"},
        {"zixi_adaptive_bitrate", "0"},
        {"rtsp_dst_port", "0"},
        {"rtsp_stream_id", "0"},
        {"rtsp_username", "0"},
        {"rtsp_password", "0"},
        {"rtmp_destination_url", "0"},
        {"rtmp_stream_key", "0"},
        {"rtp_dst_address", "0"},
        {"rtp_dst_port", "0"},
        {"rtp_smpte2022_fec", "0"},
        {"rtp_fec_matrix_l", "0"},
        {"rtp_fec_matrix_d", "0"}}},
  };
  return all;
}

/// Null for a file that is none of the settings files.
const FileKeys* KeysOf(const std::string& file) {
  for (const FileKeys& keys : AllKeys()) {
    if (file == keys.file && file != kServerFile) {
      return &keys;
    }
  }
  const std::string number = file.rfind(kServerFile, 0) == 0 ? file.substr(kServerFile.size()) : "";
  const std::size_t digits = number.rfind('-', 0) == 0 ? 1 : 0;
  const bool is_number =
      number.size() > digits && number.find_first_not_of("0123456789", digits) == std::string::npos;
  return is_number ? &AllKeys().back() : nullptr;
}

/// The names of the settings files, for a reader.
std::string AllNames() {
  std::string names;
  for (const FileKeys& keys : AllKeys()) {
    AddToList(names, std::string(keys.file) + (keys.file == kServerFile ? "0 and so on" : ""));
  }
  return names;
}

std::map<std::string, std::string> ReadSettings(const fs::path& path) {
  std::map<std::string, std::string> settings;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    const std::size_t tab = std::min(line.find('\t'), line.size());
    settings[line.substr(0, tab)] = tab < line.size() ? line.substr(tab + 1) : "";
  }
  return settings;
}

std::map<std::string, std::string> StandardSettings(const FileKeys& file) {
  std::map<std::string, std::string> settings;
  for (const KeyRow& row : file.keys) {
    settings.emplace(row.key, row.standard);
  }
  return settings;
}

bool IsSecret(const std::string& key) {
  return key.find("password") != std::string::npos || key.find("stream_key") != std::string::npos;
}

std::string Shown(const std::string& key, const std::string& value) {
  return IsSecret(key) && !value.empty() ? "***" : value;
}

/// Adds a line for each key that has changed. For a new file, `before` has the default values.
void AddDifferences(const std::string& file, const std::map<std::string, std::string>& before,
                    const std::map<std::string, std::string>& after,
                    std::vector<std::string>& lines) {
  for (const auto& [key, value] : after) {
    const auto old = before.find(key);
    if (old == before.end() || old->second != value) {
      std::string line = "settings.";
      line.append(file).append(".").append(key).append(" ");
      if (old != before.end()) {
        line.append(Shown(key, old->second)).append(" -> ");
      }
      lines.push_back(line.append(Shown(key, value)));
    }
  }
}

[[noreturn]] void RejectSetting(const std::string& path, const std::string& why) {
  Reject("settings." + path, why);
}

std::string ValueFrom(const std::string& path, const Json& value) {
  // Whatever the handler may have stored, so that a state that was saved can be restored.
  constexpr std::size_t kMaxLength = 1000;
  std::string text = value.is_string() ? value.get<std::string>() : "";
  if (!value.is_string() || text.size() > kMaxLength || text.find('\n') != std::string::npos) {
    RejectSetting(path, "must be a text of at most 1000 bytes without line feeds");
  }
  return text;
}

/// Applies a merge patch to one file.
void Patch(const std::string& file, const FileKeys& known, const Json& members,
           std::map<std::string, std::string>& settings) {
  for (const auto& [key, value] : members.items()) {
    const std::string path = std::string(file).append(".").append(key);
    if (std::none_of(known.keys.begin(), known.keys.end(),
                     [name = key](const KeyRow& row) { return row.key == name; })) {
      RejectSetting(path, "no such key");
    }
    if (value.is_null()) {
      settings.erase(key);
    } else {
      settings[key] = ValueFrom(path, value);
    }
  }
}

}  // namespace

SettingsFiles::Changes SettingsFiles::Reload() {
  Changes changes;
  std::map<std::string, Settings> files;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(kSettingsFolder, error)) {
    const std::string name = entry.path().filename();
    if (KeysOf(name) != nullptr) {
      files[name] = ReadSettings(entry.path());
    }
  }
  for (const auto& [name, settings] : files) {
    const std::size_t before = changes.lines.size();
    const auto old = files_.find(name);
    AddDifferences(name, old != files_.end() ? old->second : StandardSettings(*KeysOf(name)),
                   settings, changes.lines);
    const bool changed = changes.lines.size() > before;
    changes.ntp = changes.ntp || (changed && name == "ntp");
    changes.streaming = changes.streaming || (changed && name.rfind("streaming", 0) == 0);
  }
  files_ = std::move(files);
  Evaluate();
  return changes;
}

const std::string* SettingsFiles::Find(const std::string& file, const std::string& key) const {
  const auto settings = files_.find(file);
  if (settings == files_.end()) {
    return nullptr;
  }
  const auto value = settings->second.find(key);
  return value != settings->second.end() ? &value->second : nullptr;
}

void SettingsFiles::Evaluate() {
  const std::string* const value = Find("ntp", "tc_sync");
  time_code_follows_ntp_ = value == nullptr ? files_.count("ntp") == 0 : *value == "1";
}

bool SettingsFiles::PresetIsSet(const std::string& preset) const {
  constexpr std::string_view kNotSet = "65535";
  const std::string* const value = Find("web_zoom_preset", preset);
  return value != nullptr && !value->empty() && *value != kNotSet;
}

int SettingsFiles::RecordingFormat() const {
  const std::string* const value = Find("streaming", "rfresolution");
  return value != nullptr ? static_cast<int>(std::strtol(value->c_str(), nullptr, 10)) : 0;
}

Json SettingsFiles::ToJson() const {
  Json all = Json::object();
  for (const auto& [file, settings] : files_) {
    Json members = Json::object();
    for (const KeyRow& row : KeysOf(file)->keys) {
      const auto value = settings.find(std::string(row.key));
      if (value != settings.end()) {
        members[value->first] = value->second;
      }
    }
    all[file] = std::move(members);
  }
  return all;
}

SettingsFiles SettingsFiles::Patched(const Json& patch) const {
  SettingsFiles patched = *this;
  if (!patch.is_object()) {
    throw Rejected("settings: must be an object");
  }
  for (const auto& [file, members] : patch.items()) {
    const FileKeys* const known = KeysOf(file);
    if (known == nullptr) {
      RejectSetting(file, "no such file; there are " + AllNames());
    }
    if (members.is_null()) {
      patched.files_.erase(file);
      continue;
    }
    if (!members.is_object()) {
      RejectSetting(file, "must be an object, or null to remove the file");
    }
    Settings& settings = patched.files_.try_emplace(file, StandardSettings(*known)).first->second;
    Patch(file, *known, members, settings);
  }
  patched.Evaluate();
  return patched;
}

void SettingsFiles::Write() const {
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(kSettingsFolder, error)) {
    const std::string name = entry.path().filename();
    if (KeysOf(name) != nullptr && files_.count(name) == 0) {
      fs::remove(entry.path());
    }
  }
  for (const auto& [name, settings] : files_) {
    const fs::path path = fs::path(kSettingsFolder) / name;
    if (ReadSettings(path) == settings && fs::exists(path)) {
      continue;
    }
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    for (const KeyRow& row : KeysOf(name)->keys) {
      const auto value = settings.find(std::string(row.key));
      if (value != settings.end()) {
        file << row.key << '\t' << value->second << '\n';
      }
    }
    if (!file.flush()) {
      throw std::system_error(errno, std::generic_category(), path);
    }
  }
}

}  // namespace simulator
