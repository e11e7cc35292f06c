// The stream sockets on which the camera's daemons listen.
#pragma once

#include <chrono>
#include <functional>
#include <list>
#include <map>
#include <optional>
#include <string>

#include "simulator/event_loop.h"
#include "simulator/message.h"
#include "simulator/unique_fd.h"

namespace simulator {

/// Accepts connections, cuts what arrives into messages and sends the answers back.
class MessageServer {
 public:
  /// Gives the payload of the reply, or nothing for a message that gets none.
  using Answer = std::function<std::optional<Bytes>(const Message&)>;

  explicit MessageServer(EventLoop& loop) : loop_(loop) {}
  MessageServer(const MessageServer&) = delete;
  MessageServer& operator=(const MessageServer&) = delete;
  /// Removes the socket files.
  ~MessageServer();

  /// Listens on the Unix-domain socket `path`; a socket file left over there is replaced.
  /// @throws std::system_error when that fails, also when somebody is listening there already
  void Listen(const std::string& path, Answer answer);

  /// Deals with connections from which nothing has come for a while: a message whose payload is
  /// overdue is answered with the part that came, a connection without even a header is closed.
  /// To be called a few times a second.
  void SettleOverdue();

 private:
  using Clock = std::chrono::steady_clock;

  struct Listener {
    std::string path;
    UniqueFd fd;
    Answer answer;
  };
  struct Connection {
    UniqueFd fd;
    const Answer* answer;
    Bytes received;
    Clock::time_point last_arrival;
  };

  void Accept(const Listener& listener);
  void Receive(int fd);
  /// Answers the first message received; false when the client is gone.
  static bool AnswerOne(Connection& connection);
  void Close(int fd);

  EventLoop& loop_;
  std::list<Listener> listeners_;  ///< a list, for connections point into it
  std::map<int, Connection> connections_;
};

}  // namespace simulator
