// Commands of the live stream: its format, what the camera can stream, and the servers that it
// streams to. None of them talks to a daemon for an answer: they read settings files and the camera
// status block, and those that change a file tell the control daemon with a renewal notice.
//
// The Set commands store what they are given. Without "Params" they store zeros and empty texts.
#pragma once

#include <cstdint>
#include <optional>

#include "core/cmd/command.h"

struct _STREAMING_SERVER_SETTING;

/// Reports the streaming format as the names "Resolution", "Framerate" and "Bitrate"; a setting
/// that is none of the known ones is an empty name.
class GetStreamingSettings : public LocalCommand {
 public:
  void Output() override;
};

/// Sets resolution and bit rate.
///
/// Parameters "Resolution", a name of `resolution_table`, and "Bitrate", a name of `bitrate_table`.
/// An unknown resolution is stored as the number behind the last one, 7; an unknown bit rate as
/// code 0. Both then read back as empty names. Missing: "RequestedError".
class SetStreamingSettings : public Command {
 public:
  int Parse(const char* params) override;
  void Transmit() override;

 private:
  std::int32_t resolution_ = 0;
  std::optional<std::int32_t> bitrate_code_;
};

/// Sets the resolution: parameter "Resolution" as in `SetStreamingSettings`.
class SetStreamingResolution : public Command {
 public:
  int Parse(const char* params) override;
  void Transmit() override;

 private:
  std::int32_t resolution_ = 0;
};

/// Sets the frame rate and keeps the bit rate.
///
/// Parameter "Framerate": a name of `framerate_table`; an unknown one is stored as 6 and reads back
/// as an empty name. Missing: "RequestedError".
class SetStreamingFramerate : public Command {
 public:
  int Parse(const char* params) override;
  void Transmit() override;

 private:
  std::optional<std::int32_t> framerate_;
};

/// Sets the bit rate and keeps the frame rate: parameter "Bitrate" as in `SetStreamingSettings`.
class SetStreamingBitrate : public Command {
 public:
  int Parse(const char* params) override;
  void Transmit() override;

 private:
  std::optional<std::int32_t> bitrate_code_;
};

/// Reports which resolutions the camera can stream now: one flag for each.
class AvailableStreamingResolutionSettings : public LocalCommand {
 public:
  void Output() override;
};

/// Reports which frame rates the camera can stream now at one resolution: one flag for each.
///
/// Parameter "Resolution": a name of `resolution_table`. Missing or unknown: "RequestedError".
class AvailableStreamingFramerateSettings : public LocalCommand {
 public:
  int Parse(const char* params) override;
  void Output() override;

 private:
  std::int32_t resolution_ = 0;
};

/// Reports which bit rates the camera can stream now: one flag for each.
///
/// Parameters "Type", a name of `streaming_type_zixi_separate_table`, "Resolution", a name of
/// `resolution_table`, and "Framerate", a name of `framerate_table`. One missing or unknown:
/// "RequestedError".
class AvailableStreamingBitrateSettings : public LocalCommand {
 public:
  int Parse(const char* params) override;
  void Output() override;

 private:
  std::int32_t type_ = 0;
  std::int32_t resolution_ = 0;
  std::int32_t framerate_ = 0;
};

/// Base of the commands that set a streaming server's parameters for one transport and choose that
/// transport for it.
///
/// Parameters "ID", the server's number (any), "Alias", its name, then those of the transport; the
/// texts are cut to the fields that they are stored in. One missing: "RequestedError", and no file
/// is touched. The settings of all other transports stay as they are.
class SetStreamingServerSettings : public Command {
 public:
  int Parse(const char* params) override;
  void Transmit() override;

 protected:
  /// @param transport  name of the transport in `streaming_type_table`
  explicit SetStreamingServerSettings(const char* transport) : transport_(transport) {}

  /// Reads the parameters of the transport.
  /// @return false when one is missing
  virtual bool ReadTransport(const char* params);

  /// Stores them in the server's settings, where number, alias and type already stand.
  virtual void StoreTransport(_STREAMING_SERVER_SETTING& server) const;

  std::int32_t server_no_ = 0;

 private:
  const char* transport_;
  char alias_[256] = {};
  std::int32_t type_ = 0;  ///< stays 0, UDP, when there are no parameters
};

/// Streaming over UDP: "DstAddress", "DstPort" and "PcrJitter".
class SetStreamingServerSettingsUDP : public SetStreamingServerSettings {
 public:
  SetStreamingServerSettingsUDP() : SetStreamingServerSettings("UDP") {}

 protected:
  bool ReadTransport(const char* params) override;
  void StoreTransport(_STREAMING_SERVER_SETTING& server) const override;

 private:
  char dst_address_[130] = {};
  std::int32_t dst_port_ = 0;
  std::int32_t pcr_jitter_ = 0;
};

/// Streaming over TCP: "DstAddress" and "DstPort". Both are stored, on purpose, where UDP has its
/// own; those of TCP are never changed. No command name leads here: clients cannot choose TCP.
class SetStreamingServerSettingsTCP : public SetStreamingServerSettings {
 public:
  SetStreamingServerSettingsTCP() : SetStreamingServerSettings("TCP") {}

 protected:
  bool ReadTransport(const char* params) override;
  void StoreTransport(_STREAMING_SERVER_SETTING& server) const override;

 private:
  char dst_address_[130] = {};
  std::int32_t dst_port_ = 0;
};

/// Streaming over RTSP: "Password". Port, stream id and user name are not the client's to set.
class SetStreamingServerSettingsRTSP : public SetStreamingServerSettings {
 public:
  SetStreamingServerSettingsRTSP() : SetStreamingServerSettings("RTSP") {}

 protected:
  bool ReadTransport(const char* params) override;
  void StoreTransport(_STREAMING_SERVER_SETTING& server) const override;

 private:
  char password_[40] = {};
};

/// Streaming over ZIXI: "DstAddress", "DstPort", "StreamId", "Password", "Latency" and
/// "AdaptiveBitrate". The user name is not the client's to set.
class SetStreamingServerSettingsZIXI : public SetStreamingServerSettings {
 public:
  SetStreamingServerSettingsZIXI() : SetStreamingServerSettings("ZIXI") {}

 protected:
  bool ReadTransport(const char* params) override;
  void StoreTransport(_STREAMING_SERVER_SETTING& server) const override;

 private:
  char dst_address_[130] = {};
  std::int32_t dst_port_ = 0;
  char stream_id_[70] = {};
  char password_[130] = {};
  std::int32_t latency_ = 0;
  std::int32_t adaptive_bitrate_ = 0;
};

/// Streaming over RTMP: "DstUrl" and "StreamKey".
class SetStreamingServerSettingsRTMP : public SetStreamingServerSettings {
 public:
  SetStreamingServerSettingsRTMP() : SetStreamingServerSettings("RTMP") {}

 protected:
  bool ReadTransport(const char* params) override;
  void StoreTransport(_STREAMING_SERVER_SETTING& server) const override;

 private:
  char dst_url_[200] = {};
  char stream_key_[70] = {};
};

/// Streaming over RTP: "DstAddress", "DstPort", "Smpte2022Fec", "FecMatrixL" and "FecMatrixD". The
/// address is stored, on purpose, where UDP has its own; that of RTP is never changed.
class SetStreamingServerSettingsRTP : public SetStreamingServerSettings {
 public:
  SetStreamingServerSettingsRTP() : SetStreamingServerSettings("RTP") {}

 protected:
  bool ReadTransport(const char* params) override;
  void StoreTransport(_STREAMING_SERVER_SETTING& server) const override;

 private:
  char dst_address_[130] = {};
  std::int32_t dst_port_ = 0;
  std::int32_t smpte2022_fec_ = 0;
  std::int32_t fec_matrix_l_ = 0;
  std::int32_t fec_matrix_d_ = 0;
};

/// Reports a streaming server's name, its transport and the settings of that transport, as they are
/// stored; nothing when the stored transport is none of the known ones.
///
/// Parameter "ID": the server's number. Missing: "RequestedError".
class GetStreamingServerSettings : public LocalCommand {
 public:
  int Parse(const char* params) override;
  void Output() override;

 private:
  std::int32_t server_no_ = 0;
};

/// Reports the number of the current streaming server, as it is stored.
class GetCurrentStreamingServerID : public LocalCommand {
 public:
  void Output() override;
};

/// Chooses the current streaming server.
///
/// Parameter "ID": its number, below 4; negative ones pass. Missing or above: "RequestedError".
class SetCurrentStreamingServerID : public Command {
 public:
  int Parse(const char* params) override;
  void Transmit() override;

 private:
  std::int32_t server_ = 0;
};
