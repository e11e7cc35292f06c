// Reads each kind of settings file from the fuzzer's bytes, writes what was read and reads it
// again: the settings must not change any more.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "os_memory.h"
#include "remote/camera_settings.h"
#include "streaming/streaming_settings.h"

namespace {

constexpr char kPath[] = "/var/tmp/lighttpd/fuzzed";

void Require(bool condition) {
  if (!condition) {
    std::abort();
  }
}

/// Reads the file, writes what was read, and returns what then stands in the file.
template <typename Record>
std::string Rewritten(const SettingsFile<Record>& file) {
  Record record;
  file.Read(kPath, record);
  file.Write(kPath, record);
  return fuzz::TheWorld().files[kPath];
}

template <typename Record>
void ReadWriteRead(const SettingsFile<Record>& file, const std::string& contents) {
  fuzz::TheWorld() = {};
  fuzz::TheWorld().files[kPath] = contents;
  const std::string once = Rewritten(file);
  Require(Rewritten(file) == once);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string contents(reinterpret_cast<const char*>(data), size);
  ReadWriteRead(kNtpFile, contents);
  ReadWriteRead(kIfbFile, contents);
  ReadWriteRead(kPresetZoomFile, contents);
  ReadWriteRead(kStreamingFile, contents);
  ReadWriteRead(kStreamingServerFile, contents);
  return 0;
}
