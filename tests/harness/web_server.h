#pragma once

#include <sys/types.h>

#include <string>

namespace harness {

struct HttpReply {
  std::string head;  // status line and header, with their line ends
  std::string body;
};

/// A real web server in the private world, with the handler as its one CGI program. It listens on a
/// Unix socket, so that tests can run in parallel.
class WebServer {
 public:
  /// @param settings  lines for the end of its configuration
  /// Throws std::runtime_error when it does not start.
  explicit WebServer(const std::string& settings = "");
  ~WebServer() { Stop(); }
  WebServer(const WebServer&) = delete;
  WebServer& operator=(const WebServer&) = delete;

  /// Posts a request and waits for the whole reply. Many threads may call it simultaneously.
  static HttpReply Post(const std::string& body);

  /// Posts a request and closes the connection without waiting for the reply.
  static void PostAndLeave(const std::string& body);

  /// Waits until all its child processes have ended and been reaped. Returns false if that takes
  /// too long.
  bool AwaitChildren() const;

  /// Ends the web server. Returns false if it had to be killed.
  bool Stop();

  /// Waits for the end of processes that the web server has left and that became children of this
  /// process. Returns false if that takes too long.
  static bool AwaitOrphans();

  /// The standard error of all handlers.
  static std::string HandlerErrors();

 private:
  void Start();

  pid_t pid_ = 0;
};

}  // namespace harness
