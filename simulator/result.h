// How a request to a daemon ends.
#pragma once

#include <cstdint>

namespace simulator {

/// First byte of a reply's payload.
enum class Result : std::uint8_t { kSuccess = 0, kRequestedError = 1, kDisableError = 2 };

}  // namespace simulator
