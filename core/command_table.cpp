#include "core/command_table.h"

#include <cstring>

#include "core/cmd/remote.h"
#include "core/cmd/system.h"

namespace {

template <typename Class>
std::unique_ptr<Command> Create() {
  return std::make_unique<Class>();
}

// Values of commands that set nothing of their own.
constexpr std::uint8_t kNoClass = 0;
constexpr std::uint8_t kNoCode = 0;
constexpr std::uint16_t kNoPayload = 0;
constexpr std::uint8_t kSeconds = 5;
constexpr std::uint8_t kLevel = 1;

// In matching order. Commands without a message class send no message, or messages that they
// address themselves.
// clang-format off
constexpr CommandRow kCommandTable[] = {
    // name, class, {message class, code, payload length, time-out in seconds, log level}, traits
    {"MonitorStart", Create<MonitorStart>, {5, 5, kNoPayload, kSeconds, kLevel}, 0},
    {"MonitorStop", Create<MonitorStop>, {5, 6, kNoPayload, kSeconds, kLevel}, 0},
    {"SetZoomCtrl", Create<SetZoomCtrl>, {5, 14, 2, kSeconds, kLevel}, 0},
    {"SetCamCtrl", Create<SetCamCtrl>, {5, 1, 1, kSeconds, kLevel}, 0},
    {"PageChange", Create<PageChange>, {5, 15, 1, kSeconds, kLevel}, 0},
    {"SetWebKeyEvent", Create<SetWebKeyEvent>, {5, 17, 2, kSeconds, kLevel}, 0},
    {"SetWebSliderEvent", Create<SetWebSliderEvent>, {5, 18, 2, kSeconds, kLevel}, 0},
    {"SetWebXYFieldEvent", Create<SetWebXYFieldEvent>, {5, 19, 2, kSeconds, kLevel}, 0},
    {"SetWebButtonEvent", Create<SetWebButtonEvent>, {5, 17, 2, kSeconds, kLevel}, 0},
    {"GetSystemInfo", Create<GetSystemInfo>, {5, 0, kNoPayload, kSeconds, 4}, 0},
    {"SetStreamingCtrl", Create<SetStreamingCtrl>, {5, 17, 2, kSeconds, kLevel}, 0},
    {"SessionRenewal", Create<SessionRenewal>, {kNoClass, kNoCode, kNoPayload, kSeconds, kLevel}, 0},
    {"SetTallyLampPriority", Create<SetTallyLampPriority>, {5, 17, 2, kSeconds, kLevel}, 0},
    {"SetTallyLampCtrl", Create<SetTallyLampCtrl>, {5, 17, 2, kSeconds, kLevel}, 0},
    {"JpegEncode", Create<JpegEncode>, {5, 5, kNoPayload, kSeconds, 7}, 0},
    {"SetIFBCtrl", Create<SetIFBCtrl>, {5, 17, 2, kSeconds, kLevel}, 0},
    {"ZoomSwitchOperation", Create<ZoomSwitchOperation>, {5, 118, kNoPayload, kSeconds, kLevel}, 0},
    {"SeesawSwitchOperation", Create<SeesawSwitchOperation>,
     {5, 119, kNoPayload, kSeconds, kLevel}, 0},
    {"HeartbeatConfirmation", Create<HeartbeatConfirmation>,
     {kNoClass, kNoCode, kNoPayload, kSeconds, 7}, kNeedsNoSession | kSilentRequest},
    {"SetTallyControlWithPriority", Create<SetTallyControlWithPriority>,
     {5, 17, 2, kSeconds, kLevel}, kNeedsNoSession},
    {"SystemRequest", Create<SystemRequest>, {5, 17, 2, kSeconds, kLevel}, 0},
    {"SetStudioTally", Create<SetStudioTally>, {5, 17, 2, kSeconds, kLevel}, 0},
    // Under this name the studio tally needs no session, so that a switcher can drive it.
    {"SetStudioTallyWithoutSession", Create<SetStudioTally>, {5, 17, 2, kSeconds, kLevel},
     kNeedsNoSession | kSilentRequest},
};
// clang-format on

}  // namespace

const CommandRow* FindCommand(const char* name) {
  for (const CommandRow& row : kCommandTable) {
    if (std::strcmp(row.name, name) == 0) {
      return &row;
    }
  }
  return nullptr;
}
