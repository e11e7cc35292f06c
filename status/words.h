// The words by which clients know the camera's state codes. Misspelled words are the interface's
// own: clients compare them as they stand.
#pragma once

#include <cstdint>

#include "core/word_table.h"

// Switches.
constexpr WordTable<1> kSwitchWords = {{"Off"}, "On"};
constexpr WordTable<1> kProtectWords = {{"Unlock"}, "Lock"};

// The camera's operation.
constexpr WordTable<5> kRecordingWords = {{"NoCard", "Stop", "Standby", "Rec", "RecPause"},
                                          "Standby"};
constexpr WordTable<6> kCameraModeWords = {
    {"Camera", "Thmubnail", "Play", "Camera", "USB", "EditMetadata"}, "Camera"};
constexpr WordTable<5> kRecordingModeWords = {{"Normal", "Pre", "Clip", "Frame", "Interval"},
                                              "Normal"};
constexpr WordTable<1> kZoomWords = {{"Idol"}, "Zoom"};
constexpr WordTable<6> kSlotWords = {
    {"NoCard", "Select", "NoSelect", "SelectRec", "NoSelectRec", "Invalid"}, "Unknown"};
constexpr WordTable<3> kBatteryWords = {{"Time", "Capacity", "Voltage"}, "Time"};
constexpr WordTable<2> kAspectRatioWords = {{"16:9", "4:3"}, "16:9"};

// The network: one code tells the adaptor's kind and whether it is connected.
constexpr WordTable<11> kNetAdaptorStatusWords = {
    {"Off", "None", "Mismatch", "Connecting", "Connected", "Connecting", "Connected", "Connecting",
     "Connected", "Connecting", "Connected"},
    "Off"};
constexpr WordTable<11> kNetAdaptorTypeWords = {
    {"Unknown", "Unknown", "Unknown", "WLAN_AP", "WLAN_AP", "WLAN_P2P", "WLAN_P2P", "Ethernet",
     "Ethernet", "Cellular", "Cellular"},
    "Unknown"};
constexpr WordTable<4> kFtpServerWords = {{"FTP1", "FTP2", "FTP3", "FTP4"}, "FTP1"};
constexpr WordTable<3> kCloudStateWords = {{"Idle", "Doing", "Finished"}, "Failed"};
constexpr WordTable<6> kCloudErrorWords = {
    {"None", "Ssl", "Timeout", "Authorization", "Server", "Url"}, "Other"};

// The picture.
constexpr WordTable<2> kIrisWords = {{"Manual", "Auto"}, "AutoAELock"};
constexpr WordTable<5> kGainWords = {{"ManualL", "ManualM", "ManualH", "Alc", "AlcAELock"},
                                     "Lolux"};
constexpr WordTable<3> kAeLevelWords = {{"AeOff", "AeOn", "AeOnFace"}, "AeOff"};
// The camera has no further shutter modes; there is no word for what it never sends.
constexpr WordTable<6> kShutterWords = {{"Off", "Manual", "Eei", "EeiAELock", "Step", "Variable"},
                                        ""};
constexpr WordTable<4> kWhiteBalanceWords = {{"Preset", "A", "B", "Faw"}, "FawAELock"};
constexpr WordTable<4> kFocusWords = {{"AFFace", "AF", "MFOnePush", "MF"}, "MFFace"};
// The camera tells whether the display is hidden, clients ask whether it is shown.
constexpr WordTable<1> kDisplayWords = {{"On"}, "Off"};

// Clips. Their aspect ratio is a flag, other than that of the camera itself.
constexpr WordTable<1> kOkMarkWords = {{"NoMark"}, "Mark"};
constexpr WordTable<1> kClipAspectRatioWords = {{"16:9"}, "4:3"};
constexpr WordTable<1> kClipEditWords = {{"Enable"}, "Disable"};

constexpr WordTable<3> kStudioTallyWords = {{"Off", "Program", "Preview"}, "Off"};
// Phase 8 is one that clients have no word for.
constexpr WordTable<15> kFtpPhaseWords = {
    {"OFF", "START", "OCCUPY_SLOT", "CLEAR", "MOUNT", "PARSE", "TRANS", "PUT_FILE", "?????",
     "TRUST", "PROMPT", "UNMOUNT", "RELEASE_SLOT", "RECOVER", "RESUME"},
    "?????"};

/// The word for a studio tally state.
constexpr const char* GetStrStudioTally(std::uint8_t state) { return kStudioTallyWords[state]; }

/// The word for the phase of an FTP job.
constexpr const char* GetFtpPhase(int phase) { return kFtpPhaseWords[phase]; }
