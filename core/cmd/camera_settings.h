// Commands for the settings that the camera takes from the web interface: preset zoom positions,
// the NTP server and the return audio (IFB). The Get commands read settings files; the Set commands
// change them and send the control daemon a renewal notice. None expects an answer from a daemon.
//
// The Set commands always succeed and validate nothing; texts are truncated to 30 characters. If a
// parameter is missing, the reply is "RequestedError" and no file is touched. Without "Params" they
// store zeros and empty texts.
#pragma once

#include <cstdint>

#include "core/cmd/command.h"
#include "core/parameters.h"

/// Reports the stored zoom positions of the buttons "A", "B" and "C"; -1 if one is not set.
struct GetPresetZoomPosition : LocalCommand {
  void Output() override;
};

/// Stores the zoom position of one button.
/// Parameters "ID": "A", "B" or "C" (any other name changes no position, but the file is still
/// rewritten and the notice sent); "Position": any number, in the camera's own scale. 65535 means
/// that the button is not set.
class SetPresetZoomPosition : public Command {
 public:
  int Parse(const char* params) override;
  void Transmit() override;

 private:
  ShortText id_ = {};
  std::int32_t position_ = 0;
};

/// Reports "Address" of the NTP server, "TcSync" ("On" while the time code follows the server) and
/// "Status", the state of the synchronization from the camera status block (empty if unknown).
struct GetNTPStatus : LocalCommand {
  void Output() override;
};

/// Base of the commands that change a setting of the NTP client.
class NTPCommand : public Command {
 protected:
  ShortText parameter_ = {};
};

/// Sets the NTP server. Parameter "Address": its IPv4 address or host name.
struct SetNTPServer : NTPCommand {
  int Parse(const char* params) override;
  void Transmit() override;
};

/// Makes the time code follow the NTP server or not. Parameter "TcSync": "On" switches this on, any
/// other word off.
struct SetNTPSettings : NTPCommand {
  int Parse(const char* params) override;
  void Transmit() override;
};

/// Reports "Function" ("Enable" or "Disable"), "Address", "Port" and "Mountpoint" of the return
/// audio. The port is printed as stored.
struct GetIFBSettings : LocalCommand {
  void Output() override;
};

/// Sets the server that provides the return audio.
/// Parameters "Function": "Enable" enables, any other word disables; "Address"; "Port": a number;
/// "Mountpoint". Type, codec and account of the stream keep their values.
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
