#include "simulator/streaming_daemon.h"

namespace simulator {

std::vector<MessageRow> StreamingMessages() {
  return {
      {11, 99, "cloud login", 320, Accept},       {11, 100, "cloud logout", 0, Accept},
      {11, 101, "obtain event list", 0, Accept},  {11, 102, "number of events", 0, Accept},
      {11, 103, "one event", 4, Accept},          {11, 104, "obtain stream information", 4, Accept},
      {11, 105, "stream information", 4, Accept}, {11, 106, "clear status", 4, Accept},
  };
}

}  // namespace simulator
