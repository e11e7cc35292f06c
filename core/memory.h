// Heap memory.
#pragma once

#include <cstddef>

/// Like the C library's realloc and free, but memory comes from a static arena until that is used
/// up, then from the heap: most requests need no heap. Running out of memory ends the process (see
/// `Fatal`).
/// @param memory    from `Reallocate`, or null
/// @param old_size  how many bytes of `memory` to keep
/// @param size      the new size in bytes
/// @return the memory, aligned for every type
void* Reallocate(void* memory, std::size_t old_size, std::size_t size);
void Release(void* memory);
