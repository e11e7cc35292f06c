// The product's operator new and delete, without the exceptions of the C++ library. Running out of
// memory ends the request.
#include <new>

#include "core/memory.h"

void* operator new(std::size_t size) { return Reallocate(nullptr, 0, size); }
void* operator new[](std::size_t size) { return operator new(size); }

void operator delete(void* memory) noexcept { Release(memory); }
void operator delete[](void* memory) noexcept { operator delete(memory); }
void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }
void operator delete[](void* memory, std::size_t) noexcept { operator delete(memory); }
