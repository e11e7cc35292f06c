// The settings files as the camera sees them, and as a scene may say what they hold.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "simulator/json.h"

namespace simulator {

inline constexpr char kSettingsFolder[] = "/var/tmp/lighttpd";

/// The settings files in that folder: lines of a key, a tab and a value, by file and key.
/// The handler writes them; the camera reads them when it is told that they have changed.
class SettingsFiles {
 public:
  struct Changes {
    std::vector<std::string> lines;  ///< each key that has changed, for the user
    bool ntp = false;
    bool streaming = false;
  };

  /// Reads all files again.
  Changes Reload();

  /// Whether the time code is to be set by NTP.
  [[nodiscard]] bool TimeCodeFollowsNtp() const { return time_code_follows_ntp_; }
  /// Whether "preset_a", "preset_b" or "preset_c" holds a zoom position.
  [[nodiscard]] bool PresetIsSet(const std::string& preset) const;
  /// The recording format in the streaming settings.
  [[nodiscard]] int RecordingFormat() const;

  /// Every file that exists, with its keys and values.
  [[nodiscard]] Json ToJson() const;
  /// What the files will hold after a JSON merge patch. A new file has standard values where the
  /// patch names none; null removes a file or a key.
  /// @throws Rejected for a file or key that does not exist, or a value that it cannot hold
  [[nodiscard]] SettingsFiles Patched(const Json& patch) const;
  /// Makes the files on the disk as they are here; others are removed.
  /// @throws std::system_error when that fails
  void Write() const;

 private:
  using Settings = std::map<std::string, std::string>;

  [[nodiscard]] const std::string* Find(const std::string& file, const std::string& key) const;

  /// To be called when the files have changed.
  void Evaluate();

  std::map<std::string, Settings> files_;
  bool time_code_follows_ntp_ = true;  ///< asked a hundred times per second
};

}  // namespace simulator
