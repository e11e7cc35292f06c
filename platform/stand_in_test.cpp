#include <gtest/gtest.h>

#include <string>

#include "harness/files.h"
#include "platform/read_data.h"

namespace {

constexpr char kMemory[] = "/var/run/camera_memory";

TEST(ReadData, CopiesTheBytesAtTheAddress) {
  harness::WriteFile(kMemory, "0123456789");
  char buffer[4] = {};
  EXPECT_EQ(read_data(0x1000, 0x1003, sizeof buffer, buffer), 0);
  EXPECT_EQ(std::string(buffer, sizeof buffer), "3456");
}

TEST(ReadData, LeavesTheBufferUnchangedBeyondTheEnd) {
  harness::WriteFile(kMemory, "0123456789");
  char buffer[] = {'a', 'b', 'c', 'd'};
  EXPECT_NE(read_data(0x1000, 0x1008, sizeof buffer, buffer), 0);
  EXPECT_EQ(std::string(buffer, sizeof buffer), "89cd");
}

TEST(ReadData, LeavesTheBufferUnchangedForAnAddressBelowTheArea) {
  harness::WriteFile(kMemory, "0123456789");
  char buffer[] = {'a', 'b', 'c', 'd'};
  EXPECT_NE(read_data(0x1000, 0x0FFF, sizeof buffer, buffer), 0);
  EXPECT_EQ(std::string(buffer, sizeof buffer), "abcd");
}

}  // namespace
