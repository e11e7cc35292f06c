// Memory for what grows while a request is served.
#pragma once

#include <cstddef>

/// As the C library's realloc, but without failure: when there is no memory left, the request ends
/// (see `Fatal`).
void* Reallocate(void* memory, std::size_t size);
