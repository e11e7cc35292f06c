// How a request to a daemon ends.
#pragma once

#include <cstdint>

namespace simulator {

/// First byte of a reply's payload.
enum class Result : std::uint8_t { kSuccess = 0, kRequestedError = 1, kDisableError = 2 };

/// Why a message is not carried out, and the result that answers it.
struct Refusal {
  const char* why = nullptr;  ///< in words; null: nothing keeps it from being carried out
  Result result = Result::kDisableError;
};

}  // namespace simulator
