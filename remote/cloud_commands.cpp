#include <algorithm>
#include <cstring>

#include "core/bytes.h"
#include "core/cmd/cloud.h"
#include "core/dlog.h"
#include "core/parameters.h"
#include "core/text.h"
#include "streaming/streaming_settings.h"

namespace {

constexpr char kStreamingDaemonPath[] = "/var/run/streaming.sock";

/// Code of the second request of the event list.
constexpr std::uint8_t kGetEvent = 103;

/// Payload of a login; unused bytes are zero.
struct LoginBlock {
  char user_name[128];
  char password[64];
  char server_url[128];
};
static_assert(sizeof(LoginBlock) == 320);

// The replies.
constexpr std::size_t kEventCount = 4;  // 16 bits, little-endian
constexpr TextField kEventTitle{4, 128};
constexpr TextField kStreamUrl{4, 192};
constexpr TextField kStreamKey{196, 64};
constexpr TextField kStreamTitle{260, 64};

constexpr std::int32_t kLastEvent = kMaxCloudEvents - 1;
constexpr std::int32_t kLastServer = 3;

/// A number limited to a range; traced under this name when that changes it.
std::int32_t Limit(std::int32_t number, std::int32_t last, const char* name) {
  const std::int32_t limited = std::clamp(number, std::int32_t{0}, last);
  if (limited != number) {
    DLOG(4, "--> %s=%d", name, limited);
  }
  return limited;
}

std::uint16_t LimitEvent(std::int32_t event_id) {
  return static_cast<std::uint16_t>(Limit(event_id, kLastEvent, "event_id"));
}

/// Copies and traces a text of the reply. It becomes a line of a settings file and must not add
/// another one, so it ends at its first byte below 0x20.
template <std::size_t Size>
void TakeText(const char* name, std::string_view text, char (&out)[Size]) {
  CopyText(out, text);
  DLOG(1, "%s: %s", name, out);
  char* end = out;
  while (static_cast<unsigned char>(*end) >= 0x20) {
    ++end;
  }
  *end = '\0';
}

}  // namespace

CloudCommand::CloudCommand() {
  daemon_path_ = kStreamingDaemonPath;
  request_header_.streaming_flag = 1;
}

void CloudCommand::SetNumberPayload(std::uint16_t number) {
  SetPayload({LowByte(number), HighByte(number), 0, 0});
}

int SetCldstrmLogin::Parse(const char* params) {
  LoginBlock login = {};
  if (!ReadParameters(params, "Username", login.user_name, "Password", login.password, "ServerURL",
                      login.server_url)) {
    return -1;
  }
  DLOG(4, "Username=%s", login.user_name);
  // Deliberately in plain text: service staff who raise the level look for mistyped passwords.
  DLOG(4, "Password=%s", login.password);
  DLOG(4, "ServerUrl=%s", login.server_url);
  if (login.user_name[0] == '\0' || login.server_url[0] == '\0') {
    return -1;
  }
  std::memcpy(NewPayload(sizeof login), &login, sizeof login);
  return 0;
}

void GetCldstrmEventList::Transmit() {
  Command::Transmit();
  const std::int32_t count = Reply().U16LittleEndian(kEventCount);
  DLOG(4, "m_event_num=%d", count);
  event_num_ = Limit(count, kMaxCloudEvents, "m_event_num");
  request_header_.command_code = kGetEvent;
  for (std::int32_t index = 0; index < event_num_; ++index) {
    if (daemon_timed_out_) {
      reply_.Release();
    } else {
      SetNumberPayload(static_cast<std::uint16_t>(index));
      Command::Transmit();
    }
    if (Reply().Size() == 0) {
      DLOG(1, "[%d] No m_rcv_res!!", index);
      continue;
    }
    char title[kEventTitle.width + 1];
    CopyText(title, Reply()[kEventTitle]);
    CopyText(titles_[index], title);
    DLOG(4, "[%d] Title: %s", index, title);
  }
}

void GetCldstrmEventList::Output() {
  JsonWriter& data = AddData();
  data.Number("EventNum", event_num_);
  if (event_num_ > 0) {
    data.BeginArray("EventInfo");
    for (std::int32_t index = 0; index < event_num_; ++index) {
      data.BeginElement();
      data.EscapedText("Title", titles_[index]);
      data.EndObject();
    }
    data.EndArray();
  }
  Command::Output();
}

int SetCldstrmStreamInfoObtain::Parse(const char* params) {
  std::int32_t event_id = 0;
  if (!ReadParameter(params, "EventID", event_id)) {
    return -1;
  }
  DLOG(4, "event_id=%d", event_id);
  SetNumberPayload(LimitEvent(event_id));
  return 0;
}

int SetCldstrmStreamInfoToStrmsrv::Parse(const char* params) {
  std::int32_t event_id = 0;
  if (!ReadParameters(params, "EventID", event_id, "StrmsrvID", strmsrv_id_)) {
    return -1;
  }
  DLOG(4, "event_id=%d  m_strmsrv_id=%d", event_id, strmsrv_id_);
  SetNumberPayload(LimitEvent(event_id));
  strmsrv_id_ = Limit(strmsrv_id_, kLastServer, "m_strmsrv_id");
  return 0;
}

void SetCldstrmStreamInfoToStrmsrv::Transmit() {
  Command::Transmit();
  const ByteView reply = Reply();
  if (reply.Size() == 0) {
    // A daemon that does not answer must not wipe a server's slot.
    result_ = 1;
  }
  if (result_ != 0) {
    return;
  }
  // The last byte of each field never belongs to the text.
  char url[kStreamUrl.width];
  char stream_key[kStreamKey.width];
  char title[kStreamTitle.width];
  TakeText("Url", reply[kStreamUrl], url);
  TakeText("StreamKey", reply[kStreamKey], stream_key);
  TakeText("Title", reply[kStreamTitle], title);
  SaveStreamingSettingsRTMP(strmsrv_id_, url, stream_key, title);
}

int SetCldstrmClearStatus::Parse(const char* params) {
  std::int32_t login = 0;
  std::int32_t event_list = 0;
  std::int32_t stream_info = 0;
  if (!ReadParameters(params, "Login", login, "GetEventList", event_list, "GetStreamInfo",
                      stream_info)) {
    return -1;
  }
  DLOG(4, "login=%d get_event_list=%d get_stream_info=%d", login, event_list, stream_info);
  SetPayload({LowByte(login), LowByte(event_list), LowByte(stream_info), 0});
  return 0;
}
