#include "core/test_mode.h"

#include <gtest/gtest.h>

namespace {

/// Runs the test mode; the reply goes nowhere.
int RunWith(const char* number) {
  const char* const arguments[] = {"camera_remote.cgi", number, nullptr};
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  const int status = RunTestMode(2, arguments);
  testing::internal::GetCapturedStderr();
  testing::internal::GetCapturedStdout();
  return status;
}

TEST(TestMode, MarksThatARequestFromTheCommandLineIsOnItsWay) {
  EXPECT_EQ(g_bCmdLine, 0);
  EXPECT_EQ(RunWith("22"), 1);
  EXPECT_EQ(g_bCmdLine, 0) << "a refused number is no request";
  EXPECT_EQ(RunWith("20"), 1);
  EXPECT_EQ(g_bCmdLine, 1);
}

}  // namespace
