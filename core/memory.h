// Heap memory.
#pragma once

#include <cstddef>

/// Like the C library's realloc and free, but a static arena comes first, the heap when that is
/// used up: most requests need no heap. Running out of memory ends the process (see `Fatal`).
/// @param memory    from `Reallocate`, or null
/// @param old_size  its size
void* Reallocate(void* memory, std::size_t old_size, std::size_t size);
void Release(void* memory);
