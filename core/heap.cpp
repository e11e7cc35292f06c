// The product's operator new and delete: the C library's heap, without the exceptions of the C++
// library. Running out of memory ends the request.
#include <cstdlib>
#include <new>

#include "core/memory.h"

void* operator new(std::size_t size) { return Reallocate(nullptr, size); }
void* operator new[](std::size_t size) { return operator new(size); }

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { operator delete(memory); }
void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }
void operator delete[](void* memory, std::size_t) noexcept { operator delete(memory); }
