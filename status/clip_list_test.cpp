#include <gtest/gtest.h>

#include "core/command_table.h"

namespace {

TEST(GetClipInfo, WaitsTwentySecondsForEachReply) {
  const CommandRow* const row = FindCommand("GetClipInfo");
  ASSERT_NE(row, nullptr);
  EXPECT_EQ(row->preset.timeout_seconds, 20);
}

}  // namespace
