#include "core/line_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "harness/files.h"

namespace {

constexpr char kLinesFile[] = "/var/tmp/lighttpd/lines";

template <std::size_t Size>
std::vector<std::string> Lines(const std::string& contents) {
  harness::WriteFile(kLinesFile, contents);
  const os::Descriptor file = os::OpenForReading(kLinesFile);
  LineReader<Size> reader(file);
  std::vector<std::string> lines;
  while (const char* line = reader.Next()) {
    lines.emplace_back(line);
  }
  return lines;
}

using Texts = std::vector<std::string>;

TEST(LineReader, ReturnsLinesWithTheirLineFeeds) {
  EXPECT_EQ(Lines<256>("one\ntwo\n\nfour"), (Texts{"one\n", "two\n", "\n", "four"}));
}

TEST(LineReader, SplitsLongLinesIntoPiecesThatFit) {
  EXPECT_EQ(Lines<4>("abcdefg\nhi\n"), (Texts{"abc", "def", "g\n", "hi\n"}));
  EXPECT_EQ(Lines<4>("abc\n"), (Texts{"abc", "\n"}));
}

TEST(LineReader, EndsAPieceAtANul) {
  EXPECT_EQ(Lines<256>(std::string("a\0b\nc\n", 6)), (Texts{"a", "c\n"}));
}

TEST(LineReader, ReadsFilesOfAnyLength) {
  std::string contents;
  Texts lines;
  for (int i = 0; i < 1000; ++i) {
    lines.push_back("line " + std::to_string(i) + "\n");
    contents += lines.back();
  }
  EXPECT_EQ(Lines<256>(contents), lines);
}

TEST(LineReader, ReadsNoMoreThan16MiB) {
  const std::string last = "last\n";
  harness::WriteFile(kLinesFile, harness::IgnoredLines(16777216 - last.size()) + last + "beyond\n");
  const os::Descriptor file = os::OpenForReading(kLinesFile);
  LineReader<256> reader(file);
  std::size_t count = 0;
  std::string read;
  while (const char* line = reader.Next()) {
    read = line;
    ++count;
  }
  EXPECT_EQ(read, last);
  EXPECT_EQ(count, 131071U + 123U + 1U);  // long lines, empty lines, the last line
  EXPECT_FALSE(reader.Failed());
}

TEST(LineReader, FindsNoLinesWithoutAReadableFile) {
  for (const char* const path : {"/var/tmp/lighttpd/missing", "/var/tmp/lighttpd"}) {
    const os::Descriptor file = os::OpenForReading(path);
    LineReader<256> reader(file);
    EXPECT_EQ(reader.Next(), nullptr);
    EXPECT_TRUE(reader.Failed());
  }
  EXPECT_EQ(Lines<256>(""), Texts{});
}

TEST(ValueAfterKey, TakesTheFirstRunOfCharacters) {
  EXPECT_EQ(ValueAfterKey("ID\tabc\n", "ID"), "abc");
  EXPECT_EQ(ValueAfterKey("ID \t abc def\n", "ID"), "abc");
  EXPECT_EQ(ValueAfterKey("IDabc", "ID"), "abc");
  EXPECT_EQ(ValueAfterKey("ID\tabc\r\n", "ID"), "abc");
  EXPECT_EQ(ValueAfterKey("ID\t\n", "ID"), "");
  EXPECT_EQ(ValueAfterKey("ID", "ID"), "");
}

}  // namespace
