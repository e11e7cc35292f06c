#include "core/memory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <limits>

#include "harness/system_log.h"

namespace {

TEST(Reallocate, KeepsWhatTheMemoryHeld) {
  auto* memory = static_cast<char*>(Reallocate(nullptr, 4));
  std::memcpy(memory, "1234", 4);
  memory = static_cast<char*>(Reallocate(memory, 100000));
  EXPECT_EQ(std::memcmp(memory, "1234", 4), 0);
  std::free(memory);
}

TEST(Reallocate, EndsTheRequestWhenThereIsNoMemoryLeft) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer's heap reports such a request itself";
#endif
  harness::SystemLog log;
  EXPECT_EXIT(Reallocate(nullptr, std::numeric_limits<std::size_t>::max()),
              testing::ExitedWithCode(1), "");
  EXPECT_THAT(log.Lines(), harness::Logged(harness::Error("out of memory")));
}

}  // namespace
