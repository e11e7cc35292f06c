// The simulated camera's end of the tap: hears of every request before and after the handler.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "simulator/event_loop.h"
#include "simulator/message.h"
#include "simulator/unique_fd.h"

namespace simulator {

/// A request, as it goes to the handler.
struct Request {
  int pid = 0;  ///< of the handler
  std::string method;
  std::string client;
  std::string body;
};

/// What became of it.
struct Outcome {
  std::string output;
  int status = 0;  ///< as wait() has it
  double ms = 0;
  bool lost = false;  ///< the web server has ended it; output and status are not known
};

class TapServer {
 public:
  /// Is called before the handler starts; gives what has to be done to its world.
  using OnStart = std::function<std::vector<std::string>(const Request&)>;
  /// Is called when the handler has ended, before the client gets the reply.
  using OnEnd = std::function<void(int pid, const Outcome&)>;

  /// @throws std::system_error when the socket cannot be made
  TapServer(EventLoop& loop, OnStart on_start, OnEnd on_end);

 private:
  struct Connection {
    UniqueFd fd;
    Bytes received;
    int pid = 0;
    std::chrono::steady_clock::time_point started;  ///< when the tap told the process id
  };

  void Accept();
  void Receive(int fd);
  /// Deals with an object of the tap's; false when the line is to be closed.
  bool Hear(Connection& connection, const Bytes& packed);
  void Close(int fd);

  EventLoop& loop_;
  OnStart on_start_;
  OnEnd on_end_;
  UniqueFd listener_;
  std::map<int, Connection> connections_;
};

}  // namespace simulator
