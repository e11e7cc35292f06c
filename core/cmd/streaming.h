// Commands for the live stream: its format, the formats that the camera can stream, and the
// servers. The Get and Available commands read settings files and the camera status block; the Set
// commands change settings files and send the control daemon a renewal notice. None expects an
// answer from a daemon.
//
// If a parameter is missing, the reply is "RequestedError" and no file is touched. The Set commands
// do not validate values. Without "Params" they store zeros and empty texts.
#pragma once

#include <cstdint>
#include <optional>

#include "core/cmd/command.h"

/// Reports the streaming format as the names "Resolution", "Framerate" and "Bitrate"; the name of
/// an unknown setting is empty.
struct GetStreamingSettings : LocalCommand {
  void Output() override;
};

/// Base of the commands that set parts of the streaming format.
class StreamingFormatCommand : public Command {
 protected:
  std::int32_t resolution_ = 0;
  std::optional<std::int32_t> framerate_;
  std::optional<std::int32_t> bitrate_code_;
};

/// Sets resolution and bit rate.
/// Parameters "Resolution", a name of `resolution_table`, and "Bitrate", a name of `bitrate_table`.
/// An unknown resolution is stored as 7, one past the last index; an unknown bit rate as code 0.
/// Both then read back as empty names.
struct SetStreamingSettings : StreamingFormatCommand {
  int Parse(const char* params) override;
  void Transmit() override;
};

/// Sets the resolution: parameter "Resolution" as in `SetStreamingSettings`.
struct SetStreamingResolution : StreamingFormatCommand {
  int Parse(const char* params) override;
  void Transmit() override;
};

/// Sets the frame rate and keeps the bit rate.
/// Parameter "Framerate": a name of `framerate_table`; an unknown one is stored as 6 and reads back
/// as an empty name.
struct SetStreamingFramerate : StreamingFormatCommand {
  int Parse(const char* params) override;
  void Transmit() override;
};

/// Sets the bit rate and keeps the frame rate: parameter "Bitrate" as in `SetStreamingSettings`.
struct SetStreamingBitrate : StreamingFormatCommand {
  int Parse(const char* params) override;
  void Transmit() override;
};

/// Base of the commands that report what the camera can stream now.
class AvailableStreamingSettings : public LocalCommand {
 protected:
  // The parameters, as indexes of their tables.
  std::int32_t type_ = 0;
  std::int32_t resolution_ = 0;
  std::int32_t framerate_ = 0;
};

/// Reports a flag for each resolution: whether the camera can stream it now.
struct AvailableStreamingResolutionSettings : AvailableStreamingSettings {
  void Output() override;
};

/// Reports a flag for each frame rate: whether the camera can stream it now at one resolution.
/// Parameter "Resolution": a name of `resolution_table`. An unknown one gives "RequestedError".
struct AvailableStreamingFramerateSettings : AvailableStreamingSettings {
  int Parse(const char* params) override;
  void Output() override;
};

/// Reports a flag for each bit rate: whether the camera can stream it now.
/// Parameters "Type", a name of `streaming_type_zixi_separate_table`, "Resolution", a name of
/// `resolution_table`, and "Framerate", a name of `framerate_table`. An unknown one gives
/// "RequestedError".
struct AvailableStreamingBitrateSettings : AvailableStreamingSettings {
  int Parse(const char* params) override;
  void Output() override;
};

/// Indexes of the transports in `streaming_type_table`.
enum StreamingTransport : std::uint8_t {
  kStreamingUdp,
  kStreamingTcp,
  kStreamingRtsp,
  kStreamingZixi,
  kStreamingRtmp,
  kStreamingRtp,
};

/// A parameter of a transport, as it is stored; the longest one is the RTMP URL.
using StreamingServerValue = char[200];

/// Base of the commands that set a streaming server's parameters for one transport and choose that
/// transport for it.
/// Parameters "ID", the server's number (any), "Alias", its name, then those of the transport; the
/// texts are truncated to the fields that they are stored in. The settings of all other transports
/// are kept.
class SetStreamingServerSettings : public Command {
 public:
  int Parse(const char* params) override;
  void Transmit() override;

 protected:
  explicit SetStreamingServerSettings(StreamingTransport transport);

 private:
  StreamingTransport transport_;
  std::int32_t server_no_ = 0;
  char alias_[256] = {};
  std::int32_t type_ = kStreamingUdp;  ///< stays UDP without "Params"
  StreamingServerValue values_[6];     ///< in the order of the transport's parameters
};

template <StreamingTransport kTransport>
struct SetStreamingServerSettingsOf : SetStreamingServerSettings {
  SetStreamingServerSettingsOf() : SetStreamingServerSettings(kTransport) {}
};

/// "DstAddress", "DstPort" and "PcrJitter".
using SetStreamingServerSettingsUDP = SetStreamingServerSettingsOf<kStreamingUdp>;
/// "DstAddress" and "DstPort". Both are deliberately stored in the fields of UDP; those of TCP
/// never change. No command name leads here: clients cannot choose TCP.
using SetStreamingServerSettingsTCP = SetStreamingServerSettingsOf<kStreamingTcp>;
/// "Password". Clients cannot set the port, stream id and user name.
using SetStreamingServerSettingsRTSP = SetStreamingServerSettingsOf<kStreamingRtsp>;
/// "DstAddress", "DstPort", "StreamId", "Password", "Latency" and "AdaptiveBitrate". Clients cannot
/// set the user name.
using SetStreamingServerSettingsZIXI = SetStreamingServerSettingsOf<kStreamingZixi>;
/// "DstUrl" and "StreamKey".
using SetStreamingServerSettingsRTMP = SetStreamingServerSettingsOf<kStreamingRtmp>;
/// "DstAddress", "DstPort", "Smpte2022Fec", "FecMatrixL" and "FecMatrixD". The address is
/// deliberately stored in the field of UDP; that of RTP never changes.
using SetStreamingServerSettingsRTP = SetStreamingServerSettingsOf<kStreamingRtp>;

/// Reports the stored name, transport and transport settings of a streaming server; nothing if the
/// stored transport is unknown. Parameter "ID": the server's number.
class GetStreamingServerSettings : public LocalCommand {
 public:
  int Parse(const char* params) override;
  void Output() override;

 private:
  std::int32_t server_no_ = 0;
};

/// Reports the stored number of the current streaming server.
struct GetCurrentStreamingServerID : LocalCommand {
  void Output() override;
};

/// Chooses the current streaming server.
/// Parameter "ID": its number. One above 3 gives "RequestedError"; negative ones are accepted.
class SetCurrentStreamingServerID : public Command {
 public:
  int Parse(const char* params) override;
  void Transmit() override;

 private:
  std::int32_t server_ = 0;
};
