#include "simulator/session_file.h"

#include <ctime>
#include <filesystem>
#include <fstream>

namespace simulator {

void WriteSessionFile(const std::string& id) {
  constexpr std::time_t kLifetimeSeconds = 30;
  const std::filesystem::path path = "/var/tmp/lighttpd/.session";
  std::filesystem::create_directories(path.parent_path());
  std::ofstream file;
  file.exceptions(std::ios::failbit | std::ios::badbit);
  // A renewal that is on its way keeps to the file that it has read, so a new one takes its place.
  const std::filesystem::path complete = path.string() + ".new";
  file.open(complete);
  const std::time_t now = std::time(nullptr);
  file << "ID\t" << id << "\nlifetime\t" << now + kLifetimeSeconds << "\nsessiontime\t" << now
       << "\n";
  file.close();
  std::filesystem::rename(complete, path);
}

}  // namespace simulator
