#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "harness/private_world.h"

namespace {

/// Each test starts with an empty private world, also in a program that runs many tests.
class EmptyWorldForEachTest : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo& /*test*/) override { harness::ResetPrivateWorld(); }
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  // The build lists the tests, which needs no private world.
  if (!testing::GTEST_FLAG(list_tests)) {
    harness::EnterPrivateWorld();
    testing::UnitTest::GetInstance()->listeners().Append(new EmptyWorldForEachTest);
  }
  return RUN_ALL_TESTS();
}
