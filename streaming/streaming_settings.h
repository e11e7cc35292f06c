// The settings files for streaming: one with the format and the current server, and one per
// streaming server. Numbers are stored in decimal.
#pragma once

#include <cstdint>

#include "core/text_builder.h"
#include "streaming/settings_file.h"

/// The streaming settings file.
struct _STREAMING_SETTING {
  char resolution[30];    ///< index of `resolution_table`
  char quality[30];       ///< see `StreamingQuality`
  char server[30];        ///< number of the current streaming server
  char rfresolution[30];  ///< recording format, 0 to 11; set by the camera
  char cldstrmusername[130];
  char cldstrmpassword[70];
  char serverurl[256];  ///< of the cloud streaming service
};

/// A streaming server's settings file: the parameters of every transport; `type` is the one in use.
struct _STREAMING_SERVER_SETTING {
  char str_alias[256];  ///< name that the client shows
  char type[30];        ///< index of `streaming_type_table`
  char udp_dst_address[130];
  char udp_dst_port[30];
  char udp_pcr_jitter[30];
  char tcp_dst_address[130];
  char tcp_dst_port[30];
  char zixi_dst_address[130];
  char zixi_dst_port[30];
  char zixi_stream_id[70];
  char zixi_username[70];
  char zixi_password[130];
  char zixi_latency[30];
  char zixi_adaptive_bitrate[30];
  char rtsp_dst_port[30];
  char rtsp_stream_id[70];
  char rtsp_username[70];
  char rtsp_password[40];
  char rtmp_destination_url[200];
  char rtmp_stream_key[70];
  char rtp_dst_address[130];
  char rtp_dst_port[30];
  char rtp_smpte2022_fec[30];
  char rtp_fec_matrix_l[30];
  char rtp_fec_matrix_d[30];
};

extern const char STREAMING_SETTING_PATH[];
/// A prefix: the number of the server follows.
extern const char STREAMING_SERVER_SETTING_PATH[];

extern const SettingsFile<_STREAMING_SETTING> kStreamingFile;
extern const SettingsFile<_STREAMING_SERVER_SETTING> kStreamingServerFile;

/// Path of the settings file of one streaming server; accepts any number.
struct StreamingServerPath : TextBuilder {
  explicit StreamingServerPath(std::int32_t server);
};

/// Reads the streaming settings (see `SettingsFile::Read`).
/// @return 0
int ReadStreamingSetting(_STREAMING_SETTING* setting);

/// Read and write one streaming server's settings.
/// @param path  see `StreamingServerPath`
/// @return 0
int ReadStreamingServerSetting(const char* path, _STREAMING_SERVER_SETTING* setting);
int WriteStreamingServerSetting(const char* path, const _STREAMING_SERVER_SETTING* setting);

/// Makes a server an RTMP destination and the current server. Rewrites both settings files, keeping
/// their other settings, and sends one renewal notice.
/// @return 0
int SaveStreamingSettingsRTMP(std::int32_t server, const char* url, const char* stream_key,
                              const char* title);

/// The streaming bit rate and frame rate, which the streaming settings hold as one number: the code
/// of the bit rate (see `bitrate_translate_table`) times 8, plus the index of the frame rate in
/// `framerate_table`. A negative number, which only a damaged file can hold, is split by C's
/// division.
struct StreamingQuality {
  explicit constexpr StreamingQuality(std::int32_t quality)
      : bitrate_code(quality / 8), framerate(quality % 8) {}
  constexpr StreamingQuality(std::int32_t code, std::int32_t framerate_index)
      : bitrate_code(code), framerate(framerate_index) {}

  [[nodiscard]] constexpr std::int32_t Value() const { return bitrate_code * 8 + framerate; }

  std::int32_t bitrate_code;
  std::int32_t framerate;
};
