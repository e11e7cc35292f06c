// Tells the camera control daemon that settings files have changed.
#pragma once

/// Sends the renewal notice: a message of 13 bytes to the control daemon, which reads the settings
/// files anew. No reply is awaited. Without the daemon the process ends (see `socket_send_msg`).
///
/// The message's header is class 1, code 1, payload length 1, a 1 at offset 5, no sender; its
/// payload is the one byte that says whether the daemon has to reconnect its stream.
///
/// @param renew_reconnect  1 sets that byte to 1, any other value to 0
/// @return 0
int RenewSetting(int renew_reconnect);
