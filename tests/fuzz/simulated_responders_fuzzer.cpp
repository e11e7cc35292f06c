// The simulated responders, with files from the fuzzer input.
#include <string>

#include "core/dlog.h"
#include "core/simulated_responders.h"
#include "core/text.h"
#include "fuzz/fuzzing.h"

using fuzz::Require;

// The body is the message, and the first argument the zoom position.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<scenario::Line> lines = scenario::Parse(fuzz::Text(data, size));
  fuzz::World& world = fuzz::TheWorld();
  world = fuzz::WorldOf(lines);
  g_log_level_limit = 4;
  const ByteView message(reinterpret_cast<const std::uint8_t*>(world.input.data()),
                         world.input.size());
  const std::vector<std::string> arguments = fuzz::Values(lines, scenario::kArgument);
  const auto position =
      static_cast<std::int16_t>(arguments.empty() ? 0 : ParseInt32(arguments.front().c_str()));

  std::uint8_t status[status_reply::kSize];
  Dummy_GetCamStatus(status);
  std::uint8_t page[kPageReplySize];
  Dummy_PageChange(message, page);
  Require(page[0] == 0 && page[1] == status[29] && page[4] == status[32]);
  std::uint8_t clips[kClipReplySize];
  const std::size_t length = Dummy_GetClipInfo(message, clips);
  Require(length == 4U + 32U * clips[3] && length <= sizeof clips);
  Dummy_SetZoomCtrl(position);
  // Rewriting the file again must not change it.
  const std::string rewritten = world.files["/srv/www/htdocs/cam_status"];
  Dummy_SetZoomCtrl(position);
  Require(world.files["/srv/www/htdocs/cam_status"] == rewritten);
  return 0;
}
