#include "core/growing_array.h"

#include <gtest/gtest.h>

namespace {

TEST(GrowingArray, IsEmptyAtFirst) {
  const GrowingArray<int> array;
  EXPECT_EQ(array.Count(), 0U);
  EXPECT_EQ(array.begin(), array.end());
}

TEST(GrowingArray, KeepsAllElementsInOrder) {
  GrowingArray<int> array;
  for (int i = 0; i < 1000; ++i) {
    array.Add(i);
  }
  ASSERT_EQ(array.Count(), 1000U);
  int expected = 0;
  for (const int element : array) {
    EXPECT_EQ(element, expected++);
  }
}

}  // namespace
