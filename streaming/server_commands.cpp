// The commands of the streaming servers' settings files.
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>

#include "core/cmd/streaming.h"
#include "core/dlog.h"
#include "core/parameters.h"
#include "core/text.h"
#include "streaming/capability_tables.h"
#include "streaming/streaming_settings.h"

namespace {

enum class Kind : std::uint8_t { kText, kNumber };

/// The place of a value in `_STREAMING_SERVER_SETTING`.
struct Field {
  std::size_t offset;
  std::size_t capacity;  ///< including the terminating NUL
};

#define FIELD(name) \
  Field { offsetof(_STREAMING_SERVER_SETTING, name), sizeof(_STREAMING_SERVER_SETTING::name) }

/// In place of the field that a parameter is stored in: clients cannot set it.
constexpr Field kReadOnly = {0, 0};

/// A parameter of a transport, by its key in requests and replies.
struct Parameter {
  [[nodiscard]] bool CanBeSet() const { return stored.capacity > 0; }

  char key[16];
  Kind kind;
  Field reported;  ///< what `GetStreamingServerSettings` reads
  Field stored;    ///< what the Set commands write
};

struct Transport {
  char key[8];  ///< of its object in the reply
  std::initializer_list<Parameter> parameters;
};

/// By the index of the transport in `streaming_type_table`.
constexpr Transport kTransports[] = {
    {"Udp",
     {{"DstAddress", Kind::kText, FIELD(udp_dst_address), FIELD(udp_dst_address)},
      {"DstPort", Kind::kNumber, FIELD(udp_dst_port), FIELD(udp_dst_port)},
      {"PcrJitter", Kind::kNumber, FIELD(udp_pcr_jitter), FIELD(udp_pcr_jitter)}}},
    {"Tcp",
     {{"DstAddress", Kind::kText, FIELD(tcp_dst_address), FIELD(udp_dst_address)},
      {"DstPort", Kind::kNumber, FIELD(tcp_dst_port), FIELD(udp_dst_port)}}},
    {"Rtsp",
     {{"DstPort", Kind::kNumber, FIELD(rtsp_dst_port), kReadOnly},
      {"StreamId", Kind::kText, FIELD(rtsp_stream_id), kReadOnly},
      {"Username", Kind::kText, FIELD(rtsp_username), kReadOnly},
      {"Password", Kind::kText, FIELD(rtsp_password), FIELD(rtsp_password)}}},
    {"Zixi",
     {{"DstAddress", Kind::kText, FIELD(zixi_dst_address), FIELD(zixi_dst_address)},
      {"DstPort", Kind::kNumber, FIELD(zixi_dst_port), FIELD(zixi_dst_port)},
      {"StreamId", Kind::kText, FIELD(zixi_stream_id), FIELD(zixi_stream_id)},
      {"Password", Kind::kText, FIELD(zixi_password), FIELD(zixi_password)},
      {"Latency", Kind::kNumber, FIELD(zixi_latency), FIELD(zixi_latency)},
      {"AdaptiveBitrate", Kind::kNumber, FIELD(zixi_adaptive_bitrate),
       FIELD(zixi_adaptive_bitrate)}}},
    {"Rtmp",
     {{"DstUrl", Kind::kText, FIELD(rtmp_destination_url), FIELD(rtmp_destination_url)},
      {"StreamKey", Kind::kText, FIELD(rtmp_stream_key), FIELD(rtmp_stream_key)}}},
    {"Rtp",
     {{"DstAddress", Kind::kText, FIELD(rtp_dst_address), FIELD(udp_dst_address)},
      {"DstPort", Kind::kNumber, FIELD(rtp_dst_port), FIELD(rtp_dst_port)},
      {"Smpte2022Fec", Kind::kNumber, FIELD(rtp_smpte2022_fec), FIELD(rtp_smpte2022_fec)},
      {"FecMatrixL", Kind::kNumber, FIELD(rtp_fec_matrix_l), FIELD(rtp_fec_matrix_l)},
      {"FecMatrixD", Kind::kNumber, FIELD(rtp_fec_matrix_d), FIELD(rtp_fec_matrix_d)}}},
};

/// Reads a parameter as the text that is stored, truncated to its field.
bool ReadValue(const char* params, const Parameter& parameter, StreamingServerValue& value) {
  if (parameter.kind == Kind::kText) {
    return json_parser(params, parameter.key, {value, parameter.stored.capacity}) != nullptr;
  }
  std::int32_t number = 0;
  const bool found = ReadParameter(params, parameter.key, number);
  CopyNumber(value, number);
  return found;
}

}  // namespace

SetStreamingServerSettings::SetStreamingServerSettings(StreamingTransport transport)
    : transport_(transport) {
  StreamingServerValue* value = values_;
  for (const Parameter& parameter : kTransports[transport_].parameters) {
    CopyText(*value++, parameter.kind == Kind::kNumber ? "0" : "");
  }
}

int SetStreamingServerSettings::Parse(const char* params) {
  type_ = transport_;
  if (!ReadParameters(params, "ID", server_no_, "Alias", alias_)) {
    return -1;
  }
  StreamingServerValue* value = values_;
  for (const Parameter& parameter : kTransports[transport_].parameters) {
    if (parameter.CanBeSet() && !ReadValue(params, parameter, *value)) {
      return -1;
    }
    ++value;
  }
  DLOG(2, "##### SetStreamingServerSettings%s Parse() params=%s", streaming_type_table[transport_],
       params);
  return 0;
}

void SetStreamingServerSettings::Transmit() {
  const StreamingServerPath path(server_no_);
  kStreamingServerFile.Update(path.Text(), [this](_STREAMING_SERVER_SETTING& server) {
    CopyText(server.str_alias, alias_);
    CopyNumber(server.type, type_);
    const StreamingServerValue* value = values_;
    for (const Parameter& parameter : kTransports[transport_].parameters) {
      const Field field = parameter.stored;
      if (parameter.CanBeSet()) {
        CopyText(reinterpret_cast<char*>(&server) + field.offset, field.capacity, *value);
      }
      ++value;
    }
    if (transport_ == kStreamingZixi) {
      DLOG(2,
           "##### SetStreamingServerSettingsZIXI Transmit() m_server_no=%d m_alias=%s m_type=%s "
           "m_ip=%s m_port=%s m_sid=%s m_pas=%s m_lat=%s m_abt=%s",
           server_no_, server.str_alias, server.type, values_[0], values_[1], values_[2],
           values_[3], values_[4], values_[5]);
    }
  });
}

int GetStreamingServerSettings::Parse(const char* params) {
  // This line deliberately names the command for the streaming format.
  DLOG(2, "##### GetStreamingSettings Parse() params=%s", params);
  return ReadParameter(params, "ID", server_no_) ? 0 : -1;
}

void GetStreamingServerSettings::Output() {
  const StreamingServerPath path(server_no_);
  _STREAMING_SERVER_SETTING server;
  ReadStreamingServerSetting(path.Text(), &server);
  const std::int32_t type = ParseInt32(server.type);
  JsonWriter& data = AddData();
  if (type >= 0 && static_cast<std::size_t>(type) < std::size(kTransports)) {
    const Transport& row = kTransports[type];
    data.Text("Alias", server.str_alias);
    data.Text("Type", streaming_type_table[type]);
    data.BeginObject(row.key);
    for (const Parameter& parameter : row.parameters) {
      const char* const value = reinterpret_cast<const char*>(&server) + parameter.reported.offset;
      if (parameter.kind == Kind::kText) {
        data.Text(parameter.key, value);
      } else {
        data.Bare(parameter.key, value);
      }
    }
    data.EndObject();
  }
  Command::Output();
}
