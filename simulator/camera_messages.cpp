#include "simulator/camera_messages.h"

#include <algorithm>
#include <string_view>

#include "simulator/lens.h"
#include "simulator/models.h"
#include "simulator/recording.h"

namespace simulator {
namespace {

constexpr std::size_t kStatusReplySize = 38;

std::uint8_t Flag(bool value) { return value ? 1 : 0; }

std::uint8_t RecordingCode(const State& state) {
  if (std::none_of(state.slots.begin(), state.slots.end(),
                   [](const Slot& slot) { return slot.card != Card::kNone; })) {
    return 0;
  }
  switch (state.recording.status) {
    case RecordingStatus::kStop:
      return 1;
    case RecordingStatus::kStandby:
      return 2;
    case RecordingStatus::kRec:
      return 3;
    case RecordingStatus::kRecPause:
      break;
  }
  return 4;
}

std::uint8_t ModeCode(Mode mode) {
  switch (mode) {
    case Mode::kThumbnail:
      return 1;
    case Mode::kPlay:
      return 2;
    case Mode::kUsb:
      return 4;
    case Mode::kEditMetadata:
      return 5;
    case Mode::kCamera:
      break;
  }
  return 3;
}

std::uint8_t SlotCode(const State& state, int index) {
  constexpr std::uint8_t kUnknown = 255;
  const Slot& slot = state.slots[static_cast<std::size_t>(index)];
  switch (slot.card) {
    case Card::kNone:
      return 0;
    case Card::kInvalid:
      return 5;
    case Card::kUnknown:
      return kUnknown;
    case Card::kOk:
      break;
  }
  const bool selected = state.recording.slot == index;
  const bool records =
      state.recording.status == RecordingStatus::kRec && (selected || state.recording.dual);
  if (selected) {
    return records ? 3 : 1;
  }
  return records ? 4 : 2;
}

/// Offsets within a slot's part of the status reply: 0 status, 1 protection, 2-3 remaining
/// minutes, 4-5 clip count.
void PutSlot(Bytes& reply, std::size_t offset, const State& state, int index) {
  constexpr int kUnknown = 0xffff;
  constexpr Milliseconds kMinute = 60000;
  const Slot& slot = state.slots[static_cast<std::size_t>(index)];
  reply[offset] = SlotCode(state, index);
  if (!HasCard(slot)) {
    PutU16(reply, offset + 2, slot.card == Card::kNone ? 0 : kUnknown);
    return;
  }
  reply[offset + 1] = Flag(slot.write_protected);
  PutU16(reply, offset + 2,
         slot.remain == Slot::kUnknown ? kUnknown : static_cast<int>(slot.remain / kMinute));
  PutU16(reply, offset + 4, static_cast<int>(slot.clips.size()));
}

void PutPages(Bytes& reply, std::size_t offset, const Pages& pages) {
  reply[offset] = Flag(pages.planning_metadata);
  reply[offset + 1] = Flag(pages.edit_metadata);
  reply[offset + 2] = Flag(pages.view_remote);
  reply[offset + 3] = Flag(pages.setting);
}

std::uint8_t AdaptorCode(const Network& network) {
  const int connected = network.connected ? 1 : 0;
  switch (network.adaptor) {
    case Adaptor::kOff:
      return 0;
    case Adaptor::kNone:
      return 1;
    case Adaptor::kMismatch:
      return 2;
    case Adaptor::kWlanAp:
      return static_cast<std::uint8_t>(3 + connected);
    case Adaptor::kWlanP2p:
      return static_cast<std::uint8_t>(5 + connected);
    case Adaptor::kEthernet:
      return static_cast<std::uint8_t>(7 + connected);
    case Adaptor::kCellular:
      break;
  }
  return static_cast<std::uint8_t>(9 + connected);
}

void PutText(Bytes& bytes, std::size_t offset, std::string_view text) {
  std::copy(text.begin(), text.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
}

}  // namespace

Reply NoteRenewal(Camera& camera, const Bytes&) {
  camera.ReloadSettings();
  return std::nullopt;
}

Reply ReportStatus(Camera& camera, const Bytes&) {
  const State& state = camera.state();
  Bytes reply(kStatusReplySize);
  reply[2] = RecordingCode(state);
  reply[3] = ModeCode(state.mode);
  reply[4] = static_cast<std::uint8_t>(state.recording.mode);
  reply[5] = Flag(IsZooming(state));
  PutU16(reply, 6, state.zoom.position);
  const TimeCode time_code = CurrentTimeCode(state);
  std::copy(time_code.begin(), time_code.end(), reply.begin() + 8);
  PutSlot(reply, 12, state, 0);
  PutSlot(reply, 18, state, 1);
  reply[24] = static_cast<std::uint8_t>(state.battery.info);
  reply[25] = static_cast<std::uint8_t>(state.battery.level);
  PutU16(reply, 26, state.battery.value);
  reply[28] = Flag(state.recording.four_to_three);
  PutPages(reply, 29, state.pages);
  reply[33] = AdaptorCode(state.network);
  reply[34] = Flag(state.network.web_access);
  reply[35] = static_cast<std::uint8_t>(ZoomDisplayValue(state));
  reply[36] = static_cast<std::uint8_t>(RemainWarning(state.slots[0]));
  reply[37] = static_cast<std::uint8_t>(RemainWarning(state.slots[1]));
  return reply;
}

Reply ControlRecording(Camera& camera, const Bytes& payload) {
  (payload[0] == 0 ? StartRecording : StopRecording)(camera.state());
  return ResultOnly(Result::kSuccess);
}

Reply StartMonitor(Camera& camera, const Bytes&) {
  camera.state().monitor = true;
  return ResultOnly(Result::kSuccess);
}

Reply StopMonitor(Camera& camera, const Bytes&) {
  camera.state().monitor = false;
  return ResultOnly(Result::kSuccess);
}

Reply SetZoomPosition(Camera& camera, const Bytes& payload) {
  ZoomTo(camera.state(), static_cast<std::int16_t>(payload[0] << 8 | payload[1]));
  return ResultOnly(Result::kSuccess);
}

Reply ReportGps(Camera& camera, const Bytes&) {
  const Gps& gps = camera.state().gps;
  Bytes reply(24 + gps.location.size());
  PutText(reply, 4, gps.antenna);
  PutText(reply, 24, gps.location);
  return reply;
}

Reply ChangePage(Camera& camera, const Bytes& payload) {
  camera.state().page = payload[0];
  Bytes reply(5);
  PutPages(reply, 1, camera.state().pages);
  return reply;
}

Refusal RefuseRecording(const State& state, const Bytes& payload) {
  return {payload[0] == 0 ? RecordingObstacle(state) : nullptr};
}

Refusal RefuseZoomPosition(const State& state, const Bytes&) { return {ShootingObstacle(state)}; }

Refusal RefuseGps(const State& state, const Bytes&) {
  return {HasGps(state) ? nullptr : "this model has no GPS"};
}

std::string DescribeRecording(const Bytes& payload) {
  return payload[0] == 0 ? "record start" : "record stop";
}

std::string DescribeZoomPosition(const Bytes& payload) {
  return "zoom to " + std::to_string(static_cast<std::int16_t>(payload[0] << 8 | payload[1]));
}

std::string DescribePage(const Bytes& payload) {
  return "page change to " + std::to_string(payload[0]);
}

}  // namespace simulator
