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
  file.open(path);
  const std::time_t now = std::time(nullptr);
  file << "ID\t" << id << "\nlifetime\t" << now + kLifetimeSeconds << "\nsessiontime\t" << now
       << "\n";
  file.close();
}

}  // namespace simulator
