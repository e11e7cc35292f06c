// The settings files as the camera sees them: read anew when the handler says that they have
// changed.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace simulator {

/// The lines of the settings files under /var/tmp/lighttpd, by file and key.
class SettingsFiles {
 public:
  /// Reads all files anew.
  /// @return a line for each file that has changed since the last time: its name, and the keys that
  ///         have changed with their old and new values
  std::vector<std::string> Reload();

 private:
  using Settings = std::map<std::string, std::string>;

  std::map<std::string, Settings> files_;
};

}  // namespace simulator
