#include "remote/camera_settings.h"

const char PRESET_ZOOM_PATH[] = "/var/tmp/lighttpd/web_zoom_preset";
const char NTP_SETTING_PATH[] = "/var/tmp/lighttpd/ntp";
const char IFB_SETTING_PATH[] = "/var/tmp/lighttpd/ifb";

namespace {

constexpr SettingTable kPresetZoomFields = {
    SETTING_FIELD(_PRESET_ZOOM_POS, preset_a, "65535"),
    SETTING_FIELD(_PRESET_ZOOM_POS, preset_b, "65535"),
    SETTING_FIELD(_PRESET_ZOOM_POS, preset_c, "65535"),
};

constexpr SettingTable kNtpFields = {
    SETTING_FIELD(_NTP_SETTING, address, "192.168.0.100"),
    SETTING_FIELD(_NTP_SETTING, tc_sync, "1"),
};

constexpr SettingTable kIfbFields = {
    SETTING_FIELD(_IFB_SETTING, ifb_function, "0"),
    SETTING_FIELD(_IFB_SETTING, ifb_address, "192.168.0.100"),
    SETTING_FIELD(_IFB_SETTING, ifb_port, "5000"),
    SETTING_FIELD(_IFB_SETTING, ifb_mountpoint, "DB90TX"),
    SETTING_FIELD(_IFB_SETTING, ifb_type, "0"),
    SETTING_FIELD(_IFB_SETTING, ifb_codec, "0"),
    SETTING_FIELD(_IFB_SETTING, ifb_channel, "1"),
    SETTING_FIELD(_IFB_SETTING, ifb_sample_rate, "48000"),
    SETTING_FIELD(_IFB_SETTING, ifb_username, ""),
    SETTING_FIELD(_IFB_SETTING, ifb_password, ""),
};

}  // namespace

constexpr SettingsFile<_PRESET_ZOOM_POS> kPresetZoomFile(kPresetZoomFields);
constexpr SettingsFile<_NTP_SETTING> kNtpFile(kNtpFields);
constexpr SettingsFile<_IFB_SETTING> kIfbFile(kIfbFields);

int ReadPresetZoom(_PRESET_ZOOM_POS* setting) {
  kPresetZoomFile.Read(PRESET_ZOOM_PATH, *setting);
  return 0;
}

int ReadNTPSetting(_NTP_SETTING* setting) {
  kNtpFile.Read(NTP_SETTING_PATH, *setting);
  return 0;
}

int ReadIFBSetting(_IFB_SETTING* setting) {
  kIfbFile.Read(IFB_SETTING_PATH, *setting);
  return 0;
}
