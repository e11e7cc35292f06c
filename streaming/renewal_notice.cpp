#include "streaming/renewal_notice.h"

#include <cstdint>
#include <cstring>

#include "core/daemon_socket.h"
#include "core/dlog.h"
#include "core/message.h"

namespace {

constexpr std::uint8_t kRenewalClass = 1;
constexpr std::uint8_t kRenewalCode = 1;
constexpr std::uint16_t kPayloadLength = 1;
constexpr unsigned char kControlDaemonIndex = 2;

}  // namespace

int RenewSetting(int renew_reconnect) {
  MessageHeader header;
  header.message_class = kRenewalClass;
  header.payload_length = kPayloadLength;
  header.command_code = kRenewalCode;
  header.streaming_flag = 1;
  unsigned char notice[kMessageHeaderSize + kPayloadLength];
  std::memcpy(notice, &header, sizeof header);
  notice[kMessageHeaderSize] = renew_reconnect == 1 ? 1 : 0;

  DLOG(2, "##### RenewSetting socket_send_msg() renew_reconnect %d", renew_reconnect);
  socket_send_msg(notice, sizeof notice, kControlDaemonIndex);
  return 0;
}
