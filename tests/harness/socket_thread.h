#pragma once

#include <functional>
#include <string>
#include <thread>

namespace harness {

/// A bound Unix-domain socket and the thread that serves it: what the daemons of the tests have in
/// common. Make it the last member of a daemon, so that the thread ends before anything it uses.
class SocketThread {
 public:
  /// Binds a socket of the given type (SOCK_STREAM, SOCK_DGRAM) to the path and, if it is a stream
  /// socket, listens with a queue of `backlog` connections. Throws std::system_error.
  SocketThread(std::string path, int type, int backlog);
  /// Stops the thread and removes the socket.
  ~SocketThread();
  SocketThread(const SocketThread&) = delete;
  SocketThread& operator=(const SocketThread&) = delete;

  /// Starts the thread. `serve` returns when `StopDescriptor()` becomes readable.
  void Start(std::function<void()> serve);
  /// Starts the thread, which calls `serve_one` whenever the socket is readable.
  void StartForEach(std::function<void()> serve_one);

  int Socket() const { return socket_; }
  /// Readable (POLLHUP) when the thread has to end.
  int StopDescriptor() const { return stop_pipe_[0]; }

 private:
  std::string path_;
  int socket_;
  int stop_pipe_[2] = {-1, -1};
  std::thread thread_;
};

}  // namespace harness
