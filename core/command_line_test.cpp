#include "core/command_line.h"

#include <gtest/gtest.h>

#include <cstring>

#include "harness/system_log.h"

namespace {

using harness::Error;
using harness::Logged;

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

/// Fills the stack, so that uninitialized variables of the next calls are not zero by chance.
[[gnu::noinline]] void FillStack() {
  char bytes[100000];
  std::memset(bytes, 'x', sizeof bytes);
  asm volatile("" : : "r"(bytes) : "memory");  // keeps the bytes that nothing reads
}

TEST(RunCommandLine, FindsNoNameInAnEmptyRequest) {
  harness::SystemLog log;
  FillStack();
  EXPECT_EQ(RunWith("100"), 1);
  EXPECT_THAT(log.Lines(), Logged(Error("CMD post_data = "), Error("command error = ")));
}

}  // namespace
