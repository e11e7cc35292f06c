#include "simulator/exposure.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "simulator/models.h"
#include "simulator/values.h"

namespace simulator {
namespace {

// Everything is counted in thirds of a stop. At a light of 10 EV, 0 dB and 1/100 the right stop is
// F2.8.
constexpr int kReferenceEv = 10;
constexpr int kReferenceStop = 6;
constexpr int kThirdsPerEv = 3;
constexpr int kDecibelsPerThird = 2;

/// How much darker each shutter speed makes the picture than 1/100.
constexpr std::array<int, kShutterSpeeds.size()> kShutterThirds = {-3, -2, 0,  1,  4, 7,
                                                                   10, 13, 16, 19, 20};
constexpr int kWidestStop = 1;     // F1.6
constexpr int kSmallestStop = 23;  // F22
constexpr int kAutomaticGainEnd = 24;

const Light& MeteredLight(const State& state) {
  return state.ae.lock ? state.ae.locked : state.light;
}

/// The slowest shutter, which is also what "off" means.
int OpenShutter(const State& state) { return Is50Hz(state) ? 0 : 1; }

/// The stop that fits the light at 0 dB and without a shutter.
int StopForLight(const State& state) {
  return kReferenceStop + kThirdsPerEv * (MeteredLight(state).ev - kReferenceEv) - state.ae.level;
}

int ShutterThirds(int step) { return kShutterThirds[static_cast<std::size_t>(step)]; }

/// The shutter's part when it is not automatic.
int ShutterStepByHand(const State& state) {
  switch (state.shutter.mode) {
    case ShutterMode::kManual:
    case ShutterMode::kStep:
      return state.shutter.step;
    case ShutterMode::kOff:
    case ShutterMode::kEei:
    case ShutterMode::kVariable:
    case ShutterMode::kUnknown:
      break;
  }
  return OpenShutter(state);
}

int ManualGain(const State& state) {
  switch (state.gain.mode) {
    case GainMode::kManualL:
      return state.gain.db[0];
    case GainMode::kManualM:
      return state.gain.db[1];
    case GainMode::kManualH:
      return state.gain.db[2];
    case GainMode::kAlc:
      break;
    case GainMode::kLolux:
      return kGainHighest;
  }
  return 0;
}

/// The right stop for the light, which may be beyond the ends of the iris.
int WantedStop(const State& state) {
  const int gain = GainIsAutomatic(state) ? 0 : ManualGain(state);
  const int shutter = ShutterIsAutomatic(state) ? OpenShutter(state) : ShutterStepByHand(state);
  return StopForLight(state) + gain / kDecibelsPerThird - ShutterThirds(shutter);
}

}  // namespace

bool IrisIsAutomatic(const State& state) {
  return state.full_auto || state.iris.mode == IrisMode::kAuto;
}

bool GainIsAutomatic(const State& state) {
  return state.full_auto || state.gain.mode == GainMode::kAlc;
}

bool ShutterIsAutomatic(const State& state) {
  return state.full_auto || state.shutter.mode == ShutterMode::kEei;
}

bool WhiteIsAutomatic(const State& state) {
  return state.full_auto || state.white_balance.mode == WhiteBalanceMode::kFaw;
}

bool AeIsOn(const State& state) {
  return IrisIsAutomatic(state) || GainIsAutomatic(state) || ShutterIsAutomatic(state);
}

int CurrentIrisStop(const State& state) {
  return IrisIsAutomatic(state) ? std::clamp(WantedStop(state), kWidestStop, kSmallestStop)
                                : state.iris.stop;
}

int CurrentGain(const State& state) {
  if (!GainIsAutomatic(state)) {
    return ManualGain(state);
  }
  const int missing = (CurrentIrisStop(state) - WantedStop(state)) * kDecibelsPerThird;
  const int steps = (std::clamp(missing, 0, kAutomaticGainEnd) + kGainStep - 1) / kGainStep;
  return steps * kGainStep;
}

int CurrentShutterStep(const State& state) {
  if (!ShutterIsAutomatic(state)) {
    return ShutterStepByHand(state);
  }
  const int too_bright = WantedStop(state) - CurrentIrisStop(state);
  const int open = OpenShutter(state);
  int step = open;
  while (step + 1 < static_cast<int>(kShutterThirds.size()) &&
         ShutterThirds(step + 1) - ShutterThirds(open) <= too_bright) {
    ++step;
  }
  return step;
}

int CurrentKelvin(const State& state) {
  if (WhiteIsAutomatic(state)) {
    return MeteredLight(state).kelvin;
  }
  switch (state.white_balance.mode) {
    case WhiteBalanceMode::kA:
      return state.white_balance.a_kelvin;
    case WhiteBalanceMode::kB:
      return state.white_balance.b_kelvin;
    case WhiteBalanceMode::kPreset:
    case WhiteBalanceMode::kFaw:
      break;
  }
  return state.white_balance.preset_kelvin;
}

void FollowLight(State& state) {
  if (!state.ae.lock) {
    state.ae.locked = state.light;
  }
}

}  // namespace simulator
