// The camera's whole state as one JSON object. The keys, their order and which numbers are quoted
// never vary: the pages of the web remote, which poll it, depend on them.
#include <iterator>
#include <string_view>

#include "core/cmd/status.h"
#include "status/camera_status_block.h"
#include "status/enable_table.h"
#include "status/names.h"
#include "status/replies.h"

namespace {

using namespace camera_status;
using namespace status_reply;

void WriteOperation(JsonWriter& data, ByteView reply) {
  char time_code[Command::kTimeCodeSize];
  Command::MakeTCString(reply[kTimeCode], time_code);
  data.Text("Status", kRecordingNames[reply[kRecording]]);
  data.Text("Mode", kCameraModeNames[reply[kCameraMode]]);
  data.Text("RecMode", kRecordingModeNames[reply[kRecordingMode]]);
  data.Text("ZoomStatus", kZoomNames[reply[kZooming]]);
  data.QuotedNumber("ZoomPosition", reply[kZoomPosition]);
  data.Text("TC", time_code);
}

void WriteSlot(JsonWriter& data, const char* key, const SlotFields& slot, ByteView reply) {
  const std::uint16_t remain = reply[slot.remain];
  data.BeginObject(key);
  data.Text("Status", kSlotNames[reply[slot.status]]);
  data.Text("Protect", kProtectNames[reply[slot.protect]]);
  data.QuotedNumber("Remain", remain == kRemainUnknown ? -1 : remain);
  data.Number("ClipNum", reply[slot.clip_count]);
  data.Number("RemainWarn", reply[slot.remain_warning]);
  data.EndObject();
}

void WriteBattery(JsonWriter& data, ByteView reply) {
  data.BeginObject("Battery");
  data.Text("Info", kBatteryNames[reply[kBatteryInfo]]);
  data.QuotedNumber("Level", reply[kBatteryLevel]);
  data.QuotedNumber("Value", reply[kBatteryValue]);
  data.EndObject();
}

void WriteAllowedPages(JsonWriter& data, ByteView reply, const CameraStatusBlock& block) {
  data.BeginObject("AllowedPage");
  data.Number("PlanningMetadata", reply[kPlanningMetadataAllowed]);
  data.Number("EditMetadata", reply[kEditMetadataAllowed]);
  data.Number("ViewRemote", reply[kViewRemoteAllowed]);
  data.Number("CameraControl", block[kCameraControlAllowed]);
  data.Number("Setting", reply[kSettingAllowed]);
  data.EndObject();
}

/// How an FTP server's key is printed. The spaces let a page wrap it.
struct KeyFormat {
  std::uint8_t bytes;
  std::uint8_t bytes_per_line;
};

/// By the type of the key; all other types are printed like type 0.
constexpr KeyFormat kKeyFormats[] = {{20, 4}, {20, 10}, {16, 8}};

void WriteFtpMessage(JsonWriter& data, const CameraStatusBlock& block) {
  constexpr std::uint8_t kPhaseTrust = 9;
  if (block[kFtpPhase1] != kPhaseTrust) {
    data.Text("Message", block[kFtpMessage]);
    return;
  }
  const std::uint8_t type = block[kFtpMessageType];
  const KeyFormat format = kKeyFormats[type < std::size(kKeyFormats) ? type : 0];
  const ByteView key = block[kFtpKey];
  TextBuilder& text = data.BeginText("Message");
  for (std::size_t i = 0; i < format.bytes; ++i) {
    if (i > 0) {
      text.Append(i % format.bytes_per_line == 0 ? ": " : ":");
    }
    text.AppendHexByte(key.U8(i));
  }
  data.EndText();
}

void WriteFtp(JsonWriter& data, const CameraStatusBlock& block) {
  data.BeginObject("Ftp");
  data.Text("Phase1", GetFtpPhase(block[kFtpPhase1]));
  data.Text("Phase2", GetFtpPhase(block[kFtpPhase2]));
  data.Number("Percent", block[kFtpPercent]);
  data.Number("Err", block[kFtpError]);
  data.Text("Server", kFtpServerNames[block[kFtpServer]]);
  // The camera counts files, not bytes.
  data.Number("TotalSize", 0);
  data.Number("NowSize", 0);
  data.Number("Remain", block[kFtpRemainingTime]);
  data.Number("TotalNo", block[kFtpTotalFiles]);
  data.Number("NowNo", block[kFtpCurrentFile]);
  data.Number("Type", block[kFtpMessageType]);
  WriteFtpMessage(data, block);
  data.EndObject();
}

void WriteEnableFlags(JsonWriter& data, const CameraStatusBlock& block) {
  data.BeginObject("Enable");
  for (const EnableGroup& group : kEnableTable) {
    data.BeginObject(group.name);
    for (const EnableFlag& flag : group.flags) {
      data.Number(flag.key, block[flag.flag]);
    }
    data.EndObject();
  }
  data.EndObject();
}

void WriteButtonLetters(JsonWriter& data, const CameraStatusBlock& block) {
  constexpr std::string_view kUserButtons[] = {"Sw1", "Sw2", "Sw3", "Sw4",  "Sw5", "Sw6",
                                               "Sw7", "Sw8", "Sw9", "Sw10", "Sw11"};
  static_assert(std::size(kUserButtons) == std::size(kUserLabels));
  data.BeginObject("ButtonLetter");
  data.BeginObject("Gain");
  data.Text("L", block[kGainLabelL]);
  data.Text("M", block[kGainLabelM]);
  data.Text("H", block[kGainLabelH]);
  data.EndObject();
  data.BeginObject("User");
  for (std::size_t i = 0; i < std::size(kUserButtons); ++i) {
    data.Text(kUserButtons[i], block[kUserLabels[i]]);
  }
  data.Text("LenzRet", block[kLensReturnLabel]);
  data.EndObject();
  data.BeginObject("Whb");
  data.Text("Preset", block[kWhiteBalanceLabelPreset]);
  data.Text("A", block[kWhiteBalanceLabelA]);
  data.Text("B", block[kWhiteBalanceLabelB]);
  data.EndObject();
  data.EndObject();
}

/// A picture setting: its mode and the value that the camera displays.
void WriteSetting(JsonWriter& data, const char* key, const char* status, std::string_view letter) {
  data.BeginObject(key);
  data.Text("Status", status);
  data.Text("Letter", letter);
  data.EndObject();
}

void WriteWhiteBalance(JsonWriter& data, const CameraStatusBlock& block) {
  data.BeginObject("Whb");
  data.Text("Status", kWhiteBalanceNames[block[kWhiteBalanceMode]]);
  data.Text("Letter", block[kWhiteBalanceLetter]);
  data.Number("WhPaintRScale", block[kWhitePaintRedScale]);
  data.Number("WhPaintBScale", block[kWhitePaintBlueScale]);
  data.Number("WhPaintRPosition", block[kWhitePaintRedPosition]);
  data.Number("WhPaintBPosition", block[kWhitePaintBluePosition]);
  data.Text("WhPaintRLetter", block[kWhitePaintRedLetter]);
  data.Text("WhPaintBLetter", block[kWhitePaintBlueLetter]);
  data.EndObject();
}

void WritePicture(JsonWriter& data, const CameraStatusBlock& block) {
  data.Text("Fullauto", kSwitchNames[block[kFullauto]]);
  WriteSetting(data, "Iris", kIrisNames[block[kIrisMode]], block[kIrisLetter]);
  WriteSetting(data, "Gain", kGainNames[block[kGainMode]], block[kGainLetter]);
  WriteSetting(data, "AeLevel", kAeLevelNames[block[kAeLevelMode]], block[kAeLevelLetter]);
  WriteSetting(data, "Shutter", kShutterNames[block[kShutterMode]], block[kShutterLetter]);
  WriteWhiteBalance(data, block);
  WriteSetting(data, "Focus", kFocusNames[block[kFocusMode]], block[kFocusLetter]);
  data.BeginObject("MasterBlack");
  data.Text("Letter", block[kMasterBlackLetter]);
  data.EndObject();
  data.BeginObject("Detail");
  data.Text("Letter", block[kDetailLetter]);
  data.EndObject();
}

void WriteDisplays(JsonWriter& data, const CameraStatusBlock& block) {
  data.Text("Disptv", kDisplayNames[block[kDisplayHidden]]);
  data.BeginObject("CharMix");
  data.Text("Sdi", kSwitchNames[block[kCharacterMixSdi]]);
  data.Text("Hdmi", kSwitchNames[block[kCharacterMixHdmi]]);
  data.Text("Video", kSwitchNames[block[kCharacterMixVideo]]);
  data.EndObject();
}

void WriteCloudStreaming(JsonWriter& data, const CameraStatusBlock& block) {
  data.BeginObject("CloudStreaming");
  data.Text("LoginStatus", kCloudStateNames[block[kCloudLogin]]);
  data.Text("GetEventListStatus", kCloudStateNames[block[kCloudEventList]]);
  data.Text("GetStreamInfoStatus", kCloudStateNames[block[kCloudStreamInfo]]);
  data.Text("Error", kCloudErrorNames[block[kCloudError]]);
  data.EndObject();
}

}  // namespace

void GetCamStatus::Output() {
  const CameraStatusBlock block;
  const ByteView reply = Reply();
  JsonWriter& data = AddData();
  data.Reserve(kMaxReport);
  WriteOperation(data, reply);
  WriteSlot(data, "SlotA", kSlotA, reply);
  WriteSlot(data, "SlotB", kSlotB, reply);
  WriteBattery(data, reply);
  data.Text("AspectRatio", kAspectRatioNames[reply[kAspectRatio]]);
  WriteAllowedPages(data, reply, block);
  data.Text("NetAdaptorStatus", kNetAdaptorStatusNames[reply[kNetAdaptor]]);
  data.Text("NetAdaptorType", kNetAdaptorTypeNames[reply[kNetAdaptor]]);
  data.Text("WebAccess", kSwitchNames[reply[kWebAccess]]);
  data.Number("ZoomDisplayValue", reply[kZoomDisplayValue]);
  WriteFtp(data, block);
  WriteEnableFlags(data, block);
  WriteButtonLetters(data, block);
  WritePicture(data, block);
  WriteDisplays(data, block);
  WriteCloudStreaming(data, block);
  Command::Output();
}
