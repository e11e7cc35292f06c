#include "core/word_table.h"

#include <gtest/gtest.h>

namespace {

TEST(WordTable, HasAWordForEveryCode) {
  constexpr WordTable<2> kTable = {{"zero", "one"}, "other"};
  EXPECT_STREQ(kTable[0], "zero");
  EXPECT_STREQ(kTable[1], "one");
  EXPECT_STREQ(kTable[2], "other");
  EXPECT_STREQ(kTable[255], "other");
}

}  // namespace
