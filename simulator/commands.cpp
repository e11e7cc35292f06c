#include "simulator/commands.h"

#include <algorithm>
#include <iterator>

namespace simulator {
namespace {

enum Partners : unsigned { kNobody = 0, kControl = 1, kStreaming = 2 };

struct CommandRow {
  std::string_view name;
  unsigned partners;
};

constexpr CommandRow kCommands[] = {
    {"AvailableStreamingBitrateSettings", kNobody},
    {"AvailableStreamingFramerateSettings", kNobody},
    {"AvailableStreamingResolutionSettings", kNobody},
    {"GetCamStatus", kControl},
    {"GetCldstrmEventList", kStreaming},
    {"GetClipInfo", kControl},
    {"GetCurrentStreamingServerID", kNobody},
    {"GetGPSInfo", kControl},
    {"GetIFBSettings", kNobody},
    {"GetNTPStatus", kNobody},
    {"GetPresetZoomPosition", kNobody},
    {"GetStreamingServerSettings", kNobody},
    {"GetStreamingSettings", kNobody},
    {"GetSystemInfo", kNobody},
    {"HeartbeatConfirmation", kNobody},
    {"JpegEncode", kControl},
    {"MonitorStart", kControl},
    {"MonitorStop", kControl},
    {"PageChange", kControl},
    {"SeesawSwitchOperation", kControl},
    {"SessionRenewal", kNobody},
    {"SetCamCtrl", kControl},
    {"SetCldstrmClearStatus", kStreaming},
    {"SetCldstrmEventListObtain", kStreaming},
    {"SetCldstrmLogin", kStreaming},
    {"SetCldstrmLogout", kStreaming},
    {"SetCldstrmStreamInfoObtain", kStreaming},
    {"SetCldstrmStreamInfoToStrmsrv", kStreaming | kControl},
    {"SetClipInfo", kControl},
    {"SetCurrentStreamingServerID", kControl},
    {"SetIFBCtrl", kControl},
    {"SetIFBSettings", kControl},
    {"SetNTPServer", kControl},
    {"SetNTPSettings", kControl},
    {"SetPresetZoomPosition", kControl},
    {"SetStreamingBitrate", kControl},
    {"SetStreamingCtrl", kControl},
    {"SetStreamingFramerate", kControl},
    {"SetStreamingResolution", kControl},
    {"SetStreamingServerSettingsRTMP", kControl},
    {"SetStreamingServerSettingsRTP", kControl},
    {"SetStreamingServerSettingsRTSP", kControl},
    {"SetStreamingServerSettingsUDP", kControl},
    {"SetStreamingServerSettingsZIXI", kControl},
    {"SetStreamingSettings", kControl},
    {"SetStudioTally", kControl},
    {"SetStudioTallyWithoutSession", kControl},
    {"SetTallyControlWithPriority", kControl},
    {"SetTallyLampCtrl", kControl},
    {"SetTallyLampPriority", kControl},
    {"SetWebButtonEvent", kControl},
    {"SetWebFtp1UploadASelect", kControl},
    {"SetWebFtp1UploadBSelect", kControl},
    {"SetWebFtp2UploadASelect", kControl},
    {"SetWebFtp2UploadBSelect", kControl},
    {"SetWebFtp3UploadASelect", kControl},
    {"SetWebFtp3UploadBSelect", kControl},
    {"SetWebFtp4UploadASelect", kControl},
    {"SetWebFtp4UploadBSelect", kControl},
    {"SetWebFtpUploadAll", kControl},
    {"SetWebFtpUploadOkMarked", kControl},
    {"SetWebKeyEvent", kControl},
    {"SetWebSliderEvent", kControl},
    {"SetWebXYFieldEvent", kControl},
    {"SetZoomCtrl", kControl},
    {"SystemRequest", kControl},
    {"WebFtpOperateResponse", kControl},
    {"ZoomSwitchOperation", kControl},
};

const CommandRow* Find(const std::string& name) {
  const auto* const row = std::find_if(std::begin(kCommands), std::end(kCommands),
                                       [&name](const CommandRow& r) { return r.name == name; });
  return row != std::end(kCommands) ? row : nullptr;
}

}  // namespace

bool IsCommand(const std::string& name) { return Find(name) != nullptr; }

bool TalksTo(const std::string& command, const std::string& daemon) {
  const CommandRow* const row = Find(command);
  const unsigned partner = daemon == kControlDaemon     ? kControl
                           : daemon == kStreamingDaemon ? kStreaming
                                                        : kNobody;
  return row != nullptr && (row->partners & partner) != 0;
}

}  // namespace simulator
