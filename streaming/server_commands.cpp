// The commands of the streaming servers' settings files.
#include <cstdint>
#include <iterator>

#include "core/cmd/streaming.h"
#include "core/dlog.h"
#include "core/parameters.h"
#include "core/text.h"
#include "streaming/capability_tables.h"
#include "streaming/streaming_settings.h"

namespace {

/// Stores a text parameter. It has the size of its field: it is cut once, when it is read.
template <std::size_t Size>
void Store(char (&field)[Size], const char (&parameter)[Size]) {
  CopyText(field, parameter);
}

/// Stores a number parameter.
template <std::size_t Size>
void Store(char (&field)[Size], std::int32_t parameter) {
  CopyNumber(field, parameter);
}

}  // namespace

int SetStreamingServerSettings::Parse(const char* params) {
  type_ = IndexOfName(streaming_type_table, transport_);
  if (!ReadParameter(params, "ID", server_no_) || !ReadParameter(params, "Alias", alias_) ||
      !ReadTransport(params)) {
    return -1;
  }
  DLOG(2, "##### SetStreamingServerSettings%s Parse() params=%s", transport_, params);
  return 0;
}

void SetStreamingServerSettings::Transmit() {
  const StreamingServerPath path(server_no_);
  kStreamingServerFile.Update(path.Text(), [this](_STREAMING_SERVER_SETTING& server) {
    Store(server.str_alias, alias_);
    Store(server.type, type_);
    StoreTransport(server);
  });
}

bool SetStreamingServerSettings::ReadTransport(const char* /*params*/) { return true; }

void SetStreamingServerSettings::StoreTransport(_STREAMING_SERVER_SETTING& /*server*/) const {}

bool SetStreamingServerSettingsUDP::ReadTransport(const char* params) {
  return ReadParameter(params, "DstAddress", dst_address_) &&
         ReadParameter(params, "DstPort", dst_port_) &&
         ReadParameter(params, "PcrJitter", pcr_jitter_);
}

void SetStreamingServerSettingsUDP::StoreTransport(_STREAMING_SERVER_SETTING& server) const {
  Store(server.udp_dst_address, dst_address_);
  Store(server.udp_dst_port, dst_port_);
  Store(server.udp_pcr_jitter, pcr_jitter_);
}

bool SetStreamingServerSettingsTCP::ReadTransport(const char* params) {
  return ReadParameter(params, "DstAddress", dst_address_) &&
         ReadParameter(params, "DstPort", dst_port_);
}

void SetStreamingServerSettingsTCP::StoreTransport(_STREAMING_SERVER_SETTING& server) const {
  Store(server.udp_dst_address, dst_address_);
  Store(server.udp_dst_port, dst_port_);
}

bool SetStreamingServerSettingsRTSP::ReadTransport(const char* params) {
  return ReadParameter(params, "Password", password_);
}

void SetStreamingServerSettingsRTSP::StoreTransport(_STREAMING_SERVER_SETTING& server) const {
  Store(server.rtsp_password, password_);
}

bool SetStreamingServerSettingsZIXI::ReadTransport(const char* params) {
  return ReadParameter(params, "DstAddress", dst_address_) &&
         ReadParameter(params, "DstPort", dst_port_) &&
         ReadParameter(params, "StreamId", stream_id_) &&
         ReadParameter(params, "Password", password_) &&
         ReadParameter(params, "Latency", latency_) &&
         ReadParameter(params, "AdaptiveBitrate", adaptive_bitrate_);
}

void SetStreamingServerSettingsZIXI::StoreTransport(_STREAMING_SERVER_SETTING& server) const {
  Store(server.zixi_dst_address, dst_address_);
  Store(server.zixi_dst_port, dst_port_);
  Store(server.zixi_stream_id, stream_id_);
  Store(server.zixi_password, password_);
  Store(server.zixi_latency, latency_);
  Store(server.zixi_adaptive_bitrate, adaptive_bitrate_);
  DLOG(2,
       "##### SetStreamingServerSettingsZIXI Transmit() m_server_no=%d m_alias=%s m_type=%s "
       "m_ip=%s m_port=%d m_sid=%s m_pas=%s m_lat=%d m_abt=%d",
       server_no_, server.str_alias, server.type, dst_address_, dst_port_, stream_id_, password_,
       latency_, adaptive_bitrate_);
}

bool SetStreamingServerSettingsRTMP::ReadTransport(const char* params) {
  return ReadParameter(params, "DstUrl", dst_url_) &&
         ReadParameter(params, "StreamKey", stream_key_);
}

void SetStreamingServerSettingsRTMP::StoreTransport(_STREAMING_SERVER_SETTING& server) const {
  Store(server.rtmp_destination_url, dst_url_);
  Store(server.rtmp_stream_key, stream_key_);
}

bool SetStreamingServerSettingsRTP::ReadTransport(const char* params) {
  return ReadParameter(params, "DstAddress", dst_address_) &&
         ReadParameter(params, "DstPort", dst_port_) &&
         ReadParameter(params, "Smpte2022Fec", smpte2022_fec_) &&
         ReadParameter(params, "FecMatrixL", fec_matrix_l_) &&
         ReadParameter(params, "FecMatrixD", fec_matrix_d_);
}

void SetStreamingServerSettingsRTP::StoreTransport(_STREAMING_SERVER_SETTING& server) const {
  Store(server.udp_dst_address, dst_address_);
  Store(server.rtp_dst_port, dst_port_);
  Store(server.rtp_smpte2022_fec, smpte2022_fec_);
  Store(server.rtp_fec_matrix_l, fec_matrix_l_);
  Store(server.rtp_fec_matrix_d, fec_matrix_d_);
}

namespace {

void ReportUdp(JsonWriter& data, const _STREAMING_SERVER_SETTING& server) {
  data.BeginObject("Udp");
  data.Text("DstAddress", server.udp_dst_address);
  data.Bare("DstPort", server.udp_dst_port);
  data.Bare("PcrJitter", server.udp_pcr_jitter);
}

void ReportTcp(JsonWriter& data, const _STREAMING_SERVER_SETTING& server) {
  data.BeginObject("Tcp");
  data.Text("DstAddress", server.tcp_dst_address);
  data.Bare("DstPort", server.tcp_dst_port);
}

void ReportRtsp(JsonWriter& data, const _STREAMING_SERVER_SETTING& server) {
  data.BeginObject("Rtsp");
  data.Bare("DstPort", server.rtsp_dst_port);
  data.Text("StreamId", server.rtsp_stream_id);
  data.Text("Username", server.rtsp_username);
  data.Text("Password", server.rtsp_password);
}

void ReportZixi(JsonWriter& data, const _STREAMING_SERVER_SETTING& server) {
  data.BeginObject("Zixi");
  data.Text("DstAddress", server.zixi_dst_address);
  data.Bare("DstPort", server.zixi_dst_port);
  data.Text("StreamId", server.zixi_stream_id);
  data.Text("Password", server.zixi_password);
  data.Bare("Latency", server.zixi_latency);
  data.Bare("AdaptiveBitrate", server.zixi_adaptive_bitrate);
}

void ReportRtmp(JsonWriter& data, const _STREAMING_SERVER_SETTING& server) {
  data.BeginObject("Rtmp");
  data.Text("DstUrl", server.rtmp_destination_url);
  data.Text("StreamKey", server.rtmp_stream_key);
}

void ReportRtp(JsonWriter& data, const _STREAMING_SERVER_SETTING& server) {
  data.BeginObject("Rtp");
  data.Text("DstAddress", server.rtp_dst_address);
  data.Bare("DstPort", server.rtp_dst_port);
  data.Bare("Smpte2022Fec", server.rtp_smpte2022_fec);
  data.Bare("FecMatrixL", server.rtp_fec_matrix_l);
  data.Bare("FecMatrixD", server.rtp_fec_matrix_d);
}

/// By the index of the transport in `streaming_type_table`. Each leaves its object open.
constexpr void (*kReports[])(JsonWriter& data, const _STREAMING_SERVER_SETTING& server) = {
    ReportUdp, ReportTcp, ReportRtsp, ReportZixi, ReportRtmp, ReportRtp};

}  // namespace

int GetStreamingServerSettings::Parse(const char* params) {
  // On purpose, this line has the name of the command for the streaming format.
  DLOG(2, "##### GetStreamingSettings Parse() params=%s", params);
  return ReadParameter(params, "ID", server_no_) ? 0 : -1;
}

void GetStreamingServerSettings::Output() {
  const StreamingServerPath path(server_no_);
  _STREAMING_SERVER_SETTING server;
  ReadStreamingServerSetting(path.Text(), &server);
  const std::int32_t type = ParseInt32(server.type);
  JsonWriter& data = AddData();
  if (type >= 0 && static_cast<std::size_t>(type) < std::size(kReports)) {
    data.Text("Alias", server.str_alias);
    data.Text("Type", NameAt(streaming_type_table, type));
    kReports[type](data, server);
    data.EndObject();
  }
  Command::Output();
}
