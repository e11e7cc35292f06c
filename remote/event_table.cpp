#include "remote/event_table.h"

#include <cstring>
#include <iterator>

#include "core/dlog.h"

// The camera's firmware defines the codes, so they do not follow the order of the rows. Some
// controls have two codes and some keys two names; clients use them all. The comment before each
// control is the index of its first row.
// clang-format off
constexpr RemoteEvent eventTable[] = {
    // 0
    {"Rec", 1, "Start", 0},
    {"Rec", 1, "Stop", 1},
    // 2
    {"Fullauto", 2, "On", 0},
    {"Fullauto", 2, "Off", 1},
    // 4
    {"Iris", 3, "Manual", 0},
    {"Iris", 3, "Auto", 1},
    {"Iris", 3, "Open1", 2},
    {"Iris", 3, "Open2", 3},
    {"Iris", 3, "Open3", 4},
    {"Iris", 3, "Close1", 5},
    {"Iris", 3, "Close2", 6},
    {"Iris", 3, "Close3", 7},
    {"Iris", 3, "PushAuto", 8},
    // 13
    {"Gain", 4, "Manual", 0},
    {"Gain", 4, "Alc", 1},
    {"Gain", 4, "Lolux", 5},
    {"Gain", 4, "L", 2},
    {"Gain", 4, "M", 3},
    {"Gain", 4, "H", 4},
    {"Gain", 4, "Up1", 6},
    {"Gain", 4, "Down1", 7},
    // 21
    {"AeLevel", 5, "AeLevelUp", 0},
    {"AeLevel", 5, "AeLevelDown", 1},
    {"AeLevel", 5, "Up", 0},
    {"AeLevel", 5, "Down", 1},
    // 25
    {"Shutter", 6, "Off", 0},
    {"Shutter", 6, "Manual", 1},
    {"Shutter", 6, "Step", 2},
    {"Shutter", 6, "Variable", 3},
    {"Shutter", 6, "Eei", 4},
    {"Shutter", 6, "Slower", 6},
    {"Shutter", 6, "Faster", 5},
    // 32
    {"Whb", 7, "Manual", 0},
    {"Whb", 7, "Faw", 1},
    {"Whb", 7, "Preset", 4},
    {"Whb", 7, "A", 2},
    {"Whb", 7, "B", 3},
    {"Whb", 7, "Adjust", 5},
    {"Whb", 7, "WhPaintRP", 6},
    {"Whb", 7, "WhPaintRM", 7},
    {"Whb", 7, "WhPaintBP", 8},
    {"Whb", 7, "WhPaintBM", 9},
    // 42
    {"Zoom", 8, "Tele1", 0},
    {"Zoom", 8, "Tele2", 1},
    {"Zoom", 8, "Tele3", 2},
    {"Zoom", 8, "Wide1", 3},
    {"Zoom", 8, "Wide2", 4},
    {"Zoom", 8, "Wide3", 5},
    // 48
    {"Focus", 9, "Manual", 0},
    {"Focus", 9, "Auto", 1},
    {"Focus", 9, "Far1", 2},
    {"Focus", 9, "Far2", 3},
    {"Focus", 9, "Far3", 4},
    {"Focus", 9, "Infinity", 5},
    {"Focus", 9, "Near1", 6},
    {"Focus", 9, "Near2", 7},
    {"Focus", 9, "Near3", 8},
    {"Focus", 9, "PushAuto", 9},
    // 58
    {"MasterBlack", 25, "Up1", 0},
    {"MasterBlack", 25, "Up2", 1},
    {"MasterBlack", 25, "Up3", 2},
    {"MasterBlack", 25, "Down1", 3},
    {"MasterBlack", 25, "Down2", 4},
    {"MasterBlack", 25, "Down3", 5},
    // 64: the lens return button is "LensRet" here and "LenzRet" in the status report.
    {"User", 10, "Sw1", 0},
    {"User", 10, "Sw2", 1},
    {"User", 10, "Sw3", 2},
    {"User", 10, "Sw4", 3},
    {"User", 10, "Sw5", 4},
    {"User", 10, "Sw6", 5},
    {"User", 10, "Sw7", 6},
    {"User", 10, "Sw8", 7},
    {"User", 10, "Sw9", 8},
    {"User", 10, "Sw10", 9},
    {"User", 10, "Sw11", 10},
    {"User", 10, "LensRet", 11},
    // 76: the display's own keys,
    {"Disptv", 11, "On", 0},
    {"Disptv", 11, "Off", 1},
    {"Disptv", 11, "Sdi", 2},
    {"Disptv", 11, "Hdmi", 3},
    {"Disptv", 11, "Video", 4},
    {"Disptv", 11, "Display", 5},
    {"Disptv", 11, "Status", 6},
    // 83: and the keys of the menu on it
    {"Disptv", 12, "Menu", 0},
    {"Disptv", 12, "Cancel", 1},
    {"Disptv", 12, "Set", 2},
    {"Disptv", 12, "Up", 3},
    {"Disptv", 12, "Down", 4},
    {"Disptv", 12, "Left", 5},
    {"Disptv", 12, "Right", 6},
    // 90: the same codes under another name, without most of the display's keys
    {"Menu", 11, "Display", 5},
    {"Menu", 11, "Status", 6},
    // 92
    {"Menu", 12, "Menu", 0},
    {"Menu", 12, "Cancel", 1},
    {"Menu", 12, "Set", 2},
    {"Menu", 12, "Up", 3},
    {"Menu", 12, "Down", 4},
    {"Menu", 12, "Left", 5},
    {"Menu", 12, "Right", 6},
    // 99
    {"Tally", 14, "Camera", 0},
    {"Tally", 14, "Web", 1},
    {"Tally", 14, "On", 2},
    {"Tally", 14, "Off", 3},
    {"Tally", 14, "OnWeb", 4},
    {"Tally", 14, "OffWeb", 5},
    // 105
    {"StudioTally", 15, "Off", 0},
    {"StudioTally", 15, "Program", 1},
    {"StudioTally", 15, "Preview", 2},
    // 108
    {"Streaming", 13, "Start", 0},
    {"Streaming", 13, "Stop", 1},
    // 110
    {"IFBStreaming", 24, "Start", 0},
    {"IFBStreaming", 24, "Stop", 1},
    // 112
    {"Detail", 16, "Up", 0},
    {"Detail", 16, "Down", 1},
    // 114: bars and fields
    {"ZoomBar", 17, "", 255},
    {"FocusBar", 18, "", 255},
    {"IrisBar", 19, "", 255},
    {"WhPaintR", 20, "", 255},
    {"WhPaintB", 21, "", 255},
    {"WhPaintRB", 22, "", 255},
    // 120
    {"IrisSeesaw", 27, "Open", 1},
    {"IrisSeesaw", 27, "Close", 2},
    {"IrisSeesaw", 27, "Stop", 0},
    // 123
    {"ZoomSeesaw", 26, "Wide", 1},
    {"ZoomSeesaw", 26, "Tele", 2},
    {"ZoomSeesaw", 26, "Stop", 0},
    // 126
    {"MasterBlackSeesaw", 28, "Up", 1},
    {"MasterBlackSeesaw", 28, "Down", 2},
    {"MasterBlackSeesaw", 28, "Stop", 0},
    // 129
    {"FocusSeesaw", 29, "Far", 1},
    {"FocusSeesaw", 29, "Near", 2},
    {"FocusSeesaw", 29, "Stop", 0},
    // 132
    {"System", 30, "Resume", 0},
    // 133: the end row
    {"None", 0, "None", 255},
};
// clang-format on

namespace {

constexpr bool OnlyTheLastRowHasKindCodeZero() {
  for (std::size_t row = 0; row < std::size(eventTable); ++row) {
    const bool is_last = row + 1 == std::size(eventTable);
    if ((eventTable[row].kind_code == 0) != is_last) {
      return false;
    }
  }
  return true;
}
static_assert(std::size(eventTable) == kRemoteEventCount);
static_assert(OnlyTheLastRowHasKindCodeZero());

}  // namespace

int getIndexOfKeyEvent(const char* kind, const char* key, std::uint8_t& kind_code_out,
                       std::uint8_t& key_code_out) {
  const auto matches = [kind, key](const RemoteEvent& event) {
    return std::strcmp(kind, event.kind) == 0 && std::strcmp(key, event.key) == 0;
  };
  const int row = FindRemoteEvent(matches);
  const RemoteEvent& event = eventTable[row];
  DLOG(2,
       matches(event) ? "command Hit!!! eventTable[%d] kind=%s button=%s"
                      : "command Request is None!!! eventTable[%d] kind=%s button=%s",
       row, event.kind, event.key);
  kind_code_out = event.kind_code;
  key_code_out = event.key_code;
  return kind_code_out != 0 ? 0 : -1;
}

int getIndexOfSliderEvent(const char* kind, std::uint8_t& kind_code_out) {
  const auto matches = [kind](const RemoteEvent& event) {
    return std::strcmp(kind, event.kind) == 0;
  };
  const int row = FindRemoteEvent(matches);
  const RemoteEvent& event = eventTable[row];
  DLOG(2,
       matches(event) ? "command Hit!!! eventTable[%d] kind=%s"
                      : "command Request is None!!! eventTable[%d] kind=%s",
       row, event.kind);
  kind_code_out = event.kind_code;
  return kind_code_out != 0 ? 0 : -1;
}
