// The camera control daemon: the messages that it understands.
#pragma once

#include <vector>

#include "simulator/daemon.h"

namespace simulator {

/// Every message of the camera control daemon, one row each.
std::vector<MessageRow> ControlMessages();

}  // namespace simulator
