// Tells the camera control daemon that settings files have changed.
#pragma once

/// Sends the renewal notice, a message of 13 bytes that makes the control daemon read the settings
/// files again. It has no reply. If the daemon cannot be reached, the process ends (see
/// `socket_send_msg`).
///
/// Header: class 1, code 1, payload length 1, streaming flag 1, sender 0. Payload: one byte, 1 if
/// the daemon must reconnect its stream.
///
/// @param renew_reconnect  1 sets the payload to 1, any other value to 0
/// @return 0
int RenewSetting(int renew_reconnect);
