// Heap memory.
#pragma once

#include <cstddef>

/// Like the C library's realloc, but never fails: running out of memory ends the process (see
/// `Fatal`).
void* Reallocate(void* memory, std::size_t size);
