#include "core/command_table.h"

#include <cstring>

#include "core/cmd/camera_settings.h"
#include "core/cmd/cloud.h"
#include "core/cmd/remote.h"
#include "core/cmd/status.h"
#include "core/cmd/streaming.h"
#include "core/cmd/system.h"

namespace {

/// A command that sends a message with this class, code and payload length. The log level applies
/// to its request and reply traces; the time-out is in seconds.
constexpr CommandPreset Message(std::uint8_t message_class, std::uint8_t code,
                                std::uint16_t payload_length, std::uint8_t level = kDefaultLogLevel,
                                std::uint8_t timeout = kDefaultTimeoutSeconds) {
  return {message_class, code, payload_length, timeout, level};
}

/// A command that sends no message, or one whose header its class sets.
constexpr CommandPreset NoMessage(std::uint8_t level = kDefaultLogLevel) {
  return Message(0, 0, 0, level);
}

template <typename Class>
constexpr CommandRow Row(const char* name, CommandPreset preset, std::uint8_t traits = 0) {
  const auto create = []() -> std::unique_ptr<Command> { return std::make_unique<Class>(); };
  return {name, create, preset, traits};
}

// In matching order.
constexpr std::initializer_list<CommandRow> kCommandTable = {
    Row<MonitorStart>("MonitorStart", Message(5, 5, 0)),
    Row<MonitorStop>("MonitorStop", Message(5, 6, 0)),
    Row<SetZoomCtrl>("SetZoomCtrl", Message(5, 14, 2)),
    Row<GetCamStatus>("GetCamStatus", Message(5, 0, 0, 7), kSilentRequest | kSilentReply),
    Row<SetCamCtrl>("SetCamCtrl", Message(5, 1, 1)),
    Row<GetClipInfo>("GetClipInfo", Message(6, 11, 0, kDefaultLogLevel, 20)),
    Row<SetClipInfo>("SetClipInfo", Message(6, 16, 6)),
    Row<PageChange>("PageChange", Message(5, 15, 1)),
    Row<SetWebKeyEvent>("SetWebKeyEvent", Message(5, 17, 2)),
    Row<SetWebSliderEvent>("SetWebSliderEvent", Message(5, 18, 2)),
    Row<SetWebXYFieldEvent>("SetWebXYFieldEvent", Message(5, 19, 2)),
    Row<GetGpsInfo>("GetGPSInfo", Message(6, 29, 0)),
    Row<SetWebFtpUploadAll>("SetWebFtpUploadAll", Message(6, 108, 2)),
    Row<SetWebFtpUploadOkMarked>("SetWebFtpUploadOkMarked", Message(6, 109, 2)),
    Row<SetWebFtp1UploadASelect>("SetWebFtp1UploadASelect", Message(6, 110, 500)),
    Row<SetWebFtp2UploadASelect>("SetWebFtp2UploadASelect", Message(6, 111, 500)),
    Row<SetWebFtp3UploadASelect>("SetWebFtp3UploadASelect", Message(6, 112, 500)),
    Row<SetWebFtp4UploadASelect>("SetWebFtp4UploadASelect", Message(6, 113, 500)),
    Row<SetWebFtp1UploadBSelect>("SetWebFtp1UploadBSelect", Message(6, 114, 500)),
    Row<SetWebFtp2UploadBSelect>("SetWebFtp2UploadBSelect", Message(6, 115, 500)),
    Row<SetWebFtp3UploadBSelect>("SetWebFtp3UploadBSelect", Message(6, 116, 500)),
    Row<SetWebFtp4UploadBSelect>("SetWebFtp4UploadBSelect", Message(6, 117, 500)),
    Row<WebFtpOperateResponse>("WebFtpOperateResponse", Message(6, 107, 2)),
    Row<SetWebButtonEvent>("SetWebButtonEvent", Message(5, 17, 2)),
    // The interface assigns it the header of GetCamStatus, but only the level is used: it sends no
    // message.
    Row<GetSystemInfo>("GetSystemInfo", Message(5, 0, 0, 4)),
    Row<SetStreamingCtrl>("SetStreamingCtrl", Message(5, 17, 2)),
    Row<SessionRenewal>("SessionRenewal", NoMessage()),
    Row<GetPresetZoomPosition>("GetPresetZoomPosition", NoMessage()),
    Row<SetPresetZoomPosition>("SetPresetZoomPosition", NoMessage()),
    Row<GetStreamingSettings>("GetStreamingSettings", NoMessage(4)),
    Row<SetStreamingSettings>("SetStreamingSettings", NoMessage()),
    Row<SetStreamingResolution>("SetStreamingResolution", NoMessage()),
    Row<SetStreamingFramerate>("SetStreamingFramerate", NoMessage()),
    Row<SetStreamingBitrate>("SetStreamingBitrate", NoMessage()),
    Row<GetStreamingServerSettings>("GetStreamingServerSettings", NoMessage()),
    Row<SetStreamingServerSettingsUDP>("SetStreamingServerSettingsUDP", NoMessage()),
    Row<SetStreamingServerSettingsRTSP>("SetStreamingServerSettingsRTSP", NoMessage()),
    Row<SetStreamingServerSettingsZIXI>("SetStreamingServerSettingsZIXI", NoMessage()),
    Row<SetStreamingServerSettingsRTMP>("SetStreamingServerSettingsRTMP", NoMessage()),
    Row<SetStreamingServerSettingsRTP>("SetStreamingServerSettingsRTP", NoMessage()),
    Row<GetCurrentStreamingServerID>("GetCurrentStreamingServerID", NoMessage()),
    Row<SetCurrentStreamingServerID>("SetCurrentStreamingServerID", NoMessage()),
    Row<AvailableStreamingResolutionSettings>("AvailableStreamingResolutionSettings", NoMessage(4)),
    Row<AvailableStreamingFramerateSettings>("AvailableStreamingFramerateSettings", NoMessage(4)),
    Row<AvailableStreamingBitrateSettings>("AvailableStreamingBitrateSettings", NoMessage(4)),
    Row<SetTallyLampPriority>("SetTallyLampPriority", Message(5, 17, 2)),
    Row<SetTallyLampCtrl>("SetTallyLampCtrl", Message(5, 17, 2)),
    Row<JpegEncode>("JpegEncode", Message(5, 5, 0, 7)),
    Row<SetCldstrmLogin>("SetCldstrmLogin", Message(11, 99, 320)),
    Row<SetCldstrmLogout>("SetCldstrmLogout", Message(11, 100, 0)),
    Row<SetCldstrmEventListObtain>("SetCldstrmEventListObtain", Message(11, 101, 0)),
    Row<GetCldstrmEventList>("GetCldstrmEventList", Message(11, 102, 0)),
    Row<SetCldstrmStreamInfoObtain>("SetCldstrmStreamInfoObtain", Message(11, 104, 4)),
    Row<SetCldstrmStreamInfoToStrmsrv>("SetCldstrmStreamInfoToStrmsrv", Message(11, 105, 4)),
    Row<SetCldstrmClearStatus>("SetCldstrmClearStatus", Message(11, 106, 4)),
    Row<SetIFBCtrl>("SetIFBCtrl", Message(5, 17, 2)),
    Row<GetIFBSettings>("GetIFBSettings", NoMessage(4)),
    Row<SetIFBSettings>("SetIFBSettings", NoMessage()),
    Row<ZoomSwitchOperation>("ZoomSwitchOperation", Message(5, 118, 0)),
    Row<SeesawSwitchOperation>("SeesawSwitchOperation", Message(5, 119, 0)),
    Row<HeartbeatConfirmation>("HeartbeatConfirmation", NoMessage(7),
                               kNeedsNoSession | kSilentRequest),
    Row<SetTallyControlWithPriority>("SetTallyControlWithPriority", Message(5, 17, 2),
                                     kNeedsNoSession),
    Row<SystemRequest>("SystemRequest", Message(5, 17, 2)),
    Row<SetStudioTally>("SetStudioTally", Message(5, 17, 2)),
    // By this name, a vision mixer can set the studio tally without a session.
    Row<SetStudioTally>("SetStudioTallyWithoutSession", Message(5, 17, 2),
                        kNeedsNoSession | kSilentRequest),
    Row<GetNTPStatus>("GetNTPStatus", NoMessage(4)),
    Row<SetNTPServer>("SetNTPServer", NoMessage()),
    Row<SetNTPSettings>("SetNTPSettings", NoMessage()),
};

}  // namespace

std::initializer_list<CommandRow> AllCommands() { return kCommandTable; }

const CommandRow* FindCommand(const char* name) {
  for (const CommandRow& row : AllCommands()) {
    if (std::strcmp(row.name, name) == 0) {
      return &row;
    }
  }
  return nullptr;
}
