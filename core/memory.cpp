#include "core/memory.h"

#include <cstdlib>

#include "core/fatal.h"

void* Reallocate(void* memory, std::size_t size) {
  void* const grown = std::realloc(memory, size);
  if (grown == nullptr) {
    Fatal("out of memory");
  }
  return grown;
}
