#include "status/enable_table.h"

namespace camera_status {

namespace {

// The offsets do not follow the order of the keys.

constexpr EnableFlag kFullautoFlags[] = {{"Status", {205}}, {"On", {130}}, {"Off", {131}}};

constexpr EnableFlag kIrisFlags[] = {{"Status", {206}},  {"Manual", {132}}, {"Auto", {133}},
                                     {"Open1", {134}},   {"Open2", {135}},  {"Open3", {136}},
                                     {"Close1", {137}},  {"Close2", {138}}, {"Close3", {139}},
                                     {"PushAuto", {140}}};

constexpr EnableFlag kGainFlags[] = {{"Status", {207}}, {"Manual", {141}}, {"Alc", {142}},
                                     {"Lolux", {146}},  {"L", {143}},      {"M", {144}},
                                     {"H", {145}},      {"Up1", {120}},    {"Down1", {121}}};

constexpr EnableFlag kAeLevelFlags[] = {
    {"Status", {212}}, {"AeLevelUp", {193}}, {"AeLevelDown", {194}}};

constexpr EnableFlag kShutterFlags[] = {{"Status", {208}}, {"Off", {147}},      {"Manual", {148}},
                                        {"Step", {200}},   {"Variable", {201}}, {"Eei", {149}},
                                        {"Slower", {150}}, {"Faster", {151}}};

// One flag enables all four white paint controls.
constexpr EnableFlag kWhbFlags[] = {
    {"Status", {209}},    {"Manual", {152}},    {"Faw", {153}},      {"Preset", {154}},
    {"A", {155}},         {"B", {156}},         {"Adjust", {157}},   {"WhPaintRP", {192}},
    {"WhPaintRM", {192}}, {"WhPaintBP", {192}}, {"WhPaintBM", {192}}};

constexpr EnableFlag kZoomFlags[] = {
    {"Status", {210}}, {"Tele1", {158}},   {"Tele2", {159}},   {"Tele3", {160}},  {"Wide1", {161}},
    {"Wide2", {162}},  {"Wide3", {163}},   {"Tele", {213}},    {"Wide", {214}},   {"Preset", {215}},
    {"Clear", {216}},  {"Preset1", {217}}, {"Preset2", {218}}, {"Preset3", {219}}};

constexpr EnableFlag kFocusFlags[] = {{"Status", {211}},   {"Manual", {164}},  {"Auto", {165}},
                                      {"Far1", {166}},     {"Far2", {167}},    {"Far3", {168}},
                                      {"Near1", {169}},    {"Near2", {170}},   {"Near3", {171}},
                                      {"Infinity", {172}}, {"PushAuto", {173}}};

constexpr EnableFlag kMasterBlackFlags[] = {{"Up1", {122}},   {"Up2", {123}},   {"Up3", {124}},
                                            {"Down1", {125}}, {"Down2", {126}}, {"Down3", {127}}};

constexpr EnableFlag kDetailFlags[] = {{"Up", {220}}, {"Down", {221}}};

// The report spells the lens return button "LenzRet"; the remote event table spells it "LensRet".
constexpr EnableFlag kUserFlags[] = {{"Sw1", {174}},  {"Sw2", {175}},  {"Sw3", {176}},
                                     {"Sw4", {177}},  {"Sw5", {178}},  {"Sw6", {179}},
                                     {"Sw7", {180}},  {"Sw8", {195}},  {"Sw9", {196}},
                                     {"Sw10", {197}}, {"Sw11", {198}}, {"LenzRet", {199}}};

constexpr EnableFlag kDisptvFlags[] = {
    {"On", {181}},      {"Off", {182}},    {"Sdi", {202}},  {"Hdmi", {203}}, {"Video", {204}},
    {"Display", {183}}, {"Status", {184}}, {"Menu", {185}}, {"Set", {186}},  {"Cancel", {187}},
    {"Up", {188}},      {"Left", {189}},   {"Down", {190}}, {"Right", {191}}};

template <std::uint8_t Count>
constexpr EnableGroup Group(const char* name, const EnableFlag (&flags)[Count]) {
  return {name, flags, Count};
}

}  // namespace

const EnableGroup kEnableTable[kEnableGroupCount] = {
    Group("Fullauto", kFullautoFlags),
    Group("Iris", kIrisFlags),
    Group("Gain", kGainFlags),
    Group("AeLevel", kAeLevelFlags),
    Group("Shutter", kShutterFlags),
    Group("Whb", kWhbFlags),
    Group("Zoom", kZoomFlags),
    Group("Focus", kFocusFlags),
    Group("MasterBlack", kMasterBlackFlags),
    Group("Detail", kDetailFlags),
    Group("User", kUserFlags),
    Group("Disptv", kDisptvFlags),
};

}  // namespace camera_status
