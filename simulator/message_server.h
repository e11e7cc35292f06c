// The stream sockets on which the camera's daemons listen.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <list>
#include <map>
#include <string>

#include "simulator/delivery.h"
#include "simulator/event_loop.h"
#include "simulator/message.h"
#include "simulator/unique_fd.h"

namespace simulator {

/// Accepts connections, cuts what arrives into messages and sends the answers back.
class MessageServer {
 public:
  /// Answers a message from a process.
  using Answer = std::function<Delivery(const Message& message, pid_t sender)>;

  explicit MessageServer(EventLoop& loop) : loop_(loop) {}
  MessageServer(const MessageServer&) = delete;
  MessageServer& operator=(const MessageServer&) = delete;
  /// Removes the socket files.
  ~MessageServer();

  /// Listens on the Unix-domain socket `path`; a socket file left over there is replaced.
  /// @throws std::system_error when that fails, also when another process listens there already
  void Listen(const std::string& path, Answer answer);

  /// Deals with everything that has been sent before this call.
  void ReceiveAll();

  /// Deals with connections from which nothing has come for a while: a message whose payload is
  /// overdue is answered with the part that came, a connection without even a header is closed.
  /// To be called a few times a second.
  void SettleOverdue();

 private:
  using Clock = std::chrono::steady_clock;
  /// Connections are numbered: a number is not used again, as a descriptor is.
  using Number = unsigned long;

  struct Listener {
    std::string path;
    UniqueFd fd;
    Answer answer;
  };
  struct Connection {
    UniqueFd fd;
    pid_t sender;
    const Answer* answer;
    Bytes received;
    Clock::time_point last_arrival;
  };

  void Accept(const Listener& listener);
  void Receive(Number number);
  /// Answers the first message received; false when there is nothing more to say to the client.
  bool AnswerOne(Number number, Connection& connection);
  void SendLater(Number number, std::chrono::milliseconds delay, const Bytes& bytes,
                 std::size_t piece);
  void Close(Number number);

  EventLoop& loop_;
  std::list<Listener> listeners_;  ///< a list, for connections point into it
  std::map<Number, Connection> connections_;
  Number last_number_ = 0;
};

}  // namespace simulator
