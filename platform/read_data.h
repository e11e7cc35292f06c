// The camera platform library's access to the memory shared with the camera firmware.
#pragma once

#include <cstdint>

/// Copies bytes out of the memory area that the camera firmware shares with this processor.
///
/// On the camera, the platform library provides this function; elsewhere, stand_in.cpp does.
/// @param base     physical address at which the shared area starts
/// @param address  physical address of the first byte to copy, inside the area
/// @param length   number of bytes to copy
/// @param buffer   receives the bytes; those that cannot be read stay unchanged, so clear it first
/// @return 0 on success, otherwise non-zero; no caller depends on it
extern "C" int read_data(std::uint32_t base, std::uint32_t address, std::uint32_t length,
                         void* buffer);
