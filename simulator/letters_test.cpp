#include "simulator/letters.h"

#include <gtest/gtest.h>

#include "simulator/values.h"

namespace {

using namespace simulator;

TEST(LettersTest, AeLevelInThirdsOfAStop) {
  State state;
  const char* const letters[] = {"-2.0", "-1.7", "-1.3", "-1.0", "-0.7", "-0.3", "0",
                                 "+0.3", "+0.7", "+1.0", "+1.3", "+1.7", "+2.0"};
  for (int level = -6; level <= 6; ++level) {
    state.ae.level = level;
    EXPECT_EQ(AeLetter(state), letters[level + 6]);
  }
}

TEST(LettersTest, Gain) {
  State state;
  state.gain.db = {-6, 0, 30};
  EXPECT_EQ(GainLetter(state), "-6dB");
  state.gain.mode = GainMode::kManualM;
  EXPECT_EQ(GainLetter(state), "0dB");
  state.gain.mode = GainMode::kManualH;
  EXPECT_EQ(GainLetter(state), "30dB");
  state.gain.mode = GainMode::kLolux;
  EXPECT_EQ(GainLetter(state), "LOLUX");
  state.full_auto = true;  // the gain is automatic, whatever its switch says
  EXPECT_EQ(GainLetter(state), "0dB");
}

TEST(LettersTest, ShutterWithATenthOfAHertzWhereThereIsOne) {
  State state;
  state.shutter.step = 10;
  EXPECT_EQ(ShutterLetter(state), "1/10000");
  state.shutter.mode = ShutterMode::kOff;
  EXPECT_EQ(ShutterLetter(state), "OFF");
  state.shutter.mode = ShutterMode::kVariable;
  for (const auto& [tenths, letter] :
       {std::pair{500, "1/50"}, {602, "1/60.2"}, {99999, "1/9999.9"}, {100000, "1/10000"}}) {
    state.shutter.variable_tenth_hz = tenths;
    EXPECT_EQ(ShutterLetter(state), letter);
  }
}

TEST(LettersTest, FocusInMetersAndFeet) {
  State state;
  struct Row {
    int position;
    const char* meters;
    const char* feet;
  };
  // 0.5 m * 1000 / (1000 - position); one meter has 3.28084 feet.
  for (const Row& row : {Row{0, "0.5m", "1.6ft"},
                         {500, "1.0m", "3.3ft"},
                         {800, "2.5m", "8.2ft"},
                         {950, "10m", "33ft"},
                         {998, "250m", "820ft"},
                         {999, "INF", "INF"}}) {
    state.focus.position = row.position;
    state.focus.unit = FocusUnit::kMeters;
    EXPECT_EQ(FocusLetter(state), row.meters);
    state.focus.unit = FocusUnit::kFeet;
    EXPECT_EQ(FocusLetter(state), row.feet);
  }
}

TEST(LettersTest, SignsAndColorTemperatures) {
  EXPECT_EQ(SignedText(-3), "-3");
  EXPECT_EQ(SignedText(0), "0");
  EXPECT_EQ(SignedText(12), "+12");
  EXPECT_EQ(KelvinText(15000), "15000K");
}

// Fields of the camera status block: the iris has 5 bytes, the shutter and the focus have 8.
TEST(LettersTest, EveryLetterFitsItsField) {
  State state;
  for (std::size_t stop = 0; stop < kIrisStops.size(); ++stop) {
    state.iris.stop = static_cast<int>(stop);
    EXPECT_LE(IrisLetter(state).size(), 5U) << kIrisStops[stop];
  }
  state.shutter.mode = ShutterMode::kVariable;
  for (int tenths = kVariableLowest; tenths <= kVariableHighest; ++tenths) {
    state.shutter.variable_tenth_hz = tenths;
    ASSERT_LE(ShutterLetter(state).size(), 8U) << tenths;
  }
  state.focus.unit = FocusUnit::kFeet;
  for (int position = 0; position <= kFocusInfinity; ++position) {
    state.focus.position = position;
    ASSERT_LE(FocusLetter(state).size(), 8U) << position;
  }
}

}  // namespace
