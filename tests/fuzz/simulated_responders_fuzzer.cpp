// The simulated responders' files, written by the fuzzer.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include "core/dlog.h"
#include "core/simulated_responders.h"
#include "os_memory.h"

namespace {

void Require(bool condition) {
  if (!condition) {
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FuzzedDataProvider data(bytes, size);
  fuzz::TheWorld() = fuzz::World();
  g_log_level_limit = 4;
  const std::string request = data.ConsumeRandomLengthString(8);
  const ByteView view(reinterpret_cast<const std::uint8_t*>(request.data()), request.size());
  const auto position = data.ConsumeIntegral<std::int16_t>();
  std::string& status_file = fuzz::TheWorld().files["/srv/www/htdocs/cam_status"];
  status_file = data.ConsumeRandomLengthString();
  fuzz::TheWorld().files["/srv/www/htdocs/clip_info"] = data.ConsumeRemainingBytesAsString();

  std::uint8_t status[38];
  Dummy_GetCamStatus(status);
  std::uint8_t page[5];
  Dummy_PageChange(view, page);
  Require(page[0] == 0 && page[1] == status[29] && page[4] == status[32]);
  std::uint8_t clips[484];
  const std::size_t length = Dummy_GetClipInfo(view, clips);
  Require(length == 4U + 32U * clips[3] && length <= sizeof clips);
  Dummy_SetZoomCtrl(position);
  // A file that has been rewritten once no longer changes.
  const std::string rewritten = status_file;
  Dummy_SetZoomCtrl(position);
  Require(status_file == rewritten);
  return 0;
}
