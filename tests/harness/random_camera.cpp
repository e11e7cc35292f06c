#include "harness/random_camera.h"

#include <algorithm>
#include <cstdint>

#include "harness/messages.h"

namespace harness {
namespace {

struct TextArea {
  std::size_t offset;
  std::size_t size;
};

/// Where the status block contains consecutive texts.
constexpr TextArea kTextAreas[] = {{54, 8},   {64, 5},  {71, 17},  {90, 8},   {100, 9},  {238, 140},
                                   {390, 20}, {412, 4}, {452, 30}, {486, 10}, {520, 140}};

}  // namespace

int Number(Random& random, int lowest, int highest) {
  // Not std::uniform_int_distribution: its numbers differ from library to library.
  return lowest + static_cast<int>(random() % static_cast<std::uint32_t>(highest - lowest + 1));
}

std::string RandomBytes(Random& random, std::size_t size) {
  std::string bytes(size, '\0');
  std::generate(bytes.begin(), bytes.end(),
                [&random] { return static_cast<char>(Number(random, 0, 255)); });
  return bytes;
}

/// A text as a camera shows it: printable, without quotes and backslashes; some end early.
std::string RandomText(Random& random, std::size_t size) {
  std::string text(size, '\0');
  for (char& c : text) {
    do {
      c = static_cast<char>(Number(random, ' ', '~'));
    } while (c == '"' || c == '\\');
    if (Number(random, 0, 15) == 0) {
      c = '\0';
    }
  }
  return text;
}

StatusBlock RandomBlock(Random& random) {
  StatusBlock block;
  block.SetBytes(0, RandomBytes(random, kStatusBlockSize));
  for (const TextArea& area : kTextAreas) {
    block.SetText(area.offset, RandomText(random, area.size));
  }
  if (Number(random, 0, 3) == 0) {
    block.SetByte(420, 9).SetByte(452, Number(random, 0, 3));
  }
  return block;
}

std::string RandomClipReply(Random& random, int& clips) {
  clips = Number(random, 0, 18);
  std::string payload = RandomBytes(random, 2) + Be16(static_cast<std::uint16_t>(clips));
  for (int i = 0; i < clips; ++i) {
    payload += RandomBytes(random, 2) + RandomText(random, 10) + RandomBytes(random, 20);
  }
  if (Number(random, 0, 2) == 0) {
    payload.resize(static_cast<std::size_t>(Number(random, 4, static_cast<int>(payload.size()))));
  }
  clips = std::min(clips, 15);
  return payload;
}

}  // namespace harness
