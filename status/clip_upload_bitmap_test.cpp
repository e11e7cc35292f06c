#include "status/clip_upload_bitmap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

class SetClipUploadBitmapTest : public testing::Test {
 protected:
  SetClipUploadBitmapTest() { std::fill(std::begin(blocks_), std::end(blocks_), 0x11111111U); }

  [[nodiscard]] bool Holds(std::size_t block, const char (&bytes)[5]) const {
    return std::memcmp(&blocks_[block], bytes, 4) == 0;
  }

  std::uint32_t blocks_[kClipBlockCount];
};

TEST_F(SetClipUploadBitmapTest, ClearsTheBlocksThatAreMissing) {
  SetClipUploadBitmap("{}}}", blocks_);
  EXPECT_TRUE(std::all_of(std::begin(blocks_), std::end(blocks_),
                          [](std::uint32_t word) { return word == 0; }));
}

TEST_F(SetClipUploadBitmapTest, StoresBlocksInBigEndian) {
  SetClipUploadBitmap(R"({"block0":305419896,"block124":-2}}})", blocks_);
  EXPECT_TRUE(Holds(0, "\x12\x34\x56\x78"));
  EXPECT_TRUE(Holds(123, "\0\0\0\0"));
  EXPECT_TRUE(Holds(124, "\xFF\xFF\xFF\xFE"));
}

TEST_F(SetClipUploadBitmapTest, KeepsABlockWhoseValueIsNotTerminated) {
  SetClipUploadBitmap(R"({"block0":1,"block1":2)", blocks_);
  EXPECT_TRUE(Holds(0, "\0\0\0\x01"));
  EXPECT_TRUE(Holds(1, "\x11\x11\x11\x11"));
  EXPECT_TRUE(Holds(2, "\0\0\0\0"));
}

TEST_F(SetClipUploadBitmapTest, SearchesABlockAfterTheLastOneFound) {
  SetClipUploadBitmap(R"({"block2":9,"block1":1,"block0":3,"block2":2,"block2":4}}})", blocks_);
  EXPECT_TRUE(Holds(0, "\0\0\0\x03"));
  EXPECT_TRUE(Holds(1, "\0\0\0\0"));
  EXPECT_TRUE(Holds(2, "\0\0\0\x02"));
}

TEST_F(SetClipUploadBitmapTest, TakesOnlyWholeKeys) {
  SetClipUploadBitmap(
      R"({"block":1,"block00":1,"block01":1,"block1"block1":5,"block2 ":1,"block125":1}}})",
      blocks_);
  EXPECT_TRUE(Holds(0, "\0\0\0\0"));
  EXPECT_TRUE(Holds(1, "\0\0\0\x05"));
  EXPECT_TRUE(Holds(2, "\0\0\0\0"));
}

TEST_F(SetClipUploadBitmapTest, AcceptsAnEndAnywhereAfterTheValue) {
  SetClipUploadBitmap(R"({"block0":1,"other":{}},"block1":2)", blocks_);
  EXPECT_TRUE(Holds(0, "\0\0\0\x01"));
  EXPECT_TRUE(Holds(1, "\x11\x11\x11\x11"));
}

}  // namespace
