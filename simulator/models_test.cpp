#include "simulator/models.h"

#include <gtest/gtest.h>

namespace {

using namespace simulator;

State With(int model, const char* firmware) {
  State state;
  state.model = model;
  state.firmware = firmware;
  return state;
}

constexpr int kRv130 = 3;

TEST(ModelsTest, TheFirmwareDecidesWhatIsThere) {
  struct Row {
    const char* firmware;
    bool ifb;
    bool cloud;
  };
  for (const Row& row : {Row{"1.02", false, false},
                         {"1.03", true, false},
                         {"1.04", true, false},
                         {"1.05", true, true},
                         {"1.10", true, true},
                         {"0.99", false, false},
                         {"2", true, true},
                         {"2.00", true, true},
                         {"", false, false}}) {
    EXPECT_EQ(HasIfb(With(kRv130, row.firmware)), row.ifb) << row.firmware;
    EXPECT_EQ(HasCloud(With(kRv130, row.firmware)), row.cloud) << row.firmware;
  }
}

TEST(ModelsTest, TheModelDecidesWhatIsThere) {
  // RV130/140, RV110, RV120, RV130, RV140, RV150, ..., RV220
  for (int model = 0; model < 12; ++model) {
    const State state = With(model, "1.08");
    EXPECT_EQ(HasStreaming(state), model == 3 || model == 4) << model;
    EXPECT_EQ(HasCloud(state), model == 3 || model == 4) << model;
    EXPECT_EQ(HasIfb(state), model == 3 || model == 4) << model;
    EXPECT_EQ(HasGps(state), model != 1 && model != 2) << model;
    EXPECT_EQ(HasUpload(state), model != 1) << model;
  }
}

TEST(ModelsTest, TheRecordingFormatDecidesTheFrameRate) {
  State state;
  const bool is_50_hz[] = {false, false, false, true, true,  true,
                           false, true,  false, true, false, true};
  for (int format = 0; format < 12; ++format) {
    state.recording.format = format;
    EXPECT_EQ(Is50Hz(state), is_50_hz[format]) << format;
  }
}

TEST(ModelsTest, WithoutAFormatTheDestinationDecides) {
  State state;
  state.recording.format = Recording::kNoFormat;
  // JP, US, KR, EU, ER, AC, AA, AG, TW, AS, UC, UA, UB, EZ, EY, EK, EY, AH, UN
  const bool is_50_hz[] = {false, false, false, true, true, true, true, true, false, true,
                           false, false, false, true, true, true, true, true, true};
  for (int destination = 0; destination < 19; ++destination) {
    state.destination = destination;
    EXPECT_EQ(Is50Hz(state), is_50_hz[destination]) << destination;
  }
}

TEST(ModelsTest, FramesAreCountedAsTheRateAndDropFrameSay) {
  State state;
  EXPECT_EQ(CountingOf(state), Counting::k30Drop);
  state.time_code.drop_frame = false;
  EXPECT_EQ(CountingOf(state), Counting::k30);
  state.recording.format = 3;
  EXPECT_EQ(CountingOf(state), Counting::k25);
}

}  // namespace
