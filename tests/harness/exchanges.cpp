#include "harness/exchanges.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>

#include "harness/recording.h"

namespace harness {

int RepliesMayBreak::alive_ = 0;

void RecordExchange(const std::string& body, const std::string& output) {
  static std::mutex mutex;  // some tests start handlers in several threads
  static std::string path;  // of the current test's file
  const char* const folder = std::getenv("CAMERA_EXCHANGES");
  if (folder == nullptr) {
    return;
  }
  const std::lock_guard<std::mutex> lock(mutex);
  const std::string path_of_test = std::string(folder) + "/" + NameOfTest();
  const bool is_first = path != path_of_test;
  path = path_of_test;
  std::filesystem::create_directories(folder);
  std::ofstream(path, std::ios::binary | (is_first ? std::ios::trunc : std::ios::app))
      << "exchange " << body.size() << ' ' << output.size() << ' '
      << (RepliesMayBreak::Alive() ? "any" : "json") << '\n'
      << body << '\n'
      << output << '\n';
}

}  // namespace harness
