#include "simulator/battery.h"

#include <gtest/gtest.h>

namespace {

using simulator::AdvanceBattery;
using simulator::Battery;
using simulator::BatteryInfo;
using simulator::IsEmpty;
using simulator::Milliseconds;

struct Display {
  const char* description;
  BatteryInfo info;
  int value;
  Milliseconds elapsed;
  int value_after;
  int level_after;
};

// A full battery lasts for 140 minutes: 60 s per minute, 84 s per percent, 150 s per tenth of a
// volt between 16.6 and 11.0. Each of the five levels is a fifth of that, rounded up.
constexpr Display kDisplays[] = {
    {"not yet a minute", BatteryInfo::kTime, 137, 59999, 137, 5},
    {"a minute", BatteryInfo::kTime, 137, 60000, 136, 5},
    {"just above four fifths", BatteryInfo::kTime, 114, 60000, 113, 5},
    {"four fifths", BatteryInfo::kTime, 113, 60000, 112, 4},
    {"the last minute", BatteryInfo::kTime, 2, 60000, 1, 1},
    {"empty", BatteryInfo::kTime, 1, 60000, 0, 0},
    {"stays empty", BatteryInfo::kTime, 0, 3600000, 0, 5},
    {"a percent", BatteryInfo::kCapacity, 100, 84000, 99, 5},
    {"eighty percent", BatteryInfo::kCapacity, 81, 84000, 80, 4},
    {"a tenth of a volt", BatteryInfo::kVoltage, 166, 150000, 165, 5},
    {"11.1 V", BatteryInfo::kVoltage, 112, 150000, 111, 1},
    {"11.0 V", BatteryInfo::kVoltage, 111, 150000, 110, 0},
    {"no lower than 11.0 V", BatteryInfo::kVoltage, 111, 1500000, 110, 0},
};

TEST(BatteryTest, EmptiesWithTime) {
  for (const Display& row : kDisplays) {
    Battery battery{row.info, 5, row.value, 0};
    for (Milliseconds passed = 0; passed < row.elapsed; passed += 10) {
      AdvanceBattery(battery, std::min<Milliseconds>(10, row.elapsed - passed));
    }
    EXPECT_EQ(battery.value, row.value_after) << row.description;
    EXPECT_EQ(battery.level, row.level_after) << row.description;
  }
}

TEST(BatteryTest, ALevelThatWasSetLowerDoesNotRise) {
  Battery battery{BatteryInfo::kTime, 1, 140, 0};
  AdvanceBattery(battery, 60000);
  EXPECT_EQ(battery.level, 1);
}

TEST(BatteryTest, IsEmptyAtTheEndOfItsScale) {
  EXPECT_TRUE(IsEmpty({BatteryInfo::kTime, 0, 0, 0}));
  EXPECT_FALSE(IsEmpty({BatteryInfo::kTime, 0, 1, 0}));
  EXPECT_TRUE(IsEmpty({BatteryInfo::kCapacity, 0, 0, 0}));
  EXPECT_TRUE(IsEmpty({BatteryInfo::kVoltage, 0, 110, 0}));
  EXPECT_FALSE(IsEmpty({BatteryInfo::kVoltage, 0, 111, 0}));
}

}  // namespace
