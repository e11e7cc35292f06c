#include "fuzz/os_memory.h"

#include <algorithm>
#include <cstring>

#include "core/os.h"
#include "core/system_log.h"
#include "platform/read_data.h"

namespace fuzz {

World& TheWorld() {
  static World world;
  return world;
}

namespace {

/// Open descriptors: a position in a file, or in a daemon's reply.
struct Open {
  std::string contents;
  std::size_t position = 0;
  bool takes_message = true;
  std::size_t message = 0;  // index into World::messages
  std::string path{};       // of a file that is open for update
};

std::map<int, Open>& Descriptors() {
  static std::map<int, Open> descriptors;
  return descriptors;
}

int Add(Open open) {
  static int next = 0;
  next = next == INT32_MAX ? 1 : next + 1;
  Descriptors()[next] = std::move(open);
  return next;
}

std::size_t Take(std::string& source, std::size_t& position, void* buffer, std::size_t capacity) {
  const std::size_t count = std::min(capacity, source.size() - position);
  std::memcpy(buffer, source.data() + position, count);
  position += count;
  return count;
}

}  // namespace
}  // namespace fuzz

using fuzz::Descriptors;
using fuzz::TheWorld;

int read_data(std::uint32_t /*base*/, std::uint32_t /*address*/, std::uint32_t length,
              void* buffer) {
  const std::string& memory = TheWorld().memory;
  std::memcpy(buffer, memory.data(), std::min<std::size_t>(length, memory.size()));
  return 0;
}

namespace os {

void Descriptor::Close() {
  Descriptors().erase(number_);
  number_ = -1;
}

Descriptor OpenForReading(const char* path) {
  const auto file = TheWorld().files.find(path);
  return file == TheWorld().files.end() ? Descriptor() : Descriptor(fuzz::Add({file->second}));
}

Descriptor OpenForUpdate(const char* path) {
  const auto file = TheWorld().files.find(path);
  if (file == TheWorld().files.end()) {
    return Descriptor();
  }
  fuzz::Open open = {file->second};
  open.path = path;
  return Descriptor(fuzz::Add(std::move(open)));
}

bool Read(const Descriptor& file, void* buffer, std::size_t capacity, std::size_t& count) {
  fuzz::Open& open = Descriptors().at(file.Number());
  const bool is_readable = TheWorld().files_are_readable;
  count = is_readable ? fuzz::Take(open.contents, open.position, buffer, capacity) : 0;
  return is_readable;
}

bool WriteFile(const char* path, std::string_view contents) {
  if (TheWorld().files_are_writable) {
    TheWorld().files[path] = contents;
  }
  return TheWorld().files_are_writable;
}

bool Rewrite(const Descriptor& file, std::string_view contents) {
  return WriteFile(Descriptors().at(file.Number()).path.c_str(), contents);
}

bool Lock(const Descriptor& /*descriptor*/) { return true; }
void Unlock(const Descriptor& /*descriptor*/) {}
bool LockInTime(const Descriptor& /*descriptor*/) { return true; }

std::size_t ReadInput(void* buffer, std::size_t capacity, int /*timeout_ms*/) {
  std::string& input = TheWorld().input;
  std::size_t position = 0;
  const std::size_t count = fuzz::Take(input, position, buffer, capacity);
  input.erase(0, count);
  return count;
}

bool WriteOutput(std::string_view bytes) {
  TheWorld().output += bytes;
  return true;
}

bool WriteErrors(std::string_view bytes) {
  TheWorld().errors += bytes;
  return true;
}

Descriptor CreateStreamSocket(Timeout /*timeout*/) { return Descriptor(fuzz::Add({})); }

bool Connect(const Descriptor& socket, const char* /*path*/) {
  fuzz::World& world = TheWorld();
  if (world.conversations.empty() || !world.conversations.front().accepts) {
    return false;
  }
  const fuzz::Conversation& conversation = world.conversations.front();
  Descriptors()[socket.Number()] = {conversation.reply, 0, conversation.takes_message,
                                    world.messages.size()};
  world.messages.emplace_back();
  world.conversations.pop_front();
  return true;
}

bool SendAll(const Descriptor& socket, const void* bytes, std::size_t length) {
  const fuzz::Open& open = Descriptors().at(socket.Number());
  if (open.takes_message) {
    TheWorld().messages[open.message].append(static_cast<const char*>(bytes), length);
  }
  return open.takes_message;
}

Reception ReceiveAll(const Descriptor& socket, void* buffer, std::size_t length,
                     Timeout /*timeout*/) {
  fuzz::Open& open = Descriptors().at(socket.Number());
  return {fuzz::Take(open.contents, open.position, buffer, length), false};
}

const char* Environment(const char* name) {
  const auto variable = TheWorld().environment.find(name);
  return variable == TheWorld().environment.end() ? nullptr : variable->second.c_str();
}

std::uint32_t ProcessId() { return 4711; }
std::int64_t Now() { return TheWorld().now; }
std::int64_t NowInMicroseconds() { return TheWorld().now * 1000000; }
std::int64_t MonotonicMilliseconds() { return 0; }
void PrepareDescriptors() {}

// Copies the whole text, so that one without an end is found.
void SystemLog(int /*priority*/, const char* text) { TheWorld().last_log_line = text; }

void Exit(int status) { throw fuzz::Exited{status}; }

}  // namespace os
