#include "simulator/camera.h"

#include <algorithm>

namespace simulator {
namespace {

/// How fast the zoom travels to a position, in positions per second.
constexpr double kZoomTravelSpeed = 500;
/// What one step of a zoom switch's speed adds, in positions per second.
constexpr double kZoomSwitchSpeedStep = 20;

}  // namespace

void Camera::AdvanceTo(std::chrono::milliseconds uptime) {
  const std::chrono::milliseconds elapsed = uptime - uptime_;
  uptime_ = uptime;
  cloud_.AdvanceTo(uptime);
  const double way = zoom_speed_ * std::chrono::duration<double>(elapsed).count();
  zoom_position_ += std::clamp(zoom_target_ - zoom_position_, -way, way);
  if (recording_) {
    recorded_ += elapsed;
    if (RemainingMinutesOfSlotA() == 0) {
      StopRecording();
    }
  }
  upload_.Advance(elapsed);
}

Result Camera::StartRecording() {
  if (slot_a_.write_protected || RemainingMinutesOfSlotA() == 0) {
    return Result::kDisableError;
  }
  if (!recording_) {
    recording_ = true;
    recording_from_ = CurrentTimeCode();
  }
  return Result::kSuccess;
}

void Camera::StopRecording() {
  if (recording_) {
    recording_ = false;
    Clip clip;
    clip.name = NextClipName('A', slot_a_.clips);
    clip.first_frame = recording_from_;
    clip.last_frame = CurrentTimeCode();
    clip.recorded_at = CurrentDateTime();
    slot_a_.clips.push_back(clip);
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
  constexpr std::int64_t kFrameRate = 30;
  return DropFrameTimeCode(kFirstFrame + uptime_.count() * kFrameRate / 1001);
}

std::uint16_t Camera::RemainingMinutesOfSlotA() const {
  const auto used = std::chrono::duration_cast<std::chrono::minutes>(recorded_).count();
  return static_cast<std::uint16_t>(std::max<std::int64_t>(0, slot_a_.remaining_minutes - used));
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
         on_off(controls_.ifb_active != 0) + ", upload " + upload_.Summary() + ", cloud login " +
         on_off(cloud_.IsLoggedIn());
}

}  // namespace simulator
