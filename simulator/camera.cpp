#include "simulator/camera.h"

#include <algorithm>

namespace simulator {
namespace {

/// How fast the zoom travels to a position, in positions per second.
constexpr double kZoomTravelSpeed = 500;
/// What one step of a zoom switch's speed adds, in positions per second.
constexpr double kZoomSwitchSpeedStep = 20;

constexpr std::uint8_t kDropFrame = 0x80;

std::uint8_t PackedBcd(std::int64_t value) {
  return static_cast<std::uint8_t>((value / 10) << 4 | value % 10);
}

/// The number that drop-frame counting gives to the frame `frames` after 00:00:00.00: it skips the
/// numbers 00 and 01 of each minute that is not a multiple of ten.
std::int64_t DropFrameNumber(std::int64_t frames) {
  constexpr std::int64_t kPerTenMinutes = 17982;
  constexpr std::int64_t kPerMinute = 1798;
  const std::int64_t in_ten_minutes = frames % kPerTenMinutes;
  const std::int64_t short_minutes = in_ten_minutes < 2 ? 0 : (in_ten_minutes - 2) / kPerMinute;
  return frames + 18 * (frames / kPerTenMinutes) + 2 * short_minutes;
}

}  // namespace

void Camera::AdvanceTo(std::chrono::milliseconds uptime) {
  const std::chrono::milliseconds elapsed = uptime - uptime_;
  uptime_ = uptime;
  cloud_.AdvanceTo(uptime);
  const double way = zoom_speed_ * std::chrono::duration<double>(elapsed).count();
  zoom_position_ += std::clamp(zoom_target_ - zoom_position_, -way, way);
  if (recording_) {
    recorded_ += elapsed;
    if (SlotA().remaining_minutes == 0) {
      StopRecording();
    }
  }
}

Result Camera::StartRecording() {
  if (slot_a_.write_protected || SlotA().remaining_minutes == 0) {
    return Result::kDisableError;
  }
  recording_ = true;
  return Result::kSuccess;
}

void Camera::StopRecording() {
  if (recording_) {
    recording_ = false;
    ++slot_a_.clip_count;
  }
}

void Camera::ZoomTo(int position) {
  zoom_target_ = std::clamp(position, 0, kZoomTele);
  zoom_speed_ = kZoomTravelSpeed;
}

void Camera::RunZoom(int end, int speed) {
  ZoomTo(end);
  zoom_speed_ = kZoomSwitchSpeedStep * speed;
}

void Camera::StopZoom() {
  zoom_target_ = ZoomPosition();
  zoom_position_ = zoom_target_;
}

TimeCode Camera::CurrentTimeCode() const {
  constexpr std::int64_t kFirstFrame = 107892;  // 01:00:00.00
  constexpr std::int64_t kFramesPerDay = 2589408;
  constexpr std::int64_t kFrameRate = 30;
  const std::int64_t frames = kFirstFrame + uptime_.count() * kFrameRate / 1001;
  const std::int64_t number = DropFrameNumber(frames % kFramesPerDay);
  return {PackedBcd(number / kFrameRate / 60 / 60), PackedBcd(number / kFrameRate / 60 % 60),
          PackedBcd(number / kFrameRate % 60),
          static_cast<std::uint8_t>(kDropFrame | PackedBcd(number % kFrameRate))};
}

Slot Camera::SlotA() const {
  Slot slot = slot_a_;
  const auto used = std::chrono::duration_cast<std::chrono::minutes>(recorded_).count();
  slot.remaining_minutes =
      static_cast<std::uint16_t>(std::max<std::int64_t>(0, slot.remaining_minutes - used));
  return slot;
}

std::string Camera::Summary() const {
  const auto on_off = [](bool on) { return std::string(on ? "on" : "off"); };
  const char* const studio_tally = controls_.studio_tally == 1   ? "program"
                                   : controls_.studio_tally == 2 ? "preview"
                                                                 : "off";
  return std::string(recording_ ? "recording" : "stopped") + ", zoom to " +
         std::to_string(zoom_target_) + ", monitor " + on_off(controls_.monitor_on) + ", tally " +
         on_off(controls_.tally_on != 0) + " by " +
         (controls_.tally_by_web != 0 ? "web" : "camera") + ", studio tally " + studio_tally +
         ", streaming " + on_off(controls_.streaming != 0) + ", IFB " +
         on_off(controls_.ifb_active != 0) + ", cloud login " + on_off(cloud_.IsLoggedIn());
}

}  // namespace simulator
