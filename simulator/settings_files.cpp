#include "simulator/settings_files.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <utility>

namespace simulator {
namespace {

namespace fs = std::filesystem;

bool IsSettingsFile(const std::string& name) {
  constexpr std::string_view kNames[] = {"ntp", "ifb", "web_zoom_preset", "streaming"};
  return std::find(std::begin(kNames), std::end(kNames), name) != std::end(kNames) ||
         name.rfind("streaming_server", 0) == 0;
}

/// Lines of a key, a tab and a value.
std::map<std::string, std::string> ReadSettings(const fs::path& path) {
  std::map<std::string, std::string> settings;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    const std::size_t tab = std::min(line.find('\t'), line.size());
    settings[line.substr(0, tab)] = tab < line.size() ? line.substr(tab + 1) : "";
  }
  return settings;
}

std::string Differences(const std::map<std::string, std::string>& before,
                        const std::map<std::string, std::string>& after) {
  std::string text;
  for (const auto& [key, value] : after) {
    const auto old = before.find(key);
    if (old != before.end() && old->second == value) {
      continue;
    }
    text += text.empty() ? "" : ", ";
    text += key;
    text += old != before.end() ? " \"" + old->second + "\" -> " : " ";
    text += '"' + value + '"';
  }
  return text;
}

}  // namespace

std::vector<std::string> SettingsFiles::Reload() {
  std::vector<std::string> changes;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator("/var/tmp/lighttpd", error)) {
    const std::string name = entry.path().filename();
    if (!IsSettingsFile(name)) {
      continue;
    }
    Settings settings = ReadSettings(entry.path());
    if (const std::string text = Differences(files_[name], settings); !text.empty()) {
      changes.push_back(std::string("settings ").append(name).append(": ").append(text));
    }
    files_[name] = std::move(settings);
  }
  return changes;
}

}  // namespace simulator
