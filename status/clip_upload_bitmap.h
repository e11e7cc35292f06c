// The selection of clips for an upload, as clients send it.
#pragma once

#include <cstddef>
#include <cstdint>

constexpr std::size_t kClipBlockCount = 125;

/// Reads the blocks of a clip selection, "block0" to "block124" with 32 clips each.
///
/// This is a scan of its own, and clients depend on its ways: a block is searched behind the key
/// of the block found before it, so blocks out of order are not found; a block's value is a bare
/// decimal number that ends at the next block's comma or at the braces that end the request. The
/// first and last few blocks are traced at level 4.
///
/// @param params  the request's text behind "Params":
/// @param out     receives the blocks in the byte order of the message, most significant byte
///                first. A block that is missing is 0, one whose value has no end keeps the word
///                that stood there
void SetClipUploadBitmap(const char* params, std::uint32_t (&out)[kClipBlockCount]);
