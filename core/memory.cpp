#include "core/memory.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "core/fatal.h"

namespace {

constexpr std::size_t kAlignment = alignof(std::max_align_t);
alignas(kAlignment) std::array<char, CAMERA_ARENA_SIZE> arena;

/// Offsets in the arena: the start of its free part, and the last block before that.
std::size_t free_part = 0;
std::size_t last_block = 0;

/// At least the size of the arena for memory that is not in it.
std::size_t OffsetInArena(const void* memory) {
  return reinterpret_cast<std::uintptr_t>(memory) - reinterpret_cast<std::uintptr_t>(arena.data());
}

/// Reuses the memory only if it is the last block: the others are few and small.
void ReleaseInArena(std::size_t offset) {
  if (offset == last_block) {
    free_part = offset;
  }
}

/// @return null when the arena is used up
void* AllocateInArena(std::size_t size) {
  size = std::max(size, std::size_t{1});  // an empty block has an address of its own, too
  if (size > arena.size() - free_part) {
    return nullptr;
  }
  last_block = free_part;
  free_part += (size + kAlignment - 1) / kAlignment * kAlignment;
  return arena.data() + last_block;
}

void* ReallocateOnHeap(void* memory, std::size_t size) {
  void* const grown = std::realloc(memory, size);
  if (grown == nullptr) {
    Fatal("out of memory");
  }
  return grown;
}

}  // namespace

void* Reallocate(void* memory, std::size_t old_size, std::size_t size) {
  const std::size_t offset = OffsetInArena(memory);
  if (memory != nullptr && offset >= arena.size()) {
    return ReallocateOnHeap(memory, size);
  }
  ReleaseInArena(offset);
  void* grown = AllocateInArena(size);
  if (grown == nullptr) {
    grown = ReallocateOnHeap(nullptr, size);
  }
  if (memory != nullptr && grown != memory) {
    std::memcpy(grown, memory, old_size);
  }
  return grown;
}

void Release(void* memory) {
  const std::size_t offset = OffsetInArena(memory);
  if (offset < arena.size()) {
    ReleaseInArena(offset);
  } else {
    std::free(memory);
  }
}
