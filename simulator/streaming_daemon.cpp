#include "simulator/streaming_daemon.h"

#include <algorithm>
#include <string>
#include <vector>

#include "simulator/cloud_client.h"
#include "simulator/models.h"

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
  LogInToCloud(camera.state(), TextIn(payload, 128, 64), TextIn(payload, 192, 128));
  return ResultOnly(Result::kSuccess);
}

Reply LogOut(Camera& camera, const Bytes&) {
  LogOutOfCloud(camera.state());
  return ResultOnly(Result::kSuccess);
}

Reply ObtainList(Camera& camera, const Bytes&) {
  ObtainCloudEvents(camera.state());
  return ResultOnly(Result::kSuccess);
}

/// The reply's bytes 4-5: the number of events, little-endian.
Reply CountEvents(Camera& camera, const Bytes&) {
  Bytes reply(6);
  reply[4] = static_cast<std::uint8_t>(ObtainedEvents(camera.state()).size());
  return reply;
}

/// The reply's bytes 4-131: the title.
Reply GetEvent(Camera& camera, const Bytes& payload) {
  Bytes reply(132);
  PutText(reply, 4, 128, ObtainedEvents(camera.state())[EventIndex(payload)].title);
  return reply;
}

Reply ObtainInfo(Camera& camera, const Bytes& payload) {
  ObtainStreamInfo(camera.state(), static_cast<int>(EventIndex(payload)));
  return ResultOnly(Result::kSuccess);
}

/// The reply's bytes 4-195: the ingest URL, 196-259: the stream key, 260-323: the title.
Reply GetStreamInfo(Camera& camera, const Bytes& payload) {
  const CloudEvent* const event =
      ObtainedStreamInfo(camera.state(), static_cast<int>(EventIndex(payload)));
  Bytes reply(324);
  PutText(reply, 4, 192, event->url);
  PutText(reply, 196, 64, event->stream_key);
  PutText(reply, 260, 64, event->title);
  return reply;
}

/// Byte 0: clears the login's state unless 0, byte 1: the event list's, byte 2: the stream
/// information's.
Reply ClearStatus(Camera& camera, const Bytes& payload) {
  Cloud& cloud = camera.state().cloud;
  if (payload[0] != 0) {
    cloud.login = {};
  }
  if (payload[1] != 0) {
    cloud.event_list = {};
  }
  if (payload[2] != 0) {
    cloud.stream_info = {};
  }
  return ResultOnly(Result::kSuccess);
}

std::string DescribeLogin(const Bytes& payload) {
  return "cloud login of " + TextIn(payload, 0, 128) + " at " + TextIn(payload, 192, 128);
}

std::string DescribeEvent(const Bytes& payload) {
  return "title of event " + std::to_string(EventIndex(payload));
}

std::string DescribeObtainInfo(const Bytes& payload) {
  return "obtain stream information of event " + std::to_string(EventIndex(payload));
}

std::string DescribeGetInfo(const Bytes& payload) {
  return "stream information of event " + std::to_string(EventIndex(payload));
}

Refusal WithoutService(const State& state, const Bytes&) {
  return {HasCloud(state) ? nullptr : "this model or firmware has no cloud streaming"};
}

Refusal WithoutEvent(const State& state, const Bytes& payload) {
  const Refusal refusal = WithoutService(state, payload);
  if (refusal.why == nullptr && EventIndex(payload) >= ObtainedEvents(state).size()) {
    return {"the obtained list has no such event", Result::kRequestedError};
  }
  return refusal;
}

Refusal WithoutStreamInfo(const State& state, const Bytes& payload) {
  const Refusal refusal = WithoutService(state, payload);
  if (refusal.why == nullptr &&
      ObtainedStreamInfo(state, static_cast<int>(EventIndex(payload))) == nullptr) {
    return {"the stream information of this event was not obtained", Result::kRequestedError};
  }
  return refusal;
}

}  // namespace

std::vector<MessageRow> StreamingMessages() {
  return {
      {11, 99, "cloud login", 320, LogIn, DescribeLogin, kActs, WithoutService},
      {11, 100, "cloud logout", 0, LogOut, nullptr, kActs, WithoutService},
      {11, 101, "obtain event list", 0, ObtainList, nullptr, kActs, WithoutService},
      {11, 102, "number of events", 0, CountEvents, nullptr, kAsks, WithoutService},
      {11, 103, "title of an event", 4, GetEvent, DescribeEvent, kAsks, WithoutEvent},
      {11, 104, "obtain stream information", 4, ObtainInfo, DescribeObtainInfo, kActs,
       WithoutService},
      {11, 105, "stream information", 4, GetStreamInfo, DescribeGetInfo, kAsks, WithoutStreamInfo},
      {11, 106, "clear status", 4, ClearStatus, nullptr, kActs, WithoutService},
  };
}

}  // namespace simulator
