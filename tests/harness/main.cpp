#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "harness/private_world.h"

namespace {

/// Each test of a program starts with an empty private world, whichever tests came before it.
class EmptyWorldForEachTest : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo& /*test*/) override { harness::ResetPrivateWorld(); }
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  // The list of tests is asked for while the program is built, where nothing needs to be private.
  if (!testing::GTEST_FLAG(list_tests)) {
    harness::EnterPrivateWorld();
    testing::UnitTest::GetInstance()->listeners().Append(new EmptyWorldForEachTest);
  }
  return RUN_ALL_TESTS();
}
