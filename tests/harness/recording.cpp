#include "harness/recording.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>

#include "fuzz/scenario.h"
#include "harness/files.h"
#include "harness/messages.h"
#include "harness/status_block.h"

namespace harness {
namespace {

namespace fs = std::filesystem;

std::mutex mutex;  // daemons have threads of their own
std::string path;  // of the file that is being written; empty before the first one

const char* Folder() { return std::getenv("CAMERA_RECORDING"); }

std::string NextPath() {
  static int count = 0;
  return std::string(Folder()) + "/" + NameOfTest() + "-" + std::to_string(++count);
}

void Keep(char kind, const std::string& value) {
  std::ofstream(path, std::ios::binary | std::ios::app) << scenario::Format({kind, value});
}

void KeepFiles() {
  for (const scenario::File& file : scenario::kFiles) {
    if (fs::is_regular_file(file.path)) {
      Keep(file.kind, ReadFile(file.path));
    }
  }
}

/// The block without the zeros at its end: missing bytes are read as zeros.
void KeepStatusBlock() {
  if (fs::exists(kMemoryFile) && fs::file_size(kMemoryFile) > kStatusBlockOffset) {
    const std::string block = ReadFile(kMemoryFile).substr(kStatusBlockOffset);
    Keep(scenario::kMemory, block.substr(0, block.find_last_not_of('\0') + 1));
  }
}

}  // namespace

std::string NameOfTest() {
  const testing::TestInfo* const test = testing::UnitTest::GetInstance()->current_test_info();
  std::string name = std::string(test->test_suite_name()) + "." + test->name();
  for (char& c : name) {
    c = c == '/' ? '.' : c;
  }
  return name;
}

void RecordRequest(const std::string& body, const std::map<std::string, std::string>& environment,
                   const std::vector<std::string>& arguments) {
  if (Folder() == nullptr) {
    return;
  }
  const std::lock_guard<std::mutex> lock(mutex);
  path = NextPath();
  Keep(scenario::kBody, body);
  const auto length = environment.find("CONTENT_LENGTH");
  if (length != environment.end() && length->second != std::to_string(body.size())) {
    Keep(scenario::kContentLength, length->second);
  }
  for (const std::string& argument : arguments) {
    Keep(scenario::kArgument, argument);
  }
  KeepFiles();
  KeepStatusBlock();
}

void RecordConversation(const std::string& sent) {
  const std::lock_guard<std::mutex> lock(mutex);
  if (path.empty()) {
    return;
  }
  const std::string payload = sent.size() > 12 ? sent.substr(12) : "";
  const bool is_plain = !payload.empty() && sent == ReplyMessage(payload);
  Keep(is_plain ? scenario::kPayload : scenario::kReply, is_plain ? payload : sent);
}

}  // namespace harness
