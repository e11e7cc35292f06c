#include <cstring>

#include "core/bytes.h"
#include "core/cmd/camera_settings.h"
#include "core/dlog.h"
#include "core/name_table.h"
#include "core/text.h"
#include "remote/camera_settings.h"
#include "status/camera_status_block.h"

namespace {

/// A preset zoom button and where its position is stored.
struct ZoomButton {
  const char* id;
  char (_PRESET_ZOOM_POS::*position)[sizeof(_PRESET_ZOOM_POS::preset_a)];
};

constexpr ZoomButton kZoomButtons[] = {
    {"A", &_PRESET_ZOOM_POS::preset_a},
    {"B", &_PRESET_ZOOM_POS::preset_b},
    {"C", &_PRESET_ZOOM_POS::preset_c},
};

/// Clients see a position that is not set as -1. So is an empty one, which occurs only in a damaged
/// file and would make the reply invalid JSON.
const char* PositionForClients(const char* stored) {
  const bool is_set = stored[0] != '\0' && std::strcmp(stored, "65535") != 0;
  return is_set ? stored : "-1";
}

// Misspelled; clients compare these names exactly.
constexpr NameTable<3> kNtpStates = {{"Master", "Not Syncronized", "Syncronized"}, ""};

/// Changes the NTP settings file and traces it before and after.
template <typename Change>
void UpdateNtpFile(const char* command, Change change) {
  kNtpFile.UpdateTraced(NTP_SETTING_PATH, change,
                        [command](const char* when, const _NTP_SETTING& setting) {
                          DLOG(2, "##### %s Transmit() %s addr:%s tc_sync:%s", command, when,
                               setting.address, setting.tc_sync);
                        });
}

}  // namespace

void GetPresetZoomPosition::Output() {
  _PRESET_ZOOM_POS setting;
  ReadPresetZoom(&setting);
  JsonWriter& data = AddData();
  for (const ZoomButton& button : kZoomButtons) {
    data.Bare(button.id, PositionForClients(setting.*button.position));
  }
  Command::Output();
}

int SetPresetZoomPosition::Parse(const char* params) {
  return ReadParameters(params, "ID", id_, "Position", position_) ? 0 : -1;
}

void SetPresetZoomPosition::Transmit() {
  kPresetZoomFile.Update(PRESET_ZOOM_PATH, [this](_PRESET_ZOOM_POS& setting) {
    for (const ZoomButton& button : kZoomButtons) {
      if (std::strcmp(id_, button.id) == 0) {
        CopyNumber(setting.*button.position, position_);
      }
    }
  });
}

void GetNTPStatus::Output() {
  DLOG(2, "##### GetNTPStatus Output()");
  _NTP_SETTING setting;
  ReadNTPSetting(&setting);
  const camera_status::CameraStatusBlock block;
  const std::int32_t tc_sync = ParseInt32(setting.tc_sync);
  DLOG(2, "##### GetNTPStatus ntp tc_sync %d %s", tc_sync, setting.tc_sync);
  JsonWriter& data = AddData();
  data.Text("Address", setting.address);
  data.Text("TcSync", tc_sync != 0 ? "On" : "Off");
  data.Text("Status", kNtpStates[block[camera_status::kNtpState]]);
  Command::Output();
}

int SetNTPServer::Parse(const char* params) {
  if (!ReadParameter(params, "Address", parameter_)) {
    return -1;
  }
  DLOG(2, "##### SetNTPServer Parse() addr:%s", parameter_);
  return 0;
}

void SetNTPServer::Transmit() {
  UpdateNtpFile("SetNTPServer",
                [this](_NTP_SETTING& setting) { CopyText(setting.address, parameter_); });
}

int SetNTPSettings::Parse(const char* params) {
  if (!ReadParameter(params, "TcSync", parameter_)) {
    return -1;
  }
  DLOG(2, "##### SetNTPSettings Parse() tc_sync:%s", parameter_);
  return 0;
}

void SetNTPSettings::Transmit() {
  UpdateNtpFile("SetNTPSettings", [this](_NTP_SETTING& setting) {
    CopyText(setting.tc_sync, std::strcmp(parameter_, "On") == 0 ? "1" : "0");
  });
}

void GetIFBSettings::Output() {
  DLOG(2, "##### GetIFBSettings Output()");
  _IFB_SETTING setting;
  ReadIFBSetting(&setting);
  JsonWriter& data = AddData();
  data.Text("Function", LowByte(ParseInt32(setting.ifb_function)) != 0 ? "Enable" : "Disable");
  data.Text("Address", setting.ifb_address);
  data.Bare("Port", setting.ifb_port);
  data.Text("Mountpoint", setting.ifb_mountpoint);
  Command::Output();
}

int SetIFBSettings::Parse(const char* params) {
  ShortText function;
  if (!ReadParameters(params, "Function", function, "Address", address_, "Port", port_,
                      "Mountpoint", mountpoint_)) {
    return -1;
  }
  DLOG(2, "##### SetIFBSettings Parse() func:%s addr:%s port:%d mntp:%s", function, address_, port_,
       mountpoint_);
  enabled_ = std::strcmp(function, "Enable") == 0 ? 1 : 0;
  return 0;
}

void SetIFBSettings::Transmit() {
  kIfbFile.UpdateTraced(
      IFB_SETTING_PATH,
      [this](_IFB_SETTING& setting) {
        CopyNumber(setting.ifb_function, enabled_);
        CopyText(setting.ifb_address, address_);
        CopyNumber(setting.ifb_port, port_);
        CopyText(setting.ifb_mountpoint, mountpoint_);
      },
      [](const char* when, const _IFB_SETTING& setting) {
        DLOG(2, "##### SetIFBSettings Transmit() %s func:%s addr:%s port:%s mntp:%s", when,
             setting.ifb_function, setting.ifb_address, setting.ifb_port, setting.ifb_mountpoint);
      });
}
