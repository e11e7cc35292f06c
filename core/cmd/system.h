// Commands that every page of the web client uses: monitor, session, system information,
// heartbeat and page permissions.
#pragma once

#include <cstdint>

#include "core/cmd/command.h"

/// Start and stop the encoder of the page's live picture. The message is a bare header.
struct MonitorStart : Command {};
struct MonitorStop : Command {};

/// Keeps the client's session alive, or ends it.
/// Parameter "Update": non-zero makes the session valid for another 30 seconds, 0 ends it now.
/// Rewrites the session file; a file that cannot be written gives "RequestedError".
class SessionRenewal : public Command {
 public:
  int Parse(const char* params) override;
  void Transmit() override;

 private:
  std::int32_t update_ = 0;
};

/// Reports model, destination region, version of this interface and serial number from the camera
/// status block. Sends no message.
struct GetSystemInfo : LocalCommand {
  void Output() override;
};

/// Confirms to a client, even without a session, that the camera is running, and reports the studio
/// tally. Sends no message.
struct HeartbeatConfirmation : LocalCommand {
  void Output() override;
};

/// Tells the camera which page the client shows, and reports the pages that it may use.
/// Parameter "Page": the number of the page; the payload is its low byte. Reply: byte 0 result,
/// bytes 1 to 4 the permissions (signed) for planning metadata, edit metadata, view remote and
/// settings. The permission for camera control is in the camera status block.
struct PageChange : Command {
  int Parse(const char* params) override;
  void Output() override;
};
