// How a daemon's reply reaches the handler, with and without faults.
#pragma once

#include <cstddef>

#include "simulator/message.h"

namespace simulator {

/// What to do about a message once it is answered.
struct Delivery {
  enum class Way {
    kNoReply,  ///< the message gets none: wait for the next one
    kAtOnce,   ///< send the reply
    kLater,    ///< send it after `delay_ms`
    kPieces,   ///< send it one byte at a time
    kShort,    ///< send its first `length` bytes, then close
    kSilent,   ///< never answer
  };

  Way way = Way::kNoReply;
  Bytes reply;  ///< with its header
  int delay_ms = 0;
  std::size_t length = 0;
};

}  // namespace simulator
