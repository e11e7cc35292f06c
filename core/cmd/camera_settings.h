// Commands of the settings that the camera takes from the web interface: preset zoom positions, the
// NTP server and the return audio (IFB). They talk to no daemon for an answer: they read settings
// files, and those that change a file tell the control daemon with a renewal notice.
//
// The Set commands store what they are given and always succeed; texts are cut to 30 characters. A
// missing parameter: "RequestedError", and no file is touched. Without "Params" they store zeros
// and empty texts.
#pragma once

#include <cstdint>

#include "core/cmd/command.h"
#include "core/parameters.h"

// Preset zoom.

/// Reports the zoom positions behind the buttons "A", "B" and "C", as they are stored; -1 for one
/// that is not set.
class GetPresetZoomPosition : public LocalCommand {
 public:
  void Output() override;
};

/// Stores the zoom position behind one button.
///
/// Parameters "ID": "A", "B" or "C" (any other name changes no position, but the file is rewritten
/// and the notice sent all the same); "Position": a number in the camera's own scale, without a
/// range. 65535 means that the button is not set.
class SetPresetZoomPosition : public Command {
 public:
  int Parse(const char* params) override;
  void Transmit() override;

 private:
  ShortText id_ = {};
  std::int32_t position_ = 0;
};

// NTP.

/// Reports "Address" of the NTP server, "TcSync" ("On" while the time code follows the server) and
/// "Status", the state of the synchronisation out of the camera status block; empty for a state
/// that clients have no words for.
class GetNTPStatus : public LocalCommand {
 public:
  void Output() override;
};

/// Sets the NTP server. Parameter "Address": its IPv4 address or host name, not validated.
class SetNTPServer : public Command {
 public:
  int Parse(const char* params) override;
  void Transmit() override;

 private:
  ShortText address_ = {};
};

/// Lets the time code follow the NTP server, or not. Parameter "TcSync": "On"; any other word
/// switches off.
class SetNTPSettings : public Command {
 public:
  int Parse(const char* params) override;
  void Transmit() override;

 private:
  ShortText tc_sync_ = {};
};

// Return audio.

/// Reports "Function" ("Enable" or "Disable"), "Address", "Port" and "Mountpoint" of the return
/// audio; the port is printed as it is stored.
class GetIFBSettings : public LocalCommand {
 public:
  void Output() override;
};

/// Sets the server that return audio comes from.
///
/// Parameters "Function": "Enable", any other word disables; "Address"; "Port": a number;
/// "Mountpoint". Nothing is validated. Type, codec and account of the stream keep their values.
class SetIFBSettings : public Command {
 public:
  int Parse(const char* params) override;
  void Transmit() override;

 private:
  std::uint8_t enabled_ = 0;
  ShortText address_ = {};
  std::int32_t port_ = 0;
  ShortText mountpoint_ = {};
};
