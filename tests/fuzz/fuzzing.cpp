#include "fuzz/fuzzing.h"

#include <cstdlib>
#include <utility>

namespace fuzz {
namespace {

std::string WithHeader(const std::string& payload) {
  std::string header(12, '\0');
  header[2] = static_cast<char>(payload.size() & 0xFF);
  header[3] = static_cast<char>(payload.size() >> 8 & 0xFF);
  return header + payload;
}

void AddFile(const scenario::Line& line, World& world) {
  for (const scenario::File& file : scenario::kFiles) {
    if (file.kind == line.kind) {
      world.files[file.path] = line.value;
    }
  }
}

void AddLine(const scenario::Line& line, World& world) {
  switch (line.kind) {
    case scenario::kBody:
      world.input = line.value;
      break;
    case scenario::kContentLength:
      world.environment["CONTENT_LENGTH"] = line.value;
      break;
    case scenario::kMemory:
      world.memory = line.value;
      break;
    case scenario::kReply:
      world.conversations.push_back({true, true, line.value});
      break;
    case scenario::kPayload:
      world.conversations.push_back({true, true, WithHeader(line.value)});
      break;
    case scenario::kRefusal:
      world.conversations.push_back({false, false, {}});
      break;
    case scenario::kEarlyClose:
      world.conversations.push_back({true, false, {}});
      break;
    case scenario::kClock:
      // Leaves room for the lifetime of a session.
      world.now = std::strtoll(line.value.c_str(), nullptr, 10) / 4;
      break;
    case scenario::kReadOnly:
      world.files_are_writable = false;
      break;
    case scenario::kUnreadable:
      world.files_are_readable = false;
      break;
    default:
      AddFile(line, world);
  }
}

}  // namespace

void Require(bool condition) {
  if (!condition) {
    std::abort();
  }
}

std::vector<std::string> Values(const std::vector<scenario::Line>& lines, scenario::Kind kind) {
  std::vector<std::string> values;
  for (const scenario::Line& line : lines) {
    if (line.kind == kind) {
      values.push_back(line.value);
    }
  }
  return values;
}

World WorldOf(const std::vector<scenario::Line>& lines) {
  World world;
  world.environment["REQUEST_METHOD"] = "POST";
  for (const scenario::Line& line : lines) {
    AddLine(line, world);
  }
  world.environment.try_emplace("CONTENT_LENGTH", std::to_string(world.input.size()));
  return world;
}

}  // namespace fuzz
