#include "simulator/exposure.h"

#include <gtest/gtest.h>

#include "simulator/values.h"

namespace {

using namespace simulator;

/// Iris, gain and shutter are as after the start: F2.8, 0 dB, 1/100, right for a light of 10 EV.
State InTheLight(int ev) {
  State state = DefaultState();
  state.light.ev = ev;
  return state;
}

State WithAutomaticIris(int ev) {
  State state = InTheLight(ev);
  state.iris.mode = IrisMode::kAuto;
  return state;
}

std::string_view IrisIn(const State& state) {
  return kIrisStops[static_cast<std::size_t>(CurrentIrisStop(state))];
}

std::string_view ShutterIn(const State& state) {
  return kShutterSpeeds[static_cast<std::size_t>(CurrentShutterStep(state))];
}

struct LightRow {
  int ev;
  const char* stop;
};

TEST(ExposureTest, AnAutomaticIrisClosesByAStopForEachEvUpToItsEnds) {
  for (const LightRow& row : {LightRow{0, "F1.6"},
                              {8, "F1.6"},
                              {9, "F2.0"},
                              {10, "F2.8"},
                              {11, "F4.0"},
                              {12, "F5.6"},
                              {15, "F16"},
                              {16, "F22"},
                              {20, "F22"}}) {
    EXPECT_EQ(IrisIn(WithAutomaticIris(row.ev)), row.stop) << row.ev << " EV";
  }
}

TEST(ExposureTest, AnIrisSetByHandIgnoresTheLight) { EXPECT_EQ(IrisIn(InTheLight(15)), "F2.8"); }

TEST(ExposureTest, AHigherAeLevelOpensTheIris) {
  State state = WithAutomaticIris(10);
  state.ae.level = 3;
  EXPECT_EQ(IrisIn(state), "F2.0");
  state.ae.level = -6;
  EXPECT_EQ(IrisIn(state), "F5.6");
}

TEST(ExposureTest, MoreGainByHandClosesTheIris) {
  State state = WithAutomaticIris(10);
  state.gain.db[0] = 6;
  EXPECT_EQ(IrisIn(state), "F4.0");
  state.gain.mode = GainMode::kLolux;  // 30 dB
  EXPECT_EQ(IrisIn(state), "F16");
}

TEST(ExposureTest, AShorterShutterOpensTheIris) {
  State state = WithAutomaticIris(12);
  state.shutter.step = 4;  // 1/250
  EXPECT_EQ(IrisIn(state), "F3.5");
}

TEST(ExposureTest, AutomaticGainAddsWhatTheIrisCannotInStepsOf3Db) {
  State state = WithAutomaticIris(8);
  state.gain.mode = GainMode::kAlc;
  EXPECT_EQ(CurrentGain(state), 3);  // a third of a stop is missing: 2 dB
  state.light.ev = 7;
  EXPECT_EQ(CurrentGain(state), 9);  // four thirds: 8 dB
  state.light.ev = 0;
  EXPECT_EQ(CurrentGain(state), 24);  // the highest
  state.light.ev = 10;
  EXPECT_EQ(CurrentGain(state), 0);
}

TEST(ExposureTest, AnAutomaticShutterTakesAwayWhatTheIrisCannot) {
  State state = InTheLight(13);
  state.shutter.mode = ShutterMode::kEei;
  // F2.8 and 1/60 are 11 thirds of a stop too bright; 1/500 takes 9, 1/1000 would take 12.
  EXPECT_EQ(ShutterIn(state), "1/500");
  state.light.ev = 20;
  EXPECT_EQ(ShutterIn(state), "1/10000");
  state.light.ev = 0;
  EXPECT_EQ(ShutterIn(state), "1/60");
  state.recording.format = 3;  // 50 Hz
  EXPECT_EQ(ShutterIn(state), "1/50");
}

TEST(ExposureTest, TheLockKeepsTheLightThatItFound) {
  State state = WithAutomaticIris(10);
  FollowLight(state);
  state.ae.lock = true;
  state.light.ev = 15;
  FollowLight(state);
  EXPECT_EQ(IrisIn(state), "F2.8");
  state.ae.lock = false;
  EXPECT_EQ(IrisIn(state), "F16");
}

TEST(ExposureTest, FullAutoMakesEverythingAutomatic) {
  State state = InTheLight(10);
  EXPECT_FALSE(IrisIsAutomatic(state) || GainIsAutomatic(state) || ShutterIsAutomatic(state) ||
               WhiteIsAutomatic(state) || AeIsOn(state));
  state.full_auto = true;
  EXPECT_TRUE(IrisIsAutomatic(state) && GainIsAutomatic(state) && ShutterIsAutomatic(state) &&
              WhiteIsAutomatic(state) && AeIsOn(state));
}

TEST(ExposureTest, TheColorTemperatureIsThatOfTheModeOrOfTheLight) {
  State state = InTheLight(10);
  state.light.kelvin = 7000;
  EXPECT_EQ(CurrentKelvin(state), 3200);
  state.white_balance.mode = WhiteBalanceMode::kA;
  EXPECT_EQ(CurrentKelvin(state), 4300);
  state.white_balance.mode = WhiteBalanceMode::kB;
  EXPECT_EQ(CurrentKelvin(state), 5600);
  state.white_balance.mode = WhiteBalanceMode::kFaw;
  EXPECT_EQ(CurrentKelvin(state), 7000);
}

}  // namespace
