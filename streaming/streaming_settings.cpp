#include "streaming/streaming_settings.h"

#include "core/text.h"
#include "streaming/capability_tables.h"

const char STREAMING_SETTING_PATH[] = "/var/tmp/lighttpd/streaming";
const char STREAMING_SERVER_SETTING_PATH[] = "/var/tmp/lighttpd/streaming_server";

namespace {

constexpr SettingTable kStreamingFields = {
    SETTING_FIELD(_STREAMING_SETTING, resolution, "0"),
    SETTING_FIELD(_STREAMING_SETTING, quality, "0"),
    SETTING_FIELD(_STREAMING_SETTING, server, "0"),
    SETTING_FIELD(_STREAMING_SETTING, rfresolution, "0"),
    SETTING_FIELD(_STREAMING_SETTING, cldstrmusername, "0"),
    SETTING_FIELD(_STREAMING_SETTING, cldstrmpassword, "0"),
    SETTING_FIELD(_STREAMING_SETTING, serverurl, "0"),
};

constexpr SettingTable kStreamingServerFields = {
    SETTING_FIELD(_STREAMING_SERVER_SETTING, str_alias, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, type, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, udp_dst_address, "0.0.0.0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, udp_dst_port, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, udp_pcr_jitter, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, tcp_dst_address, "0.0.0.0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, tcp_dst_port, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, zixi_dst_address, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, zixi_dst_port, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, zixi_stream_id, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, zixi_username, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, zixi_password, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, zixi_latency, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, zixi_adaptive_bitrate, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, rtsp_dst_port, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, rtsp_stream_id, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, rtsp_username, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, rtsp_password, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, rtmp_destination_url, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, rtmp_stream_key, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, rtp_dst_address, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, rtp_dst_port, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, rtp_smpte2022_fec, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, rtp_fec_matrix_l, "0"),
    SETTING_FIELD(_STREAMING_SERVER_SETTING, rtp_fec_matrix_d, "0"),
};

}  // namespace

constexpr SettingsFile<_STREAMING_SETTING> kStreamingFile(kStreamingFields);
constexpr SettingsFile<_STREAMING_SERVER_SETTING> kStreamingServerFile(kStreamingServerFields);

StreamingServerPath::StreamingServerPath(std::int32_t server) {
  Append(STREAMING_SERVER_SETTING_PATH);
  AppendNumber(server);
}

int ReadStreamingSetting(_STREAMING_SETTING* setting) {
  kStreamingFile.Read(STREAMING_SETTING_PATH, *setting);
  return 0;
}

int ReadStreamingServerSetting(const char* path, _STREAMING_SERVER_SETTING* setting) {
  kStreamingServerFile.Read(path, *setting);
  return 0;
}

int WriteStreamingServerSetting(const char* path, const _STREAMING_SERVER_SETTING* setting) {
  kStreamingServerFile.Write(path, *setting);
  return 0;
}

int SaveStreamingSettingsRTMP(std::int32_t server, const char* url, const char* stream_key,
                              const char* title) {
  kStreamingFile.Rewrite(STREAMING_SETTING_PATH, [server](_STREAMING_SETTING& setting) {
    CopyNumber(setting.server, server);
  });
  const StreamingServerPath path(server);
  kStreamingServerFile.Rewrite(path.Text(), [&](_STREAMING_SERVER_SETTING& setting) {
    CopyText(setting.str_alias, title);
    CopyNumber(setting.type, IndexOfName(streaming_type_table, "RTMP"));
    CopyText(setting.rtmp_destination_url, url);
    CopyText(setting.rtmp_stream_key, stream_key);
  });
  return RenewSetting(0);
}
