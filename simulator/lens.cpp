#include "simulator/lens.h"

#include <algorithm>
#include <cstdlib>

#include "simulator/values.h"

namespace simulator {
namespace {

constexpr Milliseconds kSecond = 1000;
/// How fast the zoom travels to a position, in positions per second.
constexpr int kZoomTravelSpeed = 500;
/// What one step of a switch's speed adds, in positions per second.
constexpr int kSwitchSpeedStep = 20;
constexpr int kFocusTravelSpeed = 1000;
constexpr Milliseconds kOnePushTime = 1000;

/// How many whole steps are due; keeps the rest for the next time.
int TakeSteps(Milliseconds& owed, Milliseconds elapsed, int steps_per_second) {
  owed += elapsed * steps_per_second;
  const Milliseconds steps = owed / kSecond;
  owed -= steps * kSecond;
  return static_cast<int>(steps);
}

/// The position after at most `steps` steps towards a target.
int Approach(int position, int target, int steps) {
  return position + std::clamp(target - position, -steps, steps);
}

void Run(Travel& travel, Direction direction, int steps_per_second) {
  travel = {direction, steps_per_second, 0};
}

/// The value after the time that has passed; the travel stops at an end of the range.
int Travelled(Travel& travel, int value, int lowest, int highest, Milliseconds elapsed) {
  if (travel.direction == Direction::kStopped) {
    return value;
  }
  const int target = travel.direction == Direction::kUp ? highest : lowest;
  const int reached =
      Approach(value, target, TakeSteps(travel.owed, elapsed, travel.steps_per_second));
  if (reached == target) {
    travel = {};
  }
  return reached;
}

void AdvanceFocus(Focus& focus, Milliseconds elapsed) {
  focus.in_mode += elapsed;
  if (focus.mode == FocusMode::kManual) {
    focus.position = Travelled(focus.travel, focus.position, 0, kFocusInfinity, elapsed);
    return;
  }
  focus.travel.direction = Direction::kStopped;
  focus.position = Approach(focus.position, focus.subject,
                            TakeSteps(focus.travel.owed, elapsed, kFocusTravelSpeed));
  if (focus.mode == FocusMode::kOnePush && focus.in_mode >= kOnePushTime) {
    focus.mode = FocusMode::kManual;
    focus.in_mode = 0;
  }
}

}  // namespace

void ZoomTo(State& state, int position) {
  state.zoom.target = std::clamp(position, 0, kZoomTele);
  state.zoom.speed = kZoomTravelSpeed;
}

void RunZoom(State& state, Direction direction, int speed) {
  if (direction == Direction::kStopped) {
    state.zoom.target = state.zoom.position;
    state.zoom.speed = 0;
    return;
  }
  state.zoom.target = direction == Direction::kUp ? kZoomTele : 0;
  state.zoom.speed = kSwitchSpeedStep * speed;
}

bool IsZooming(const State& state) { return state.zoom.position != state.zoom.target; }

int ZoomDisplayValue(const State& state) {
  constexpr int kDisplayEnd = 99;
  return state.zoom.position * kDisplayEnd / kZoomTele;
}

void StepIris(State& state, int thirds) {
  constexpr int kClosed = static_cast<int>(kIrisStops.size()) - 1;
  state.iris.stop = std::clamp(state.iris.stop + thirds, 0, kClosed);
}

void StepFocus(State& state, int positions) {
  state.focus.position = std::clamp(state.focus.position + positions, 0, kFocusInfinity);
}

void PushAutoFocus(State& state) {
  state.focus.mode = FocusMode::kOnePush;
  state.focus.in_mode = 0;
}

void RunIris(State& state, Direction direction, int speed) {
  Run(state.iris.travel, direction, speed);
}

void RunFocus(State& state, Direction direction, int speed) {
  Run(state.focus.travel, direction, kSwitchSpeedStep * speed);
}

void RunMasterBlack(State& state, Direction direction, int speed) {
  Run(state.master_black.travel, direction, speed);
}

void AdvanceLens(State& state, Milliseconds elapsed) {
  Zoom& zoom = state.zoom;
  zoom.owed = IsZooming(state) ? zoom.owed : 0;
  zoom.position = Approach(zoom.position, zoom.target, TakeSteps(zoom.owed, elapsed, zoom.speed));
  AdvanceFocus(state.focus, elapsed);
  Iris& iris = state.iris;
  if (iris.mode == IrisMode::kAuto || state.full_auto) {
    iris.travel = {};
  }
  iris.stop =
      Travelled(iris.travel, iris.stop, 0, static_cast<int>(kIrisStops.size()) - 1, elapsed);
  Leveled& black = state.master_black;
  black.level = Travelled(black.travel, black.level, -kMasterBlackEnd, kMasterBlackEnd, elapsed);
}

}  // namespace simulator
