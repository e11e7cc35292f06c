// The settings files of the preset zoom positions, the NTP server and the return audio. Numbers are
// stored in decimal.
#pragma once

#include "streaming/settings_file.h"

/// The preset zoom file. "65535" is a position that is not set.
struct _PRESET_ZOOM_POS {
  char preset_a[30];
  char preset_b[30];
  char preset_c[30];
};

/// The NTP settings file.
struct _NTP_SETTING {
  char address[130];
  char tc_sync[30];  ///< non-zero while the time code follows the server
};

/// The return audio (IFB) settings file.
struct _IFB_SETTING {
  char ifb_function[30];  ///< the low byte is 0 while the function is disabled
  char ifb_address[130];
  char ifb_port[30];
  char ifb_mountpoint[70];
  // For the camera's receiver; clients cannot set these.
  char ifb_type[30];
  char ifb_codec[30];
  char ifb_channel[30];
  char ifb_sample_rate[30];
  char ifb_username[70];
  char ifb_password[256];
};

extern const char PRESET_ZOOM_PATH[];
extern const char NTP_SETTING_PATH[];
extern const char IFB_SETTING_PATH[];

extern const SettingsFile<_PRESET_ZOOM_POS> kPresetZoomFile;
extern const SettingsFile<_NTP_SETTING> kNtpFile;
extern const SettingsFile<_IFB_SETTING> kIfbFile;

/// Read the settings files (see `SettingsFile::Read`).
/// @return 0
int ReadPresetZoom(_PRESET_ZOOM_POS* setting);
int ReadNTPSetting(_NTP_SETTING* setting);
int ReadIFBSetting(_IFB_SETTING* setting);
