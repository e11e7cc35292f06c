#include "core/bytes.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

constexpr std::uint8_t kBytes[] = {0x81, 0x02, 0x03, 0x84, 'a', 'b', 0, 'c'};
constexpr ByteView kView{kBytes, sizeof kBytes};

TEST(ByteView, ReadsBytesAndLittleEndianNumbers) {
  EXPECT_EQ(kView.U8(0), 0x81);
  EXPECT_EQ(kView.U16LittleEndian(0), 0x0281);
}

TEST(ByteView, ReadsZeroBeyondTheEnd) {
  EXPECT_EQ(kView.U8(8), 0);
  EXPECT_EQ(kView.U8(static_cast<std::size_t>(-1)), 0);
  EXPECT_EQ(kView.U16LittleEndian(7), 0x63);
  EXPECT_EQ(ByteView(nullptr, 0).U8(0), 0);
}

TEST(ByteView, EndsATextAtItsNulItsWidthOrTheLastByte) {
  EXPECT_EQ(kView.Text(4, 4), "ab");
  EXPECT_EQ(kView.Text(4, 1), "a");
  EXPECT_EQ(kView.Text(7, 20), "c");
  EXPECT_EQ(kView.Text(8, 20), "");
  EXPECT_EQ(kView.Text(100, 20), "");
}

TEST(ByteWriter, PutsBigEndianNumbersTruncatedToTheirFields) {
  std::uint8_t bytes[10] = {};
  ByteWriter writer(bytes, sizeof bytes);
  writer.Put(U8Field{0}, 0x1FE);
  writer.Put(S8Field{1}, static_cast<std::uint32_t>(-2));
  writer.Put(U16Field{2}, 0x31234);
  writer.Put(U32Field{4}, 0x89ABCDEF);
  EXPECT_EQ(std::memcmp(bytes, "\xFE\xFE\x12\x34\x89\xAB\xCD\xEF\0\0", 10), 0);
}

TEST(ByteWriter, EndsATextWithinItsField) {
  char bytes[] = "########";
  ByteWriter writer(reinterpret_cast<std::uint8_t*>(bytes), 8);
  writer.Put(TextField{1, 4}, "abcd");
  EXPECT_EQ(std::memcmp(bytes, "#abc\0###", 8), 0);
  writer.Put(TextField{1, 4}, "e");
  EXPECT_EQ(std::memcmp(bytes, "#e\0\0\0###", 8), 0);
}

TEST(ByteWriter, DropsBytesBeyondTheEnd) {
  std::uint8_t bytes[] = {1, 2, 3, 4};
  ByteWriter writer(bytes, 2);
  writer.Put(U32Field{1}, 0xA0B0C0D0);
  writer.Put(TextField{2, 8}, "abcdefg");
  EXPECT_EQ(std::memcmp(bytes, "\x01\xA0\x03\x04", 4), 0);
}

TEST(LittleEndian, StoresTheLowByteFirst) {
  const LittleEndian16 word = std::uint16_t{0x1234};
  const LittleEndian32 number = 0x12345678U;
  EXPECT_EQ(std::memcmp(&word, "\x34\x12", 2), 0);
  EXPECT_EQ(std::memcmp(&number, "\x78\x56\x34\x12", 4), 0);
  EXPECT_EQ(std::uint16_t{word}, 0x1234);
}

TEST(ByteView, ReadsEachKindOfField) {
  EXPECT_EQ(kView[U8Field{0}], 0x81);
  EXPECT_EQ(kView[S8Field{0}], -127);
  EXPECT_EQ(kView[S8Field{1}], 2);
  EXPECT_EQ(kView[U16Field{0}], 0x8102);
  EXPECT_EQ(kView[S16Field{0}], -32510);
  EXPECT_EQ(kView[U32Field{0}], 0x81020384U);
  EXPECT_EQ((kView[TextField{4, 4}]), "ab");
  EXPECT_EQ((kView[BytesField{2, 3}].Size()), 3U);
  EXPECT_EQ((kView[BytesField{2, 3}].U8(2)), 'a');
}

TEST(ByteView, ReadsFieldsBeyondTheEndAsZero) {
  EXPECT_EQ(kView[U8Field{8}], 0);
  EXPECT_EQ(kView[S8Field{9}], 0);
  EXPECT_EQ(kView[U16Field{8}], 0);
  EXPECT_EQ(kView[S16Field{7}], 0x6300);
  EXPECT_EQ(kView[U32Field{5}], 0x62006300U);
  EXPECT_EQ(kView[U32Field{100}], 0U);
  EXPECT_EQ((kView[TextField{8, 4}]), "");
  EXPECT_EQ((kView[BytesField{6, 20}].Size()), 2U);
  EXPECT_EQ((kView[BytesField{9, 1}].Size()), 0U);
  EXPECT_EQ((kView[BytesField{9, 1}].U8(0)), 0);
  EXPECT_EQ((ByteView(nullptr, 0)[BytesField{9, 1}].Size()), 0U);
}

TEST(ToBigEndian32, HoldsTheHighestByteFirst) {
  const std::uint32_t word = ToBigEndian32(0x12345678U);
  EXPECT_EQ(std::memcmp(&word, "\x12\x34\x56\x78", 4), 0);
}

}  // namespace
