#include "remote/event_table.h"

#include <cstring>
#include <initializer_list>

#include "core/dlog.h"

namespace {

struct Key {
  const char* name;
  std::uint8_t code;
};

struct Control {
  const char* kind;
  std::uint8_t kind_code;
  std::initializer_list<Key> keys;
};

// The camera's firmware defines the codes, so they do not follow the order of the rows. Some
// controls have two codes and some keys two names; clients use them all. The number before each
// control is the index of its first row.
// clang-format off
constexpr Control kControls[] = {
    /* 0 */   {"Rec", 1, {{"Start", 0}, {"Stop", 1}}},
    /* 2 */   {"Fullauto", 2, {{"On", 0}, {"Off", 1}}},
    /* 4 */   {"Iris", 3, {{"Manual", 0}, {"Auto", 1}, {"Open1", 2}, {"Open2", 3}, {"Open3", 4},
                           {"Close1", 5}, {"Close2", 6}, {"Close3", 7}, {"PushAuto", 8}}},
    /* 13 */  {"Gain", 4, {{"Manual", 0}, {"Alc", 1}, {"Lolux", 5}, {"L", 2}, {"M", 3}, {"H", 4},
                           {"Up1", 6}, {"Down1", 7}}},
    /* 21 */  {"AeLevel", 5, {{"AeLevelUp", 0}, {"AeLevelDown", 1}, {"Up", 0}, {"Down", 1}}},
    /* 25 */  {"Shutter", 6, {{"Off", 0}, {"Manual", 1}, {"Step", 2}, {"Variable", 3}, {"Eei", 4},
                              {"Slower", 6}, {"Faster", 5}}},
    /* 32 */  {"Whb", 7, {{"Manual", 0}, {"Faw", 1}, {"Preset", 4}, {"A", 2}, {"B", 3},
                          {"Adjust", 5}, {"WhPaintRP", 6}, {"WhPaintRM", 7}, {"WhPaintBP", 8},
                          {"WhPaintBM", 9}}},
    /* 42 */  {"Zoom", 8, {{"Tele1", 0}, {"Tele2", 1}, {"Tele3", 2}, {"Wide1", 3}, {"Wide2", 4},
                           {"Wide3", 5}}},
    /* 48 */  {"Focus", 9, {{"Manual", 0}, {"Auto", 1}, {"Far1", 2}, {"Far2", 3}, {"Far3", 4},
                            {"Infinity", 5}, {"Near1", 6}, {"Near2", 7}, {"Near3", 8},
                            {"PushAuto", 9}}},
    /* 58 */  {"MasterBlack", 25, {{"Up1", 0}, {"Up2", 1}, {"Up3", 2}, {"Down1", 3}, {"Down2", 4},
                                   {"Down3", 5}}},
    // The lens return button is "LensRet" here and "LenzRet" in the status report.
    /* 64 */  {"User", 10, {{"Sw1", 0}, {"Sw2", 1}, {"Sw3", 2}, {"Sw4", 3}, {"Sw5", 4}, {"Sw6", 5},
                            {"Sw7", 6}, {"Sw8", 7}, {"Sw9", 8}, {"Sw10", 9}, {"Sw11", 10},
                            {"LensRet", 11}}},
    // The display's own keys, and those of the menu on it.
    /* 76 */  {"Disptv", 11, {{"On", 0}, {"Off", 1}, {"Sdi", 2}, {"Hdmi", 3}, {"Video", 4},
                              {"Display", 5}, {"Status", 6}}},
    /* 83 */  {"Disptv", 12, {{"Menu", 0}, {"Cancel", 1}, {"Set", 2}, {"Up", 3}, {"Down", 4},
                              {"Left", 5}, {"Right", 6}}},
    // The same codes under another name, without most of the display's keys.
    /* 90 */  {"Menu", 11, {{"Display", 5}, {"Status", 6}}},
    /* 92 */  {"Menu", 12, {{"Menu", 0}, {"Cancel", 1}, {"Set", 2}, {"Up", 3}, {"Down", 4},
                            {"Left", 5}, {"Right", 6}}},
    /* 99 */  {"Tally", 14, {{"Camera", 0}, {"Web", 1}, {"On", 2}, {"Off", 3}, {"OnWeb", 4},
                             {"OffWeb", 5}}},
    /* 105 */ {"StudioTally", 15, {{"Off", 0}, {"Program", 1}, {"Preview", 2}}},
    /* 108 */ {"Streaming", 13, {{"Start", 0}, {"Stop", 1}}},
    /* 110 */ {"IFBStreaming", 24, {{"Start", 0}, {"Stop", 1}}},
    /* 112 */ {"Detail", 16, {{"Up", 0}, {"Down", 1}}},
    // Bars and fields.
    /* 114 */ {"ZoomBar", 17, {{"", 255}}},
    /* 115 */ {"FocusBar", 18, {{"", 255}}},
    /* 116 */ {"IrisBar", 19, {{"", 255}}},
    /* 117 */ {"WhPaintR", 20, {{"", 255}}},
    /* 118 */ {"WhPaintB", 21, {{"", 255}}},
    /* 119 */ {"WhPaintRB", 22, {{"", 255}}},
    // Spring-loaded switches.
    /* 120 */ {"IrisSeesaw", 27, {{"Open", 1}, {"Close", 2}, {"Stop", 0}}},
    /* 123 */ {"ZoomSeesaw", 26, {{"Wide", 1}, {"Tele", 2}, {"Stop", 0}}},
    /* 126 */ {"MasterBlackSeesaw", 28, {{"Up", 1}, {"Down", 2}, {"Stop", 0}}},
    /* 129 */ {"FocusSeesaw", 29, {{"Far", 1}, {"Near", 2}, {"Stop", 0}}},
    // The system, and the end row.
    /* 132 */ {"System", 30, {{"Resume", 0}}},
    /* 133 */ {"None", 0, {{"None", 255}}},
};
// clang-format on

template <std::size_t Size>
constexpr void CopyName(char (&to)[Size], const char* name) {
  for (std::size_t i = 0; name[i] != '\0'; ++i) {
    to[i] = name[i];
  }
}

constexpr EventTable MakeEventTable() {
  EventTable table = {};
  std::size_t row = 0;
  for (const Control& control : kControls) {
    for (const Key& key : control.keys) {
      RemoteEvent& event = table[row++];
      CopyName(event.kind, control.kind);
      event.kind_code = control.kind_code;
      CopyName(event.key, key.name);
      event.key_code = key.code;
    }
  }
  return table;
}

constexpr bool OnlyTheLastRowHasKindCodeZero(const EventTable& table) {
  for (const RemoteEvent& event : table) {
    if ((event.kind_code == 0) != (&event == &table.back())) {
      return false;
    }
  }
  return true;
}

}  // namespace

constexpr EventTable eventTable = MakeEventTable();
static_assert(OnlyTheLastRowHasKindCodeZero(eventTable));

int getIndexOfKeyEvent(const char* kind, const char* key, std::uint8_t& kind_code_out,
                       std::uint8_t& key_code_out) {
  const auto matches = [kind, key](const RemoteEvent& event) {
    return std::strcmp(kind, event.kind) == 0 && std::strcmp(key, event.key) == 0;
  };
  const RemoteEvent& event = FindRemoteEvent(matches);
  DLOG(2,
       matches(event) ? "command Hit!!! eventTable[%d] kind=%s button=%s"
                      : "command Request is None!!! eventTable[%d] kind=%s button=%s",
       IndexOf(event), event.kind, event.key);
  kind_code_out = event.kind_code;
  key_code_out = event.key_code;
  return kind_code_out != 0 ? 0 : -1;
}

int getIndexOfSliderEvent(const char* kind, std::uint8_t& kind_code_out) {
  const auto matches = [kind](const RemoteEvent& event) {
    return std::strcmp(kind, event.kind) == 0;
  };
  const RemoteEvent& event = FindRemoteEvent(matches);
  DLOG(2,
       matches(event) ? "command Hit!!! eventTable[%d] kind=%s"
                      : "command Request is None!!! eventTable[%d] kind=%s",
       IndexOf(event), event.kind);
  kind_code_out = event.kind_code;
  return kind_code_out != 0 ? 0 : -1;
}
