#pragma once

#include <sys/types.h>

#include <string>

namespace harness {

struct HttpReply {
  std::string head;  // status line and header, with their line ends
  std::string body;
};

/// A real web server in the private world, with the handler as its one CGI program. It listens on a
/// Unix socket, so that tests can run side by side.
class WebServer {
 public:
  /// Throws std::runtime_error when it does not start.
  WebServer();
  ~WebServer() { Stop(); }
  WebServer(const WebServer&) = delete;
  WebServer& operator=(const WebServer&) = delete;

  /// Posts a request and waits for the whole reply. May be called by many threads at once.
  static HttpReply Post(const std::string& body);

  /// Waits for the end of its child processes, and until it has taken note of each. Returns false
  /// when that takes too long.
  bool AwaitChildren() const;

  /// Ends the web server. Returns false when it had to be killed. Its exit status tells only
  /// whether it was still closing connections.
  bool Stop();

  /// Waits for the end of whatever the web server has left behind, which became children of this
  /// process. Returns false when that takes too long.
  static bool AwaitOrphans();

  /// What the handlers have written on their standard error.
  static std::string HandlerErrors();

 private:
  void Start();

  pid_t pid_ = 0;
};

}  // namespace harness
