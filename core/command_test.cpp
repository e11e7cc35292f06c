#include "core/cmd/command.h"

#include <gtest/gtest.h>

namespace {

TEST(MakeTCString, PrintsPackedTimeCodes) {
  const struct {
    const char* description;
    std::uint32_t packed;
    const char* text;
  } cases[] = {
      {"drop frame", 0x01234596, "01:23:45.16"},
      {"drop frame, no frames", 0x10000080, "10:00:00.00"},
      {"no drop frame", 0x23595929, "23:59:59:29"},
      {"zero", 0, "00:00:00:00"},
      {"unused bits of the hours", 0xC0000000, "00:00:00:00"},
      {"unused bit of the minutes", 0x00800000, "00:00:00:00"},
      {"unused bit of the seconds", 0x00008000, "00:00:00:00"},
      {"nibbles above 9", 0x3A6B7C0F, "3a:6b:7c:0f"},
      {"all bits", 0xFFFFFFFF, "3f:7f:7f.7f"},
  };
  for (const auto& row : cases) {
    char text[Command::kTimeCodeSize];
    Command::MakeTCString(row.packed, text);
    EXPECT_STREQ(text, row.text) << row.description;
  }
}

}  // namespace
