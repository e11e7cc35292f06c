#include "core/name_table.h"

#include <gtest/gtest.h>

namespace {

TEST(NameTable, HasANameForEveryCode) {
  constexpr NameTable<2> kTable = {{"zero", "one"}, "other"};
  EXPECT_STREQ(kTable[0], "zero");
  EXPECT_STREQ(kTable[1], "one");
  EXPECT_STREQ(kTable[2], "other");
  EXPECT_STREQ(kTable[255], "other");
}

TEST(NameTable, HasTheCatchAllNameForCodesBeyondAByte) {
  constexpr NameTable<2> kTable = {{"zero", "one"}, "other"};
  EXPECT_STREQ(kTable[-1], "other");
  EXPECT_STREQ(kTable[256], "other");
  EXPECT_STREQ(kTable[-2147483647 - 1], "other");
}

}  // namespace
