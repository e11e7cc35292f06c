// Reads each kind of settings file from the fuzzer input, writes it and reads it again: from then
// on settings must not change, unless a line is too long.
#include <sstream>
#include <string>

#include "fuzz/fuzzing.h"
#include "remote/camera_settings.h"
#include "streaming/streaming_settings.h"

namespace {

/// Reads the file, writes it again and returns its new contents.
template <typename Record>
std::string Rewritten(const SettingsFile<Record>& file, const char* path) {
  Record record;
  file.Read(path, record);
  file.Write(path, record);
  return fuzz::TheWorld().files[path];
}

/// The rest of a line that is too long is read as another line, so settings may change.
bool EveryLineFits(const std::string& file) {
  constexpr std::size_t kMaxLine = 255;  // with its line feed
  std::istringstream lines(file);
  std::string line;
  bool all_fit = true;
  while (std::getline(lines, line)) {
    all_fit = all_fit && line.size() < kMaxLine;
  }
  return all_fit;
}

template <typename Record>
void ReadWriteRead(const SettingsFile<Record>& file, const char* path) {
  const std::string once = Rewritten(file, path);
  const std::string twice = Rewritten(file, path);
  fuzz::Require(twice == once || !EveryLineFits(once));
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::TheWorld() = fuzz::WorldOf(scenario::Parse(fuzz::Text(data, size)));
  ReadWriteRead(kNtpFile, NTP_SETTING_PATH);
  ReadWriteRead(kIfbFile, IFB_SETTING_PATH);
  ReadWriteRead(kPresetZoomFile, PRESET_ZOOM_PATH);
  ReadWriteRead(kStreamingFile, STREAMING_SETTING_PATH);
  ReadWriteRead(kStreamingServerFile, "/var/tmp/lighttpd/streaming_server0");
  return 0;
}
