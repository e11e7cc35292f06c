// The commands of the streaming settings file: the streaming format, its available values, and the
// current server.
#include <cstdint>

#include "core/cmd/streaming.h"
#include "core/dlog.h"
#include "core/parameters.h"
#include "core/text.h"
#include "streaming/capabilities.h"
#include "streaming/streaming_settings.h"

namespace {

/// Changes the streaming settings file and traces it before and after.
template <typename Change>
void UpdateStreamingFile(int level, const char* command, Change change) {
  kStreamingFile.UpdateTraced(STREAMING_SETTING_PATH, change,
                              [&](const char* when, const _STREAMING_SETTING& setting) {
                                DLOG(level, "##### %s Transmit() %s res:%s qua:%s ser:%s", command,
                                     when, setting.resolution, setting.quality, setting.server);
                              });
}

/// Changes the bit rate or frame rate of the stored quality; without either it becomes 0.
void ChangeQuality(_STREAMING_SETTING& setting, std::optional<std::int32_t> bitrate_code,
                   std::optional<std::int32_t> framerate) {
  StreamingQuality quality(0);
  if (bitrate_code || framerate) {
    const StreamingQuality old(ParseInt32(setting.quality));
    quality = {bitrate_code.value_or(old.bitrate_code), framerate.value_or(old.framerate)};
  }
  CopyNumber(setting.quality, quality.Value());
}

/// "key":{"name":flag,...}
template <std::size_t Columns, typename Name>
void AppendFlags(JsonWriter& data, const char* key, const Name (&names)[Columns],
                 const Flags<Columns>& flags) {
  data.BeginObject(key);
  for (std::size_t i = 0; i < Columns; ++i) {
    data.Number(names[i], flags.columns[i]);
  }
  data.EndObject();
}

/// The flags that a selector found. If it found none, that is traced and all flags are 0.
template <std::size_t Columns>
const Flags<Columns>& FlagsOrZeros(const Flags<Columns>* flags, const char* selector) {
  static constexpr Flags<Columns> kZeros = {};
  if (flags == nullptr) {
    DLOG(2, "##### %s param error", selector);
    return kZeros;
  }
  return *flags;
}

}  // namespace

void GetStreamingSettings::Output() {
  DLOG(2, "##### GetStreamingSettings Output()");
  _STREAMING_SETTING setting;
  ReadStreamingSetting(&setting);
  const StreamingQuality quality(ParseInt32(setting.quality));
  JsonWriter& data = AddData();
  data.Text("Resolution", NameAt(resolution_table, ParseInt32(setting.resolution)));
  data.Text("Framerate", NameAt(framerate_table, quality.framerate));
  data.Text("Bitrate", NameAt(bitrate_table, IndexOfBitrateCode(quality.bitrate_code)));
  Command::Output();
}

int SetStreamingSettings::Parse(const char* params) {
  ShortText resolution;
  ShortText bitrate;
  if (!ReadParameters(params, "Resolution", resolution, "Bitrate", bitrate)) {
    return -1;
  }
  DLOG(2, "##### SetStreamingSettings Parse() m_resolution=%s m_bitrate=%s", resolution, bitrate);
  resolution_ = IndexOfName(resolution_table, resolution);
  bitrate_code_ = BitrateCodeAt(IndexOfName(bitrate_table, bitrate));
  return 0;
}

void SetStreamingSettings::Transmit() {
  UpdateStreamingFile(2, "SetStreamingSettings", [this](_STREAMING_SETTING& setting) {
    CopyNumber(setting.resolution, resolution_);
    ChangeQuality(setting, bitrate_code_, {});
  });
}

int SetStreamingResolution::Parse(const char* params) {
  ShortText resolution;
  if (!ReadParameter(params, "Resolution", resolution)) {
    return -1;
  }
  // This command and the next two deliberately trace their parameter twice.
  DLOG(4, "##### SetStreamingResolution Parse() m_resolution=%s", resolution);
  resolution_ = IndexOfName(resolution_table, resolution);
  DLOG(4, "##### SetStreamingResolution Parse() m_resolution=%s", resolution);
  return 0;
}

void SetStreamingResolution::Transmit() {
  UpdateStreamingFile(4, "SetStreamingResolution", [this](_STREAMING_SETTING& setting) {
    CopyNumber(setting.resolution, resolution_);
  });
}

int SetStreamingFramerate::Parse(const char* params) {
  ShortText framerate;
  if (!ReadParameter(params, "Framerate", framerate)) {
    return -1;
  }
  DLOG(4, "##### SetStreamingFramerate Parse() m_framerate=%s", framerate);
  framerate_ = IndexOfName(framerate_table, framerate);
  DLOG(2, "##### SetStreamingFramerate Parse() m_framerate=%s", framerate);
  return 0;
}

void SetStreamingFramerate::Transmit() {
  UpdateStreamingFile(2, "SetStreamingFramerate", [this](_STREAMING_SETTING& setting) {
    ChangeQuality(setting, {}, framerate_);
  });
}

int SetStreamingBitrate::Parse(const char* params) {
  ShortText bitrate;
  if (!ReadParameter(params, "Bitrate", bitrate)) {
    return -1;
  }
  DLOG(4, "##### SetStreamingBitrate Parse() m_bitrate=%s", bitrate);
  bitrate_code_ = BitrateCodeAt(IndexOfName(bitrate_table, bitrate));
  DLOG(4, "##### SetStreamingBitrate Parse() m_bitrate=%s", bitrate);
  return 0;
}

void SetStreamingBitrate::Transmit() {
  UpdateStreamingFile(4, "SetStreamingBitrate", [this](_STREAMING_SETTING& setting) {
    ChangeQuality(setting, bitrate_code_, {});
  });
}

void AvailableStreamingResolutionSettings::Output() {
  static constexpr char kColumns[kResolutionRows][10] = {
      "1920x1080", "1440x1080", "1280x720", "720x480", "720x576", "640x360", "480x270"};
  AppendFlags(AddData(), "AvailableResolution", kColumns, SelectableResolutions());
  Command::Output();
}

int AvailableStreamingFramerateSettings::Parse(const char* params) {
  DLOG(2, "##### AvailableStreamingFramerateSettings Parse() params=%s", params);
  ShortText resolution;
  if (!ReadParameter(params, "Resolution", resolution)) {
    return -1;
  }
  DLOG(2, "##### AvailableStreamingFramerateSettings Parse() m_resolution=%s", resolution);
  resolution_ = IndexOfName(resolution_table, resolution);
  return resolution_ < std::int32_t{kResolutionRows} ? 0 : -1;
}

void AvailableStreamingFramerateSettings::Output() {
  static constexpr char kColumns[kFramerateRows][4] = {"60p", "60i", "30p", "50p", "50i", "25p"};
  const FramerateFlags& flags =
      FlagsOrZeros(GetSelectableFramerateTable(resolution_), "GetSelectableFramerateTable");
  JsonWriter& data = AddData();
  data.Text("Resolution", NameAt(resolution_table, resolution_));
  AppendFlags(data, "AvailableFramerate", kColumns, flags);
  Command::Output();
}

int AvailableStreamingBitrateSettings::Parse(const char* params) {
  DLOG(2, "##### AvailableStreamingBitrateSettings Parse() params=%s", params);
  ShortText type;
  ShortText resolution;
  ShortText framerate;
  if (!ReadParameters(params, "Type", type, "Resolution", resolution, "Framerate", framerate)) {
    return -1;
  }
  DLOG(2,
       "##### AvailableStreamingBitrateSettings Parse() m_streaming_type=%s m_resolution=%s "
       "m_framerate=%s",
       type, resolution, framerate);
  type_ = IndexOfName(streaming_type_zixi_separate_table, type);
  resolution_ = IndexOfName(resolution_table, resolution);
  framerate_ = IndexOfName(framerate_table, framerate);
  const bool all_known = type_ < std::int32_t{kStreamingTypeRows} &&
                         resolution_ < std::int32_t{kResolutionRows} &&
                         framerate_ < std::int32_t{kFramerateRows};
  return all_known ? 0 : -1;
}

void AvailableStreamingBitrateSettings::Output() {
  const BitrateFlags& flags = FlagsOrZeros(
      GetSelectableBitrateTable(type_, resolution_, framerate_), "GetSelectableBitrateTable");
  JsonWriter& data = AddData();
  data.Text("Type", NameAt(streaming_type_zixi_separate_table, type_));
  data.Text("Resolution", NameAt(resolution_table, resolution_));
  AppendFlags(data, "AvailableBitrate", bitrate_table, flags);
  Command::Output();
}

void GetCurrentStreamingServerID::Output() {
  _STREAMING_SETTING setting;
  ReadStreamingSetting(&setting);
  AddData().Bare("ID", setting.server);
  Command::Output();
}

int SetCurrentStreamingServerID::Parse(const char* params) {
  constexpr std::int32_t kServers = 4;
  if (!ReadParameter(params, "ID", server_)) {
    return -1;
  }
  const bool accepted = server_ < kServers;
  DLOG(2, "##### SetCurrentStreamingServerID Parse() m_server=%d %s", server_,
       accepted ? "OK" : "NG");
  return accepted ? 0 : 1;
}

void SetCurrentStreamingServerID::Transmit() {
  UpdateStreamingFile(2, "SetCurrentStreamingServerID",
                      [this](_STREAMING_SETTING& setting) { CopyNumber(setting.server, server_); });
}
