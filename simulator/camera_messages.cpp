#include "simulator/camera_messages.h"

#include <algorithm>
#include <string_view>

namespace simulator {
namespace {

constexpr std::size_t kStatusReplySize = 38;
constexpr std::uint8_t kRecordingStatusStop = 1;
constexpr std::uint8_t kRecordingStatusRec = 3;
constexpr std::uint8_t kSlotSelected = 1;
constexpr std::uint8_t kSlotNotSelected = 2;
constexpr std::uint8_t kSlotSelectedRecording = 3;
constexpr std::uint8_t kBatteryInMinutes = 0;
constexpr std::uint8_t kBatteryLevel = 5;
constexpr std::uint16_t kBatteryMinutes = 137;
constexpr std::uint8_t kEthernetConnected = 8;
constexpr int kZoomDisplayEnd = 99;

void PutU16(Bytes& bytes, std::size_t offset, int value) {
  bytes[offset] = static_cast<std::uint8_t>(value >> 8);
  bytes[offset + 1] = static_cast<std::uint8_t>(value);
}

/// Offsets within a slot's part of the status reply: 0 status, 1 protection, 2-3 remaining
/// minutes, 4-5 clip count.
void PutSlot(Bytes& reply, std::size_t offset, const Slot& slot, int remaining_minutes,
             std::uint8_t status) {
  reply[offset] = status;
  reply[offset + 1] = slot.write_protected ? 1 : 0;
  PutU16(reply, offset + 2, remaining_minutes);
  PutU16(reply, offset + 4, static_cast<int>(slot.clips.size()));
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
  Bytes reply(kStatusReplySize);
  reply[2] = camera.IsRecording() ? kRecordingStatusRec : kRecordingStatusStop;
  reply[5] = camera.IsZooming() ? 1 : 0;
  PutU16(reply, 6, camera.ZoomPosition());
  const TimeCode time_code = camera.CurrentTimeCode();
  std::copy(time_code.begin(), time_code.end(), reply.begin() + 8);
  PutSlot(reply, 12, camera.SlotA(), camera.RemainingMinutesOfSlotA(),
          camera.IsRecording() ? kSlotSelectedRecording : kSlotSelected);
  PutSlot(reply, 18, camera.SlotB(), camera.SlotB().remaining_minutes, kSlotNotSelected);
  reply[24] = kBatteryInMinutes;
  reply[25] = kBatteryLevel;
  PutU16(reply, 26, kBatteryMinutes);
  const PagePermissions& pages = camera.AllowedPages();
  std::copy(pages.begin(), pages.end(), reply.begin() + 29);
  reply[33] = kEthernetConnected;
  reply[34] = 1;  // web access
  reply[35] =
      static_cast<std::uint8_t>(camera.ZoomPosition() * kZoomDisplayEnd / Camera::kZoomTele);
  return reply;
}

Reply ControlRecording(Camera& camera, const Bytes& payload) {
  if (payload[0] == 0) {
    return ResultOnly(camera.StartRecording());
  }
  camera.StopRecording();
  return ResultOnly(Result::kSuccess);
}

Reply StartMonitor(Camera& camera, const Bytes&) {
  camera.controls().monitor_on = true;
  return ResultOnly(Result::kSuccess);
}

Reply StopMonitor(Camera& camera, const Bytes&) {
  camera.controls().monitor_on = false;
  return ResultOnly(Result::kSuccess);
}

Reply SetZoomPosition(Camera& camera, const Bytes& payload) {
  camera.ZoomTo(static_cast<std::int16_t>(payload[0] << 8 | payload[1]));
  return ResultOnly(Result::kSuccess);
}

Reply ReportGps(Camera&, const Bytes&) {
  Bytes reply(44);
  PutText(reply, 4, "4");
  PutText(reply, 24, "35.4437N 139.6380E");
  return reply;
}

Reply ChangePage(Camera& camera, const Bytes&) {
  Bytes reply{static_cast<std::uint8_t>(Result::kSuccess)};
  const PagePermissions& pages = camera.AllowedPages();
  reply.insert(reply.end(), pages.begin(), pages.end());
  return reply;
}

}  // namespace simulator
