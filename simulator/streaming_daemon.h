// The streaming daemon, which talks to the cloud streaming service.
#pragma once

#include <vector>

#include "simulator/daemon.h"

namespace simulator {

/// Every message of the streaming daemon, one row each.
std::vector<MessageRow> StreamingMessages();

}  // namespace simulator
