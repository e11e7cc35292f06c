// Conversations with the camera's resident daemons over Unix-domain stream sockets.
#pragma once

#include <sys/un.h>

#include <cstdint>

#include "core/message.h"
#include "core/os.h"

/// Where the camera control daemon listens.
extern const char kControlDaemonPath[];

/// The standard socket address for a path; a longer path is cut to what the address holds.
sockaddr_un DaemonAddress(const char* path_of_socket);

/// Sends one message to a daemon and receives its reply.
///
/// A daemon that cannot be connected, or that is gone when the message is written, ends the
/// process (see `Fatal`).
///
/// @param address       of the daemon's socket
/// @param timeout       for connecting and sending, and once each for the reply's header and
///                      payload
/// @param header        sent alone when `message` is not set, otherwise in front of its payload
/// @param message       the payload to send; released once it has been sent
/// @param reply_header  receives the header of the reply; what did not arrive is zero
/// @param reply         receives the payload bytes that arrive, at most as many as the reply's
///                      header announces
/// @return false when the time-out passed before the whole reply arrived. A daemon that closes the
///         connection early has not timed out.
bool ExchangeMessages(const sockaddr_un& address, os::Timeout timeout, const MessageHeader& header,
                      OutgoingMessage& message, MessageHeader& reply_header, ByteBuffer& reply);

/// Sends one message to a daemon without waiting for a reply.
///
/// A daemon that cannot be connected, or that is gone when the message is written, ends the
/// process with status 1.
///
/// @param msg     the whole message
/// @param length  its length in bytes; with 0 nothing is sent and that is logged
/// @param index   of the daemon: 0 USB, 1 web, 2 camera control, 3 network
void socket_send_msg(const unsigned char* msg, unsigned short length, unsigned char index);
