// The names that clients know the camera's state codes by. Some are misspelled; clients compare
// them exactly, so they stay.
#pragma once

#include <cstdint>

#include "core/name_table.h"

// Switches.
constexpr NameTable<1> kSwitchNames = {{"Off"}, "On"};
constexpr NameTable<1> kProtectNames = {{"Unlock"}, "Lock"};

// The camera's operation.
constexpr NameTable<5> kRecordingNames = {{"NoCard", "Stop", "Standby", "Rec", "RecPause"},
                                          "Standby"};
constexpr NameTable<6> kCameraModeNames = {
    {"Camera", "Thmubnail", "Play", "Camera", "USB", "EditMetadata"}, "Camera"};
constexpr NameTable<5> kRecordingModeNames = {{"Normal", "Pre", "Clip", "Frame", "Interval"},
                                              "Normal"};
constexpr NameTable<1> kZoomNames = {{"Idol"}, "Zoom"};
constexpr NameTable<6> kSlotNames = {
    {"NoCard", "Select", "NoSelect", "SelectRec", "NoSelectRec", "Invalid"}, "Unknown"};
constexpr NameTable<3> kBatteryNames = {{"Time", "Capacity", "Voltage"}, "Time"};
constexpr NameTable<2> kAspectRatioNames = {{"16:9", "4:3"}, "16:9"};

// The network: one code combines the type of the adaptor and the state of the connection.
constexpr NameTable<11> kNetAdaptorStatusNames = {
    {"Off", "None", "Mismatch", "Connecting", "Connected", "Connecting", "Connected", "Connecting",
     "Connected", "Connecting", "Connected"},
    "Off"};
constexpr NameTable<11> kNetAdaptorTypeNames = {
    {"Unknown", "Unknown", "Unknown", "WLAN_AP", "WLAN_AP", "WLAN_P2P", "WLAN_P2P", "Ethernet",
     "Ethernet", "Cellular", "Cellular"},
    "Unknown"};
constexpr NameTable<4> kFtpServerNames = {{"FTP1", "FTP2", "FTP3", "FTP4"}, "FTP1"};
constexpr NameTable<3> kCloudStateNames = {{"Idle", "Doing", "Finished"}, "Failed"};
constexpr NameTable<6> kCloudErrorNames = {
    {"None", "Ssl", "Timeout", "Authorization", "Server", "Url"}, "Other"};

// The picture.
constexpr NameTable<2> kIrisNames = {{"Manual", "Auto"}, "AutoAELock"};
constexpr NameTable<5> kGainNames = {{"ManualL", "ManualM", "ManualH", "Alc", "AlcAELock"},
                                     "Lolux"};
constexpr NameTable<3> kAeLevelNames = {{"AeOff", "AeOn", "AeOnFace"}, "AeOff"};
// The camera has no further shutter modes, so no other code has a name.
constexpr NameTable<6> kShutterNames = {{"Off", "Manual", "Eei", "EeiAELock", "Step", "Variable"},
                                        ""};
constexpr NameTable<4> kWhiteBalanceNames = {{"Preset", "A", "B", "Faw"}, "FawAELock"};
constexpr NameTable<4> kFocusNames = {{"AFFace", "AF", "MFOnePush", "MF"}, "MFFace"};
// The camera's flag means "hidden"; clients see "shown".
constexpr NameTable<1> kDisplayNames = {{"On"}, "Off"};

// Clips. Their aspect ratio is a flag, unlike the camera's own.
constexpr NameTable<1> kOkMarkNames = {{"NoMark"}, "Mark"};
constexpr NameTable<1> kClipAspectRatioNames = {{"16:9"}, "4:3"};
constexpr NameTable<1> kClipEditNames = {{"Enable"}, "Disable"};

constexpr NameTable<3> kStudioTallyNames = {{"Off", "Program", "Preview"}, "Off"};
// Clients have no name for phase 8.
constexpr NameTable<15> kFtpPhaseNames = {
    {"OFF", "START", "OCCUPY_SLOT", "CLEAR", "MOUNT", "PARSE", "TRANS", "PUT_FILE", "?????",
     "TRUST", "PROMPT", "UNMOUNT", "RELEASE_SLOT", "RECOVER", "RESUME"},
    "?????"};

/// The name of a studio tally state.
constexpr const char* GetStrStudioTally(std::uint8_t state) { return kStudioTallyNames[state]; }

/// The name of an FTP job's phase.
constexpr const char* GetFtpPhase(int phase) { return kFtpPhaseNames[phase]; }
