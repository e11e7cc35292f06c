#include "remote/camera_settings.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "harness/files.h"

namespace {

TEST(CameraSettings, PathsAreTheOnesThatTheCameraReads) {
  EXPECT_STREQ(PRESET_ZOOM_PATH, "/var/tmp/lighttpd/web_zoom_preset");
  EXPECT_STREQ(NTP_SETTING_PATH, "/var/tmp/lighttpd/ntp");
  EXPECT_STREQ(IFB_SETTING_PATH, "/var/tmp/lighttpd/ifb");
}

TEST(CameraSettings, WithoutAFileEverySettingHasItsDefault) {
  _PRESET_ZOOM_POS zoom;
  EXPECT_EQ(ReadPresetZoom(&zoom), 0);
  EXPECT_STREQ(zoom.preset_a, "65535");
  EXPECT_STREQ(zoom.preset_b, "65535");
  EXPECT_STREQ(zoom.preset_c, "65535");

  _NTP_SETTING ntp;
  EXPECT_EQ(ReadNTPSetting(&ntp), 0);
  EXPECT_STREQ(ntp.address, "192.168.0.100");
  EXPECT_STREQ(ntp.tc_sync, "1");

  _IFB_SETTING ifb;
  EXPECT_EQ(ReadIFBSetting(&ifb), 0);
  EXPECT_STREQ(ifb.ifb_function, "0");
  EXPECT_STREQ(ifb.ifb_address, "192.168.0.100");
  EXPECT_STREQ(ifb.ifb_port, "5000");
  EXPECT_STREQ(ifb.ifb_mountpoint, "DB90TX");
  EXPECT_STREQ(ifb.ifb_type, "0");
  EXPECT_STREQ(ifb.ifb_codec, "0");
  EXPECT_STREQ(ifb.ifb_channel, "1");
  EXPECT_STREQ(ifb.ifb_sample_rate, "48000");
  EXPECT_STREQ(ifb.ifb_username, "");
  EXPECT_STREQ(ifb.ifb_password, "");
}

TEST(CameraSettings, AFolderInAFilesPlaceCountsAsMissing) {
  ASSERT_EQ(mkdir(NTP_SETTING_PATH, 0755), 0);
  _NTP_SETTING ntp;
  EXPECT_EQ(ReadNTPSetting(&ntp), 0);
  EXPECT_STREQ(ntp.tc_sync, "1");
}

TEST(CameraSettings, KeysOfOtherFilesAreIgnored) {
  harness::WriteFile(IFB_SETTING_PATH,
                     "address\t1\nifb_portal\nifb_channel 2\nifb_type\t\t3 4\nifb\t5\n");
  _IFB_SETTING ifb;
  EXPECT_EQ(ReadIFBSetting(&ifb), 0);
  EXPECT_STREQ(ifb.ifb_address, "");
  EXPECT_STREQ(ifb.ifb_port, "al") << "a line only has to begin with the key";
  EXPECT_STREQ(ifb.ifb_channel, "2");
  EXPECT_STREQ(ifb.ifb_type, "3");
  EXPECT_STREQ(ifb.ifb_function, "");
}

}  // namespace
