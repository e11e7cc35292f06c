#include "core/command_table.h"

#include <cstring>

#include "core/cmd/streaming.h"
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
    {"PageChange", Create<PageChange>, {5, 15, 1, kSeconds, kLevel}, 0},
    {"GetSystemInfo", Create<GetSystemInfo>, {5, 0, kNoPayload, kSeconds, 4}, 0},
    {"SessionRenewal", Create<SessionRenewal>, {kNoClass, kNoCode, kNoPayload, kSeconds, kLevel}, 0},
    {"GetStreamingSettings", Create<GetStreamingSettings>,
     {kNoClass, kNoCode, kNoPayload, kSeconds, 4}, 0},
    {"SetStreamingSettings", Create<SetStreamingSettings>,
     {kNoClass, kNoCode, kNoPayload, kSeconds, kLevel}, 0},
    {"SetStreamingResolution", Create<SetStreamingResolution>,
     {kNoClass, kNoCode, kNoPayload, kSeconds, kLevel}, 0},
    {"SetStreamingFramerate", Create<SetStreamingFramerate>,
     {kNoClass, kNoCode, kNoPayload, kSeconds, kLevel}, 0},
    {"SetStreamingBitrate", Create<SetStreamingBitrate>,
     {kNoClass, kNoCode, kNoPayload, kSeconds, kLevel}, 0},
    {"GetStreamingServerSettings", Create<GetStreamingServerSettings>,
     {kNoClass, kNoCode, kNoPayload, kSeconds, kLevel}, 0},
    {"SetStreamingServerSettingsUDP", Create<SetStreamingServerSettingsUDP>,
     {kNoClass, kNoCode, kNoPayload, kSeconds, kLevel}, 0},
    {"SetStreamingServerSettingsRTSP", Create<SetStreamingServerSettingsRTSP>,
     {kNoClass, kNoCode, kNoPayload, kSeconds, kLevel}, 0},
    {"SetStreamingServerSettingsZIXI", Create<SetStreamingServerSettingsZIXI>,
     {kNoClass, kNoCode, kNoPayload, kSeconds, kLevel}, 0},
    {"SetStreamingServerSettingsRTMP", Create<SetStreamingServerSettingsRTMP>,
     {kNoClass, kNoCode, kNoPayload, kSeconds, kLevel}, 0},
    {"SetStreamingServerSettingsRTP", Create<SetStreamingServerSettingsRTP>,
     {kNoClass, kNoCode, kNoPayload, kSeconds, kLevel}, 0},
    {"GetCurrentStreamingServerID", Create<GetCurrentStreamingServerID>,
     {kNoClass, kNoCode, kNoPayload, kSeconds, kLevel}, 0},
    {"SetCurrentStreamingServerID", Create<SetCurrentStreamingServerID>,
     {kNoClass, kNoCode, kNoPayload, kSeconds, kLevel}, 0},
    {"AvailableStreamingResolutionSettings", Create<AvailableStreamingResolutionSettings>,
     {kNoClass, kNoCode, kNoPayload, kSeconds, 4}, 0},
    {"AvailableStreamingFramerateSettings", Create<AvailableStreamingFramerateSettings>,
     {kNoClass, kNoCode, kNoPayload, kSeconds, 4}, 0},
    {"AvailableStreamingBitrateSettings", Create<AvailableStreamingBitrateSettings>,
     {kNoClass, kNoCode, kNoPayload, kSeconds, 4}, 0},
    {"HeartbeatConfirmation", Create<HeartbeatConfirmation>,
     {kNoClass, kNoCode, kNoPayload, kSeconds, 7}, kNeedsNoSession | kSilentRequest},
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
