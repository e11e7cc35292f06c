#include "core/memory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>

#include "harness/system_log.h"

namespace {

TEST(Reallocate, KeepsTheContents) {
  auto* memory = static_cast<char*>(Reallocate(nullptr, 0, 4));
  std::memcpy(memory, "1234", 4);
  memory = static_cast<char*>(Reallocate(memory, 4, 100000));
  EXPECT_EQ(std::memcmp(memory, "1234", 4), 0);
  Release(memory);
}

TEST(Reallocate, KeepsBlocksApartThatGrowInTurn) {
  constexpr std::size_t kLargest = 16384;  // twice that is more than the arena has left
  char* blocks[] = {nullptr, nullptr};
  for (std::size_t size = 1; size <= kLargest; size *= 2) {
    for (char*& block : blocks) {
      block = static_cast<char*>(Reallocate(block, size / 2, size));
      std::memset(block + size / 2, &block == blocks ? 'a' : 'b', size - size / 2);
    }
  }
  EXPECT_EQ(std::string(blocks[0], kLargest), std::string(kLargest, 'a'));
  EXPECT_EQ(std::string(blocks[1], kLargest), std::string(kLargest, 'b'));
  Release(blocks[0]);
  Release(blocks[1]);
}

TEST(Reallocate, GivesAnEmptyBlockAnAddressOfItsOwn) {
  void* const empty = Reallocate(nullptr, 0, 0);
  void* const block = Reallocate(nullptr, 0, 8);
  EXPECT_NE(empty, block);
  Release(empty);
  void* const next = Reallocate(nullptr, 0, 8);
  EXPECT_NE(next, block);
  Release(next);
  Release(block);
}

TEST(Reallocate, AlignsForEveryType) {
  constexpr std::size_t kSizes[] = {1, 3, 40000, 5};
  for (const std::size_t size : kSizes) {
    void* const memory = Reallocate(nullptr, 0, size);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(memory) % alignof(std::max_align_t), 0U);
    Release(memory);
  }
}

TEST(Reallocate, EndsTheRequestWhenThereIsNoMemoryLeft) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer's heap reports such a request itself";
#endif
  harness::SystemLog log;
  EXPECT_EXIT(Reallocate(nullptr, 0, std::numeric_limits<std::size_t>::max()),
              testing::ExitedWithCode(1), "");
  EXPECT_THAT(log.Lines(), harness::Logged(harness::Error("out of memory")));
}

}  // namespace
