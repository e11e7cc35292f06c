// Commands of the cloud streaming service. Its client runs in the camera's streaming daemon, which
// keeps the login, the list of events (broadcasts) and the stream information. A web page uses
// these commands in order: log in, make the client fetch the list, read the list, make the client
// fetch an event's stream information, copy that into a streaming server's slot, log out. If a
// parameter is missing, the reply is "RequestedError".
#pragma once

#include <cstdint>

#include "core/cmd/command.h"

/// The most events in the client's list.
constexpr std::int32_t kMaxCloudEvents = 20;

/// A cloud request: one message to the streaming daemon, whose reply's first payload byte is the
/// result.
/// Header: class 11, a 1 at offset 5. Numbers in the payloads are little-endian, unlike those of
/// the control daemon. Without "Params" a bare header is sent, which still announces the length of
/// the payload.
class CloudCommand : public Command {
 protected:
  CloudCommand();

  /// Makes a number the payload: 16 bits, then two zero bytes.
  void SetNumberPayload(std::uint16_t number);
};

/// Logs in to the service.
/// Parameters "Username" (at most 127 characters), "Password" (at most 63, may be empty) and
/// "ServerURL" (at most 127). If the user name or URL is empty, the reply is "RequestedError".
/// Payload: 128 bytes user name, 64 bytes password, 128 bytes URL, each with at least one NUL at
/// its end.
struct SetCldstrmLogin : CloudCommand {
  int Parse(const char* params) override;
};

/// Logs out of the service.
struct SetCldstrmLogout : CloudCommand {};

/// Makes the client fetch the list of events from the service.
struct SetCldstrmEventListObtain : CloudCommand {};

/// Reports the titles of the events in the client's list: at most 20, each truncated to 63 bytes.
/// The first exchange asks for the number of events (reply: bytes 4 and 5), the others for one
/// event each, by its index (reply: the title from byte 4). An event without an answer has an empty
/// title. After a time-out there are no more exchanges. The result is that of the last reply.
class GetCldstrmEventList : public CloudCommand {
 public:
  void Transmit() override;
  void Output() override;

 private:
  char titles_[kMaxCloudEvents][64] = {};
  std::int32_t event_num_ = 0;
};

/// Makes the client fetch the stream information of an event.
/// Parameter "EventID": the event's index in the list, limited to 0 to 19. Payload: the index.
struct SetCldstrmStreamInfoObtain : CloudCommand {
  int Parse(const char* params) override;
};

/// Copies the stream information of an event into a streaming server's slot and makes that server
/// the current one.
/// Parameters "EventID", limited to 0 to 19, and "StrmsrvID", the server's number, limited to 0 to
/// 3. Payload: the event's index. Reply: bytes 4 to 195 ingest URL, 196 to 259 stream key, 260 to
/// 323 title. Without a reply, and with a result other than 0, no settings file is touched.
class SetCldstrmStreamInfoToStrmsrv : public CloudCommand {
 public:
  int Parse(const char* params) override;
  void Transmit() override;

 private:
  std::int32_t strmsrv_id_ = 0;
};

/// Clears the client's status of single steps.
/// Parameters "Login", "GetEventList" and "GetStreamInfo": numbers, whose low bytes and a zero byte
/// are the payload; their meaning is the daemon's.
struct SetCldstrmClearStatus : CloudCommand {
  int Parse(const char* params) override;
};
