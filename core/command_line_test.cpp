#include "core/command_line.h"

#include <gtest/gtest.h>

namespace {

/// Runs the handler with one command-line argument and discards its output.
int RunWith(const char* number) {
  const char* const arguments[] = {"camera_remote.cgi", number, nullptr};
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  const int status = RunCommandLine(2, arguments);
  testing::internal::GetCapturedStderr();
  testing::internal::GetCapturedStdout();
  return status;
}

TEST(RunCommandLine, SetsTheFlagWhenItDispatchesARequest) {
  EXPECT_EQ(g_bCmdLine, 0);
  EXPECT_EQ(RunWith("22"), 1);
  EXPECT_EQ(g_bCmdLine, 0) << "a rejected number must not set the flag";
  EXPECT_EQ(RunWith("20"), 1);
  EXPECT_EQ(g_bCmdLine, 1);
}

}  // namespace
