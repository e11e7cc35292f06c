#include "simulator/commands.h"

#include <algorithm>
#include <iterator>

namespace simulator {
namespace {

enum Partners : unsigned { kNoPartner = 0, kControlPartner = 1, kStreamingPartner = 2 };

struct CommandRow {
  std::string_view name;
  unsigned partners;
};

constexpr CommandRow kCommands[] = {
    {"AvailableStreamingBitrateSettings", kNoPartner},
    {"AvailableStreamingFramerateSettings", kNoPartner},
    {"AvailableStreamingResolutionSettings", kNoPartner},
    {"GetCamStatus", kControlPartner},
    {"GetCldstrmEventList", kStreamingPartner},
    {"GetClipInfo", kControlPartner},
    {"GetCurrentStreamingServerID", kNoPartner},
    {"GetGPSInfo", kControlPartner},
    {"GetIFBSettings", kNoPartner},
    {"GetNTPStatus", kNoPartner},
    {"GetPresetZoomPosition", kNoPartner},
    {"GetStreamingServerSettings", kNoPartner},
    {"GetStreamingSettings", kNoPartner},
    {"GetSystemInfo", kNoPartner},
    {"HeartbeatConfirmation", kNoPartner},
    {"JpegEncode", kControlPartner},
    {"MonitorStart", kControlPartner},
    {"MonitorStop", kControlPartner},
    {"PageChange", kControlPartner},
    {"SeesawSwitchOperation", kControlPartner},
    {"SessionRenewal", kNoPartner},
    {"SetCamCtrl", kControlPartner},
    {"SetCldstrmClearStatus", kStreamingPartner},
    {"SetCldstrmEventListObtain", kStreamingPartner},
    {"SetCldstrmLogin", kStreamingPartner},
    {"SetCldstrmLogout", kStreamingPartner},
    {"SetCldstrmStreamInfoObtain", kStreamingPartner},
    {"SetCldstrmStreamInfoToStrmsrv", kStreamingPartner | kControlPartner},
    {"SetClipInfo", kControlPartner},
    {"SetCurrentStreamingServerID", kControlPartner},
    {"SetIFBCtrl", kControlPartner},
    {"SetIFBSettings", kControlPartner},
    {"SetNTPServer", kControlPartner},
    {"SetNTPSettings", kControlPartner},
    {"SetPresetZoomPosition", kControlPartner},
    {"SetStreamingBitrate", kControlPartner},
    {"SetStreamingCtrl", kControlPartner},
    {"SetStreamingFramerate", kControlPartner},
    {"SetStreamingResolution", kControlPartner},
    {"SetStreamingServerSettingsRTMP", kControlPartner},
    {"SetStreamingServerSettingsRTP", kControlPartner},
    {"SetStreamingServerSettingsRTSP", kControlPartner},
    {"SetStreamingServerSettingsUDP", kControlPartner},
    {"SetStreamingServerSettingsZIXI", kControlPartner},
    {"SetStreamingSettings", kControlPartner},
    {"SetStudioTally", kControlPartner},
    {"SetStudioTallyWithoutSession", kControlPartner},
    {"SetTallyControlWithPriority", kControlPartner},
    {"SetTallyLampCtrl", kControlPartner},
    {"SetTallyLampPriority", kControlPartner},
    {"SetWebButtonEvent", kControlPartner},
    {"SetWebFtp1UploadASelect", kControlPartner},
    {"SetWebFtp1UploadBSelect", kControlPartner},
    {"SetWebFtp2UploadASelect", kControlPartner},
    {"SetWebFtp2UploadBSelect", kControlPartner},
    {"SetWebFtp3UploadASelect", kControlPartner},
    {"SetWebFtp3UploadBSelect", kControlPartner},
    {"SetWebFtp4UploadASelect", kControlPartner},
    {"SetWebFtp4UploadBSelect", kControlPartner},
    {"SetWebFtpUploadAll", kControlPartner},
    {"SetWebFtpUploadOkMarked", kControlPartner},
    {"SetWebKeyEvent", kControlPartner},
    {"SetWebSliderEvent", kControlPartner},
    {"SetWebXYFieldEvent", kControlPartner},
    {"SetZoomCtrl", kControlPartner},
    {"SystemRequest", kControlPartner},
    {"WebFtpOperateResponse", kControlPartner},
    {"ZoomSwitchOperation", kControlPartner},
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
  const unsigned partner = daemon == kControlDaemon     ? kControlPartner
                           : daemon == kStreamingDaemon ? kStreamingPartner
                                                        : kNoPartner;
  return row != nullptr && (row->partners & partner) != 0;
}

}  // namespace simulator
