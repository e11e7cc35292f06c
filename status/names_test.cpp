#include "status/names.h"

#include <gtest/gtest.h>

namespace {

TEST(GetStrStudioTally, HasANameForEveryState) {
  EXPECT_STREQ(GetStrStudioTally(0), "Off");
  EXPECT_STREQ(GetStrStudioTally(1), "Program");
  EXPECT_STREQ(GetStrStudioTally(2), "Preview");
  EXPECT_STREQ(GetStrStudioTally(3), "Off");
  EXPECT_STREQ(GetStrStudioTally(255), "Off");
}

TEST(GetFtpPhase, HasANameForEveryPhase) {
  const struct {
    int phase;
    const char* word;
  } cases[] = {
      {-1, "?????"},  {0, "OFF"},     {1, "START"},    {2, "OCCUPY_SLOT"},   {3, "CLEAR"},
      {4, "MOUNT"},   {5, "PARSE"},   {6, "TRANS"},    {7, "PUT_FILE"},      {8, "?????"},
      {9, "TRUST"},   {10, "PROMPT"}, {11, "UNMOUNT"}, {12, "RELEASE_SLOT"}, {13, "RECOVER"},
      {14, "RESUME"}, {15, "?????"},  {256, "?????"},
  };
  for (const auto& row : cases) {
    EXPECT_STREQ(GetFtpPhase(row.phase), row.word) << row.phase;
  }
}

}  // namespace
