#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "harness/private_world.h"

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  // The list of tests is asked for while the program is built, where nothing needs to be private.
  if (!testing::GTEST_FLAG(list_tests)) {
    harness::EnterPrivateWorld();
  }
  return RUN_ALL_TESTS();
}
