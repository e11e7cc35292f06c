#include "status/enable_table.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// Every group as "Name: Key offset, Key offset, ...".
constexpr const char* kDescriptions[] = {
    "Fullauto: Status 205, On 130, Off 131",
    "Iris: Status 206, Manual 132, Auto 133, Open1 134, Open2 135, Open3 136, Close1 137, "
    "Close2 138, Close3 139, PushAuto 140",
    "Gain: Status 207, Manual 141, Alc 142, Lolux 146, L 143, M 144, H 145, Up1 120, Down1 121",
    "AeLevel: Status 212, AeLevelUp 193, AeLevelDown 194",
    "Shutter: Status 208, Off 147, Manual 148, Step 200, Variable 201, Eei 149, Slower 150, "
    "Faster 151",
    "Whb: Status 209, Manual 152, Faw 153, Preset 154, A 155, B 156, Adjust 157, WhPaintRP 192, "
    "WhPaintRM 192, WhPaintBP 192, WhPaintBM 192",
    "Zoom: Status 210, Tele1 158, Tele2 159, Tele3 160, Wide1 161, Wide2 162, Wide3 163, "
    "Tele 213, Wide 214, Preset 215, Clear 216, Preset1 217, Preset2 218, Preset3 219",
    "Focus: Status 211, Manual 164, Auto 165, Far1 166, Far2 167, Far3 168, Near1 169, "
    "Near2 170, Near3 171, Infinity 172, PushAuto 173",
    "MasterBlack: Up1 122, Up2 123, Up3 124, Down1 125, Down2 126, Down3 127",
    "Detail: Up 220, Down 221",
    "User: Sw1 174, Sw2 175, Sw3 176, Sw4 177, Sw5 178, Sw6 179, Sw7 180, Sw8 195, Sw9 196, "
    "Sw10 197, Sw11 198, LenzRet 199",
    "Disptv: On 181, Off 182, Sdi 202, Hdmi 203, Video 204, Display 183, Status 184, Menu 185, "
    "Set 186, Cancel 187, Up 188, Left 189, Down 190, Right 191",
};

std::string Describe(const camera_status::EnableGroup& group) {
  std::string text = group.name;
  const char* separator = ": ";
  for (const camera_status::EnableFlag& flag : group.flags) {
    text += separator;
    text += flag.key;
    text += ' ';
    text += std::to_string(flag.flag.offset);
    separator = ", ";
  }
  return text;
}

TEST(EnableTable, HasEveryFlagInReportOrderAtItsOffset) {
  ASSERT_EQ(std::size(kDescriptions), std::size(camera_status::kEnableTable));
  for (std::size_t i = 0; i < std::size(kDescriptions); ++i) {
    EXPECT_EQ(Describe(camera_status::kEnableTable[i]), kDescriptions[i]);
  }
}

}  // namespace
