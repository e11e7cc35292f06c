// Exchanges messages with the camera's resident daemons over Unix-domain stream sockets. If a
// daemon cannot be reached, or closes before the message is written, the process ends (see
// `Fatal`).
#pragma once

#include <cstdint>

#include "core/message.h"
#include "core/os.h"

/// For each step of an exchange: connecting and sending, the reply's header, its payload.
constexpr std::uint8_t kDefaultTimeoutSeconds = 5;

/// Where the camera control daemon listens.
extern const char kControlDaemonPath[];

/// Sends one message to a daemon and receives its reply.
/// @param daemon_path  of the daemon's socket
/// @param timeout      for connecting and sending, and once each for the reply's header and payload
/// @param header       sent alone if `message` is not set, otherwise before its payload
/// @param message      the payload to send; released after it has been sent
/// @param reply        receives the payload bytes that arrive, at most the length that the reply's
///                     header announces
/// @return false if the time-out passed before the whole reply arrived. A daemon that closes the
///         connection early has not timed out.
bool ExchangeMessages(const char* daemon_path, os::Timeout timeout, const MessageHeader& header,
                      OutgoingMessage& message, ByteBuffer& reply);

/// Sends one message to a daemon without waiting for a reply.
/// @param msg     the whole message
/// @param length  its length in bytes; 0 is logged and nothing is sent
/// @param index   of the daemon: 0 USB, 1 web, 2 camera control, 3 network
void socket_send_msg(const unsigned char* msg, unsigned short length, unsigned char index);
