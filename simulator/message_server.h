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

/// Accepts connections, splits the received bytes into messages and sends the replies.
class MessageServer {
 public:
  /// Answers a message from a process.
  using Answer = std::function<Delivery(const Message& message, pid_t sender)>;

  explicit MessageServer(EventLoop& loop) : loop_(loop) {}
  MessageServer(const MessageServer&) = delete;
  MessageServer& operator=(const MessageServer&) = delete;
  /// Removes the socket files.
  ~MessageServer();

  /// Listens on the Unix-domain socket `path`; replaces the socket file of a process that has
  /// ended.
  /// @throws std::system_error if that fails, for example because another process listens there
  void Listen(const std::string& path, Answer answer);

  /// Handles everything that has been sent before this call.
  void ReceiveAll();

  /// Handles connections that have been silent for a while: answers a message whose payload is
  /// overdue with the part that arrived, and closes a connection without a complete header. Call it
  /// a few times a second.
  void SettleOverdue();

 private:
  using Clock = std::chrono::steady_clock;
  /// Connections are numbered, because descriptors are reused and these numbers are not.
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
