#include "core/daemon_socket.h"

#include <sys/socket.h>

#include <iterator>

#include "core/dlog.h"
#include "core/fatal.h"
#include "core/text.h"

const char kControlDaemonPath[] = "/var/run/quonta_cp.sock";

namespace {

constexpr int kErrorPriority = 3;
constexpr os::Timeout kOneWayTimeout = {5, 0};

/// The daemons that `socket_send_msg` reaches, by its index.
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
      SendOrEnd(socket, message.Bytes().Bytes(), message.Bytes().Size());
      message.Release();
    } else {
      SendOrEnd(socket, &header, sizeof header);
    }
  }
  os::Unlock(socket);
}

}  // namespace

sockaddr_un DaemonAddress(const char* path_of_socket) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  CopyText(address.sun_path, path_of_socket);
  return address;
}

bool ExchangeMessages(const sockaddr_un& address, os::Timeout timeout, const MessageHeader& header,
                      OutgoingMessage& message, ByteBuffer& reply) {
  const os::Descriptor socket = os::CreateStreamSocket(timeout);
  if (!socket.IsOpen()) {
    Fatal("Can't create a socket");
  }
  if (!os::Connect(socket, address)) {
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
  const os::Descriptor socket = os::CreateStreamSocket(kOneWayTimeout);
  if (!socket.IsOpen()) {
    Fatal("cmd:6363: Can't create a socket");
  }
  if (index >= std::size(path) || !os::Connect(socket, DaemonAddress(path[index]))) {
    LogToSystem(kErrorPriority, "error: socket connect error.\n");
    Fatal("cmd:6374: Can't connect SOCK_NAME");
  }
  if (length == 0) {
    LogToSystem(kErrorPriority, "error: invalid msg size !!\n");
    return;
  }
  SendOrEnd(socket, msg, length);
}
