// The simulated camera: its state, its time and its settings files.
#pragma once

#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "simulator/settings_files.h"
#include "simulator/state.h"

namespace simulator {

/// It has its own time, which passes in steps of ten milliseconds, so that nothing depends on how
/// often the camera is read.
class Camera {
 public:
  static constexpr Milliseconds kStep = 10;

  Camera() : state_(DefaultState()) {}

  State& state() { return state_; }
  [[nodiscard]] const State& state() const { return state_; }
  SettingsFiles& settings() { return settings_; }
  [[nodiscard]] const SettingsFiles& settings() const { return settings_; }

  /// Lets real time pass. The camera's time passes according to its clock's speed, and not at all
  /// while the clock is paused.
  void LetRealTimePass(std::chrono::nanoseconds real);
  /// Lets the camera's time pass, down to whole steps.
  void LetTimePass(Milliseconds time);

  /// Takes over what the settings files say now.
  void ReloadSettings();

  /// What has happened to the settings files since the last call, in lines for its user.
  [[nodiscard]] std::vector<std::string> TakeNews() { return std::exchange(news_, {}); }

 private:
  void Step();

  State state_;
  SettingsFiles settings_;
  std::vector<std::string> news_;
  double owed_ms_ = 0;  ///< real time that was too short for a step
};

}  // namespace simulator
