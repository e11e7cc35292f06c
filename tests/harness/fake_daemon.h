#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "harness/socket_thread.h"

namespace harness {

inline constexpr char kControlSocket[] = "/var/run/quonta_cp.sock";
inline constexpr char kStreamingSocket[] = "/var/run/streaming.sock";

/// One connection of a fake daemon while its script plays. Every byte is kept.
class Conversation {
 public:
  Conversation(int socket, int stop) : socket_(socket), stop_(stop) {}

  /// Waits until a total of at least `bytes` bytes has arrived, or no more can arrive.
  void AwaitBytes(std::size_t bytes);
  /// Waits until the other side has closed.
  void AwaitEnd();
  /// Waits for the duration, or until the other side closes.
  void Pause(std::chrono::milliseconds duration);
  /// Sends all bytes, unless the other side closes first.
  void Send(const std::string& bytes);
  /// Takes the exclusive advisory lock on this end, and keeps it.
  void Lock();
  void Close();

  const std::string& received() const { return received_; }
  const std::string& sent() const { return sent_; }

 private:
  bool ReceiveSome(int timeout_ms);

  int socket_;
  int stop_;
  bool ended_ = false;
  std::string received_;
  std::string sent_;
};

/// What a daemon does with one connection: steps that are played in order. After the last step the
/// connection stays open until the other side closes it, unless the script has closed it.
class Script {
 public:
  /// Waits for a message; a bare header is enough. The rest is recorded, too.
  Script& AwaitMessage();
  Script& Send(std::string bytes);
  Script& SendInPieces(std::string bytes, std::size_t size, std::chrono::milliseconds delay);
  Script& Pause(std::chrono::milliseconds duration);
  Script& Lock();
  Script& Close();
  /// The steps of another script.
  Script& Then(const Script& script);

  void Play(Conversation& conversation) const;

 private:
  std::vector<std::function<void(Conversation&)>> steps_;
};

/// The usual scripts.
Script Silent();  // reads, and never answers: for one-way messages, and for time-outs
Script Answer(std::string reply);
Script AnswerInPieces(std::string reply, std::size_t size, std::chrono::milliseconds delay);
Script AnswerAndClose(std::string reply);
Script CloseAfterReading();
Script CloseBeforeReading();

/// A daemon on a Unix stream socket. It serves one connection at a time: each plays the next
/// script, and after the last script the default one (`Silent` unless given).
class FakeDaemon {
 public:
  explicit FakeDaemon(const std::string& path = kControlSocket, Script by_default = Silent());
  /// The control daemon.
  explicit FakeDaemon(Script by_default) : FakeDaemon(kControlSocket, std::move(by_default)) {}

  /// Appends the script of the next connection that has none yet.
  FakeDaemon& Next(Script script);

  /// What each connection received, in the order of the connections. Waits until the daemon has
  /// finished with all connections made so far.
  std::vector<std::string> Received();

 private:
  void ServeOne();
  bool IsIdle();  // with `mutex_` held

  std::mutex mutex_;
  std::condition_variable changed_;
  bool busy_ = false;
  std::deque<Script> scripts_;
  Script by_default_;
  std::vector<std::string> received_;
  SocketThread server_;
};

/// A daemon that serves any number of clients simultaneously, each with the same reply.
class ConcurrentDaemon {
 public:
  ConcurrentDaemon(const std::string& path, std::string reply);

  /// The number of messages received so far.
  std::size_t Received() const { return received_; }

 private:
  void Serve();
  /// Answers a message. Returns false when the client has closed.
  bool ServeClient(int client);

  std::string reply_;
  std::atomic<std::size_t> received_{0};
  SocketThread server_;
};

/// A daemon that does not accept: its queue of connections is full for the lifetime of this object.
class BusyDaemon {
 public:
  explicit BusyDaemon(const std::string& path = kControlSocket);
  ~BusyDaemon();
  BusyDaemon(const BusyDaemon&) = delete;
  BusyDaemon& operator=(const BusyDaemon&) = delete;

 private:
  std::vector<int> sockets_;
};

/// Leaves the socket of a daemon that has died: connecting to it fails.
void LeaveDeadSocket(const std::string& path = kControlSocket);

}  // namespace harness
