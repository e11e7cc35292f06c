// The selection of clips for an upload, as clients send it.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr std::size_t kClipBlockCount = 125;

/// Reads the blocks of a clip selection, "block0" to "block124", with 32 clips each.
///
/// This is a flat scan, and clients depend on how it works: the search for a block starts after the
/// key of the last block found, so blocks out of order are not found. A value is a bare decimal
/// number that ends at the comma before the next block or at the "}}" that ends the request. The
/// first four and the last three blocks are traced at level 4.
/// @param params  the request's text after "Params":
/// @param out     receives the blocks in the byte order of the message (big-endian). A missing
///                block becomes 0; a block whose value is not terminated keeps its old content
void SetClipUploadBitmap(const char* params, std::uint32_t (&out)[kClipBlockCount]);
