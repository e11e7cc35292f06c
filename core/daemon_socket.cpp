#include "core/daemon_socket.h"

#include <iterator>

#include "core/dlog.h"
#include "core/fatal.h"

const char kControlDaemonPath[] = "/var/run/quonta_cp.sock";

namespace {

/// The daemons of `socket_send_msg`, by index.
constexpr const char* path[] = {
    "/var/run/quonta_usb.sock",
    "/var/run/quonta_web.sock",
    kControlDaemonPath,
    "/var/run/quonta_nm.sock",
};

void SendOrEnd(const os::Descriptor& socket, const void* bytes, std::size_t length) {
  if (!os::SendAll(socket, bytes, length)) {
    Fatal("cannot send message.");
  }
}

void SendRequest(const os::Descriptor& socket, const MessageHeader& header,
                 OutgoingMessage& message) {
  if (os::Lock(socket)) {
    if (message.IsSet()) {
      message.SetHeader(header);
      SendOrEnd(socket, message.Bytes(), message.Size());
      message.Release();
    } else {
      SendOrEnd(socket, &header, sizeof header);
    }
  }
  os::Unlock(socket);
}

}  // namespace

bool ExchangeMessages(const char* daemon_path, os::Timeout timeout, const MessageHeader& header,
                      OutgoingMessage& message, ByteBuffer& reply) {
  const os::Descriptor socket = os::CreateStreamSocket(timeout);
  if (!socket.IsOpen()) {
    Fatal("Can't create a socket");
  }
  if (!os::Connect(socket, daemon_path)) {
    Fatal("cannot connect sockname.");
  }
  SendRequest(socket, header, message);

  reply.Release();
  MessageHeader reply_header;
  const os::Reception head = os::ReceiveAll(socket, &reply_header, sizeof reply_header, timeout);
  if (head.length < sizeof reply_header) {
    return !head.timed_out;
  }
  reply = ByteBuffer(reply_header.payload_length);
  const os::Reception payload = os::ReceiveAll(socket, reply.Bytes(), reply.Size(), timeout);
  reply.Truncate(payload.length);
  return !payload.timed_out;
}

void socket_send_msg(const unsigned char* msg, unsigned short length, unsigned char index) {
  const os::Descriptor socket = os::CreateStreamSocket({kDefaultTimeoutSeconds, 0});
  if (!socket.IsOpen()) {
    Fatal("cmd:6363: Can't create a socket");
  }
  if (index >= std::size(path) || !os::Connect(socket, path[index])) {
    LogToSystem(kLogError, "error: socket connect error.\n");
    Fatal("cmd:6374: Can't connect SOCK_NAME");
  }
  if (length == 0) {
    LogToSystem(kLogError, "error: invalid msg size !!\n");
    return;
  }
  SendOrEnd(socket, msg, length);
}
