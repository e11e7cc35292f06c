// Commands that operate the camera: keys and buttons, tally lamps, sliders and switches, recording,
// zoom, the encoder of the live picture and the GPS receiver. Each sends one message to the camera
// control daemon and replies with the daemon's result; only the last adds data. `Parse` rejects a
// missing parameter and a control or key that is not in the remote event table.
#pragma once

#include "core/cmd/command.h"

/// Base of the commands that press a key of a control. Both are names in the remote event table.
/// Payload: kind code, key code.
class KeyCommand : public Command {
 protected:
  /// Looks up control and key and makes their codes the payload.
  /// @return 0, or -1 if there is no such pair
  int Press(const char* kind, const char* key);

  /// The same, and logs the names and codes.
  /// @param label  name of the key in the log
  int PressAndLog(const char* kind, const char* key, const char* label = "button");

  /// The same for a control and a key from the parameters "Kind" and `key_parameter`.
  int PressParameters(const char* params, const char* key_parameter, const char* label);

  /// Presses "Start" if the parameter "Streaming" is `start_word`, otherwise "Stop".
  int StartOrStop(const char* params, const char* kind, const char* start_word);
};

/// Presses a key of a control. Parameters "Kind" and "Key": names as in the remote event table.
struct SetWebKeyEvent : KeyCommand {
  int Parse(const char* params) override;
};

/// Presses a button. Parameters "Kind" and "Button": names as in the remote event table.
struct SetWebButtonEvent : KeyCommand {
  int Parse(const char* params) override;
};

/// Requests an action of the system. Parameter "Request": "Resume".
struct SystemRequest : KeyCommand {
  int Parse(const char* params) override;
};

/// Starts or stops the return audio (IFB). Parameter "Streaming": "Start" starts, any other word
/// stops.
struct SetIFBCtrl : KeyCommand {
  int Parse(const char* params) override;
};

/// Starts or stops live streaming. Parameter "Streaming": "On" starts, any other word stops.
struct SetStreamingCtrl : KeyCommand {
  int Parse(const char* params) override;
};

// Tally. Each command accepts any key of its control, so the priority command can also switch the
// lamp, and the lamp command can also set the priority.

/// Chooses who controls the tally lamp. Parameter "Priority": "Camera" or "Web".
struct SetTallyLampPriority : KeyCommand {
  int Parse(const char* params) override;
};

/// Switches the tally lamp. Parameter "Sw": "On" or "Off".
struct SetTallyLampCtrl : KeyCommand {
  int Parse(const char* params) override;
};

/// Switches the tally lamp and makes the web side control it. Parameter "Sw": "On" or "Off"; an
/// empty text means the key "Web", which only takes the control.
struct SetTallyControlWithPriority : KeyCommand {
  int Parse(const char* params) override;
};

/// Sets the studio tally. Parameter "Indication": "Off", "Program" (on air) or "Preview".
struct SetStudioTally : KeyCommand {
  int Parse(const char* params) override;
};

// Sliders and switches. Numbers are not range-checked, only truncated to the bytes below.

/// Moves a slider. Parameters "Kind": a control, usually a bar; "Position": a number.
/// Payload: kind code, position (16 bits, big-endian).
struct SetWebSliderEvent : Command {
  int Parse(const char* params) override;
};

/// Moves the point of a two-axis field. Parameters "Kind": a control, usually the white paint
/// field; "XPosition" and "YPosition": numbers from 0 to 255.
/// Payload: kind code, X, Y (8 bits each; bits 8 to 15 of a larger Y are ORed into X).
struct SetWebXYFieldEvent : Command {
  int Parse(const char* params) override;
};

/// Tilts a spring-loaded switch; the camera moves until the direction "Stop". Parameters "Kind"
/// and "Direction": a control and its key; "Speed": a number.
/// Payload: kind code, key code, speed (8 bits).
struct SeesawSwitchOperation : Command {
  int Parse(const char* params) override;
};

/// Tilts the zoom switch; the camera moves until the direction "Stop". Parameters "Direction":
/// "Wide", "Tele" or "Stop" (any other word stops); "Speed": a number.
/// Payload: direction (1 wide, 2 tele, 0 stop), speed (8 bits).
struct ZoomSwitchOperation : Command {
  int Parse(const char* params) override;
};

/// Starts or stops recording. Parameter "CamCtrl": "Rec" starts, any other word stops.
/// Payload: 0 to start, 1 to stop.
struct SetCamCtrl : Command {
  int Parse(const char* params) override;
};

/// Moves the zoom to a position. Parameter "Position": a number, in the camera's own scale.
/// Payload: position (16 bits, big-endian).
struct SetZoomCtrl : Command {
  int Parse(const char* params) override;
};

/// Starts or stops the encoder of the page's live picture. Parameter "Operate": "Stop" stops, any
/// other word, usually "Start", starts.
/// The message is a bare header. Its command code means start or stop, as for `MonitorStart` and
/// `MonitorStop`.
struct JpegEncode : Command {
  int Parse(const char* params) override;
};

/// Reports the state of the GPS receiver. Clients call it "GetGPSInfo".
/// The message is a bare header. Reply: bytes 4 to 23 the level of the antenna, from byte 24 the
/// location; the texts are reported unchanged, as far as they arrived.
struct GetGpsInfo : Command {
  void Output() override;
};
