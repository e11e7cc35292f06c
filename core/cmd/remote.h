// Commands that operate the camera: keys and buttons, tally lamps, sliders and switches, recording,
// zoom, the live picture's encoder and the position receiver. Each sends one message to the camera
// control daemon and replies with the daemon's result, all but the last without data. A missing
// parameter, and a control or key that the remote event table does not know, reject the request.
#pragma once

#include "core/cmd/command.h"

// Keys and buttons.

/// Base of the commands that press one key of one control: two names, looked up in the remote event
/// table, become two codes.
///
/// Payload: kind code, key code.
class KeyCommand : public Command {
 protected:
  /// Looks the pair up and makes its codes the payload.
  /// @return 0, or -1 when there is no such pair
  int Press(const char* kind, const char* key);

  /// The same; logs names and codes of a pair that was found.
  /// @param label  what the log calls the key
  int PressAndLog(const char* kind, const char* key, const char* label = "button");

  /// The same for a control and a key that are both parameters: "Kind" and `key_parameter`.
  int PressParameters(const char* params, const char* key_parameter, const char* label);
};

/// Presses a key of a control. Parameters "Kind" and "Key": names as in the remote event table.
class SetWebKeyEvent : public KeyCommand {
 public:
  int Parse(const char* params) override;
};

/// Presses a button. Parameters "Kind" and "Button": names as in the remote event table.
class SetWebButtonEvent : public KeyCommand {
 public:
  int Parse(const char* params) override;
};

/// Asks for an action of the system. Parameter "Request": "Resume".
class SystemRequest : public KeyCommand {
 public:
  int Parse(const char* params) override;
};

/// Starts or stops the return audio (IFB). Parameter "Streaming": "Start" starts, any other word
/// stops.
class SetIFBCtrl : public KeyCommand {
 public:
  int Parse(const char* params) override;
};

/// Starts or stops live streaming. Parameter "Streaming": "On" starts, any other word stops.
class SetStreamingCtrl : public KeyCommand {
 public:
  int Parse(const char* params) override;
};

// Tally. Each command takes any key of its control, so a lamp can also be switched by the priority
// command and the other way round.

/// Gives the control of the tally lamp to one side. Parameter "Priority": "Camera" or "Web".
class SetTallyLampPriority : public KeyCommand {
 public:
  int Parse(const char* params) override;
};

/// Switches the tally lamp. Parameter "Sw": "On" or "Off".
class SetTallyLampCtrl : public KeyCommand {
 public:
  int Parse(const char* params) override;
};

/// Switches the tally lamp and takes its control for the web side. Parameter "Sw": "On" or "Off".
class SetTallyControlWithPriority : public KeyCommand {
 public:
  int Parse(const char* params) override;
};

/// Sets the studio tally. Parameter "Indication": "Off", "Program" (on air) or "Preview".
class SetStudioTally : public KeyCommand {
 public:
  int Parse(const char* params) override;
};

// Sliders and switches. Numbers have no range; the bytes below are what is sent of them.

/// Moves a slider. Parameters "Kind": a control, usually a bar; "Position": a number.
///
/// Payload: kind code, position (16 bits, big-endian).
class SetWebSliderEvent : public Command {
 public:
  int Parse(const char* params) override;
};

/// Moves the point of a two-axis field. Parameters "Kind": a control, usually the white paint
/// field; "XPosition" and "YPosition": numbers from 0 to 255.
///
/// Payload: kind code, X, Y (8 bits each; what a larger Y has in bits 8 to 15 is added to X by a
/// bitwise OR).
class SetWebXYFieldEvent : public Command {
 public:
  int Parse(const char* params) override;
};

/// Tilts a spring-loaded switch; the camera goes on until the direction "Stop". Parameters "Kind"
/// and "Direction": a control and its key; "Speed": a number.
///
/// Payload: kind code, key code, speed (8 bits).
class SeesawSwitchOperation : public Command {
 public:
  int Parse(const char* params) override;
};

/// Tilts the zoom switch; the camera goes on until the direction "Stop". Parameters "Direction":
/// "Wide", "Tele" or "Stop" (any other word stops); "Speed": a number.
///
/// Payload: direction (1 wide, 2 tele, 0 stop), speed (8 bits).
class ZoomSwitchOperation : public Command {
 public:
  int Parse(const char* params) override;
};

// Camera.

/// Starts or stops recording. Parameter "CamCtrl": "Rec" starts, any other word stops.
///
/// Payload: 0 to start, 1 to stop.
class SetCamCtrl : public Command {
 public:
  int Parse(const char* params) override;
};

/// Moves the zoom to a position. Parameter "Position": a number, in the camera's own scale.
///
/// Payload: position (16 bits, big-endian).
class SetZoomCtrl : public Command {
 public:
  int Parse(const char* params) override;
};

/// Starts or stops the encoder behind the page's live picture. Parameter "Operate": "Stop" stops,
/// any other word, usually "Start", starts.
///
/// The bare header is the whole message: the command code tells start from stop, as with
/// `MonitorStart` and `MonitorStop`.
class JpegEncode : public Command {
 public:
  int Parse(const char* params) override;
};

/// Reports the state of the position receiver (GPS), known to clients as "GetGPSInfo".
///
/// The bare header is the whole message. Reply: bytes 4 to 23 level of the antenna, from byte 24 on
/// the location; both texts are reported as they stand, as far as they arrived.
class GetGpsInfo : public Command {
 public:
  void Output() override;
};
