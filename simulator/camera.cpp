#include "simulator/camera.h"

#include "simulator/battery.h"
#include "simulator/cloud_client.h"
#include "simulator/exposure.h"
#include "simulator/lens.h"
#include "simulator/network.h"
#include "simulator/recording.h"
#include "simulator/upload.h"

namespace simulator {

void Camera::LetRealTimePass(std::chrono::nanoseconds real) {
  if (state_.clock.paused) {
    owed_ms_ = 0;
    return;
  }
  owed_ms_ += std::chrono::duration<double, std::milli>(real).count() * state_.clock.speed;
  const auto due = static_cast<Milliseconds>(owed_ms_) / kStep * kStep;
  owed_ms_ -= static_cast<double>(due);
  LetTimePass(due);
}

void Camera::LetTimePass(Milliseconds time) {
  for (Milliseconds passed = 0; passed + kStep <= time; passed += kStep) {
    Step();
  }
}

void Camera::Step() {
  state_.clock.uptime += kStep;
  FollowLight(state_);
  AdvanceLens(state_, kStep);
  AdvanceBattery(state_.battery, kStep);
  AdvanceRecording(state_, kStep);
  AdvanceNetwork(state_, settings_.TimeCodeFollowsNtp(), kStep);
  AdvanceUpload(state_, kStep);
  AdvanceCloud(state_, kStep);
}

void Camera::ReloadSettings() {
  const SettingsFiles::Changes changes = settings_.Reload();
  news_ = changes.lines;
  state_.recording.format = settings_.RecordingFormat();
  if (changes.ntp) {
    RestartNtp(state_);
  }
  if (changes.streaming) {
    RestartStreaming(state_);
  }
}

}  // namespace simulator
