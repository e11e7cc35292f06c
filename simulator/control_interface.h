// The control interface: HTTP at /simulator/, with which people and tests control the camera.
#pragma once

#include <memory>

#include "simulator/simulated_camera.h"

namespace simulator {

/// Serves the control interface in threads of its own, on a Unix-domain socket to which the web
/// server passes on what comes for /simulator/.
class ControlInterface {
 public:
  /// @throws std::runtime_error when the socket cannot be made
  explicit ControlInterface(SimulatedCamera& camera);
  ControlInterface(const ControlInterface&) = delete;
  ControlInterface& operator=(const ControlInterface&) = delete;
  ~ControlInterface();

 private:
  class Server;
  std::unique_ptr<Server> server_;
};

}  // namespace simulator
