#include "simulator/controls.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "simulator/control_daemon.h"

namespace {

using namespace simulator;

struct StepRow {
  int before;
  std::uint8_t key;
  int after;
};

constexpr std::uint8_t kShutter = 6;
constexpr std::uint8_t kFaster = 5;
constexpr std::uint8_t kSlower = 6;
constexpr std::uint8_t kGain = 4;
constexpr std::uint8_t kUp = 6;
constexpr std::uint8_t kDown = 7;

TEST(ControlsTest, TheVariableShutterIsFineUpTo100Hz) {
  for (const StepRow& row : {StepRow{500, kSlower, 500},
                             {500, kFaster, 501},
                             {999, kFaster, 1000},
                             {1000, kFaster, 1010},
                             {1010, kSlower, 1000},
                             {1000, kSlower, 999},
                             {99990, kFaster, 100000},
                             {100000, kFaster, 100000},
                             {100000, kSlower, 99990}}) {
    Camera camera;
    camera.state().shutter.mode = ShutterMode::kVariable;
    camera.state().shutter.variable_tenth_hz = row.before;
    PressKey(camera, {kShutter, row.key});
    EXPECT_EQ(camera.state().shutter.variable_tenth_hz, row.after) << row.before;
  }
}

TEST(ControlsTest, TheShutterEndsAtItsSlowestAndFastestSpeed) {
  for (const StepRow& row :
       {StepRow{0, kSlower, 0}, {0, kFaster, 1}, {10, kFaster, 10}, {10, kSlower, 9}}) {
    Camera camera;
    camera.state().shutter.step = row.before;
    PressKey(camera, {kShutter, row.key});
    EXPECT_EQ(camera.state().shutter.step, row.after) << row.before;
  }
}

TEST(ControlsTest, TheGainEndsAtMinus6And30Db) {
  for (const StepRow& row :
       {StepRow{-6, kDown, -6}, {-6, kUp, -3}, {28, kUp, 30}, {30, kUp, 30}, {30, kDown, 27}}) {
    Camera camera;
    camera.state().gain.mode = GainMode::kManualM;
    camera.state().gain.db = {0, row.before, 18};
    PressKey(camera, {kGain, row.key});
    EXPECT_EQ(camera.state().gain.db, (std::array<int, 3>{0, row.after, 18}));
  }
}

TEST(ControlsTest, AControlThatDoesNotExistIsRefused) {
  const State state = DefaultState();
  for (const Refusal& refusal :
       {RefuseKey(state, {3, 9}), RefuseKey(state, {0, 0}), RefuseSlider(state, {3, 0, 0}),
        RefuseField(state, {20, 0, 0}), RefuseSeesaw(state, {25, 1, 1})}) {
    EXPECT_STREQ(refusal.why, "the camera has no such control");
    EXPECT_EQ(refusal.result, Result::kRequestedError);
  }
}

// What the camera has to show at every offset that the status report reads a flag from.
TEST(ControlsTest, EveryFlagIsMadeAndTheSameOneSaysTheSame) {
  const Camera camera;
  std::map<std::size_t, bool> seen;
  for (const EnableFlag& flag : EnableFlags(camera.state(), camera.settings())) {
    const auto [other, is_new] = seen.emplace(flag.offset, flag.enabled);
    EXPECT_TRUE(is_new || other->second == flag.enabled) << flag.offset;
  }
  std::vector<std::size_t> missing;
  for (std::size_t offset = 120; offset <= 221; ++offset) {
    if (seen.count(offset) == 0) {
      missing.push_back(offset);
    }
  }
  EXPECT_EQ(missing, (std::vector<std::size_t>{128, 129}));
}

struct DecodedRow {
  std::uint8_t code;
  Bytes payload;
  const char* words;
};

TEST(ControlsTest, MessagesInWords) {
  Camera camera;
  const Daemon daemon("quonta_cp", ControlMessages(), camera);
  for (const DecodedRow& row : {
           DecodedRow{17, {3, 7}, "iris close 3"},
           {17, {3, 99}, "key of unknown kind 3, code 99"},
           {17, {3}, "key event, incomplete"},
           {17, {3, 7, 0, 0}, "iris close 3"},
           {18, {17, 1, 44}, "zoom bar to 300"},
           {18, {20, 0xff, 0xe0}, "white paint red to -32"},
           {18, {99, 0, 5}, "slider of unknown kind 99 to 5"},
           {19, {22, 64, 0}, "white paint field to 64, 0"},
           {118, {1, 255}, "zoom seesaw wide, speed 255"},
           {119, {27, 2, 3}, "iris seesaw close, speed 3"},
           {119, {28, 1, 3}, "master black seesaw up, speed 3"},
           {119, {29, 7, 3}, "focus seesaw stop"},
           {119, {99, 1, 3}, "seesaw of unknown kind 99"},
           {14, {0xff, 0xfb}, "zoom to -5"},
           {0, {}, "status request"},
           {200, {}, "unknown message 5/200"},
       }) {
    EXPECT_EQ(daemon.Describe({5, row.code, row.payload, {}}), row.words);
  }
}

TEST(ControlsTest, AMessageThatTheDaemonDoesNotKnowIsRefusedWithAReason) {
  Camera camera;
  const Daemon daemon("quonta_cp", ControlMessages(), camera);
  const Answered unknown = daemon.Answer({5, 200, {}, {}});
  EXPECT_EQ(unknown.reply, Bytes{1});
  EXPECT_EQ(unknown.why, "there is no such message");
  const Answered incomplete = daemon.Answer({5, 17, {3}, {}});
  EXPECT_EQ(incomplete.reply, Bytes{1});
  EXPECT_EQ(incomplete.why, "its payload is too short");
}

}  // namespace
