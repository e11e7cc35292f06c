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

// In a constant expression, reading beyond the names would not compile.
TEST(NameTable, IsNotReadBeyondItsNames) {
  static constexpr NameTable<2> kTable = {{"zero", "one"}, "other"};
  static_assert(*kTable[2] == 'o' && kTable[2] == kTable.otherwise);
  static_assert(kTable[-1] == kTable.otherwise);
}

}  // namespace
