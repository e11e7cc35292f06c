#include "simulator/streaming_daemon.h"

#include <algorithm>
#include <optional>
#include <string>

namespace simulator {
namespace {

/// The text in a field: up to its NUL or its last byte.
std::string TextIn(const Bytes& payload, std::size_t offset, std::size_t width) {
  const auto first = payload.begin() + static_cast<std::ptrdiff_t>(offset);
  const auto last = first + static_cast<std::ptrdiff_t>(width);
  return {first, std::find(first, last, 0)};
}

/// An event's index: 16 bits, little-endian.
std::size_t EventIndex(const Bytes& payload) {
  return static_cast<std::size_t>(payload[0] | payload[1] << 8);
}

/// Puts a text into a field of a reply; the field's last byte stays NUL.
void PutText(Bytes& reply, std::size_t offset, std::size_t width, const std::string& text) {
  const std::string kept = text.substr(0, width - 1);
  std::copy(kept.begin(), kept.end(), reply.begin() + static_cast<std::ptrdiff_t>(offset));
}

/// Bytes 0-127 user name, 128-191 password, 192-319 server URL.
Reply LogIn(Camera& camera, const Bytes& payload) {
  camera.cloud().LogIn(TextIn(payload, 128, 64), TextIn(payload, 192, 128));
  return ResultOnly(Result::kSuccess);
}

Reply LogOut(Camera& camera, const Bytes&) {
  camera.cloud().LogOut();
  return ResultOnly(Result::kSuccess);
}

Reply ObtainEvents(Camera& camera, const Bytes&) {
  camera.cloud().ObtainEvents();
  return ResultOnly(Result::kSuccess);
}

/// The reply's bytes 4-5: the number of events, little-endian.
Reply CountEvents(Camera& camera, const Bytes&) {
  Bytes reply(6);
  reply[4] = static_cast<std::uint8_t>(camera.cloud().Events().size());
  return reply;
}

/// The reply's bytes 4-131: the title.
Reply GetEvent(Camera& camera, const Bytes& payload) {
  const std::vector<CloudEvent> events = camera.cloud().Events();
  const std::size_t index = EventIndex(payload);
  if (index >= events.size()) {
    return ResultOnly(Result::kRequestedError);
  }
  Bytes reply(132);
  PutText(reply, 4, 128, events[index].title);
  return reply;
}

Reply ObtainStreamInfo(Camera& camera, const Bytes& payload) {
  camera.cloud().ObtainStreamInfo(EventIndex(payload));
  return ResultOnly(Result::kSuccess);
}

/// The reply's bytes 4-195: the ingest URL, 196-259: the stream key, 260-323: the title.
Reply GetStreamInfo(Camera& camera, const Bytes& payload) {
  const std::optional<CloudEvent> event = camera.cloud().StreamInfo(EventIndex(payload));
  if (!event) {
    return ResultOnly(Result::kRequestedError);
  }
  Bytes reply(324);
  PutText(reply, 4, 192, event->url);
  PutText(reply, 196, 64, event->stream_key);
  PutText(reply, 260, 64, event->title);
  return reply;
}

/// Byte 0: clears the login's state unless 0, byte 1: the event list's, byte 2: the stream
/// information's.
Reply ClearStatus(Camera& camera, const Bytes& payload) {
  if (payload[0] != 0) {
    camera.cloud().ClearLogin();
  }
  if (payload[1] != 0) {
    camera.cloud().ClearEvents();
  }
  if (payload[2] != 0) {
    camera.cloud().ClearStreamInfo();
  }
  return ResultOnly(Result::kSuccess);
}

}  // namespace

std::vector<MessageRow> StreamingMessages() {
  return {
      {11, 99, "cloud login", 320, LogIn},
      {11, 100, "cloud logout", 0, LogOut},
      {11, 101, "obtain event list", 0, ObtainEvents},
      {11, 102, "number of events", 0, CountEvents},
      {11, 103, "one event", 4, GetEvent},
      {11, 104, "obtain stream information", 4, ObtainStreamInfo},
      {11, 105, "stream information", 4, GetStreamInfo},
      {11, 106, "clear status", 4, ClearStatus},
  };
}

}  // namespace simulator
