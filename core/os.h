// Everything the handler asks of the operating system, except the system log (core/system_log.h):
// descriptors, files, standard streams, daemon sockets, the clock. Each function is a complete loop
// with its contract. Only these two files and the platform library make system calls, so a test can
// replace them.
#pragma once

#include <sys/un.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace os {

/// An open file or socket; closes itself.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { Close(); }

  [[nodiscard]] bool IsOpen() const { return number_ >= 0; }
  [[nodiscard]] int Number() const { return number_; }

  /// Closes now instead of at the end of the scope; closing twice is harmless.
  void Close();

 private:
  int number_ = -1;
};

// Files and standard streams.

/// Opens an existing file for reading. A descriptor that is not open tells the failure.
Descriptor OpenForReading(const char* path);

/// Opens an existing file for reading and rewriting, or for reading alone where only that is
/// allowed; rewriting it then fails.
Descriptor OpenForUpdate(const char* path);

/// Of no file more is read: a device in place of one has no end.
constexpr std::size_t kLongestFile = std::size_t{16} << 20;

/// Reads at most `capacity` bytes with one read.
/// @param count  receives the number of bytes; 0 at the end of the file and on failure
/// @return false on failure; a folder, for one, can be opened but not be read
bool Read(const Descriptor& file, void* buffer, std::size_t capacity, std::size_t& count);

/// Replaces the whole contents of a file that is open for update; it stays the same file. At any
/// moment, also when the process is killed, it holds the old or the new contents, and behind them
/// nothing but up to 4 KiB of empty lines. (Of a file that is longer than that by more, old lines
/// may be left.) When there is no room for the new contents it keeps the old ones.
/// @return false when the file could not be written completely
bool Rewrite(const Descriptor& file, std::string_view contents);

/// The same for a file that is missing. The umask decides on its permissions. It gets its name when
/// it is whole, where the system can do that, and none when there is no room.
bool WriteFile(const char* path, std::string_view contents);

/// Takes, and gives back, the exclusive advisory lock on an open file or socket. Taking it waits
/// for as long as another process holds it; closing gives it back, too.
bool Lock(const Descriptor& descriptor);
void Unlock(const Descriptor& descriptor);

/// Takes the same lock, but waits for at most one second, all calls of the process together.
/// @return false without the lock
bool LockInTime(const Descriptor& descriptor);

/// Reads at most `capacity` bytes of standard input, waiting for at most `timeout_ms`
/// milliseconds for the first of them.
/// @return the number of bytes; 0 at the end of the stream, on failure and on time-out
std::size_t ReadInput(void* buffer, std::size_t capacity, int timeout_ms);

/// Writes all bytes to standard output.
/// @return false when the reader is gone or the device is full
bool WriteOutput(std::string_view bytes);

/// The same for standard error.
bool WriteErrors(std::string_view bytes);

// Daemon sockets.

/// A span of time as the socket options take it; 32 bits wide on every build.
struct Timeout {
  std::int32_t seconds;
  std::int32_t microseconds;
};

/// Creates a Unix-domain stream socket that gives up sending and receiving after `timeout`.
/// Connecting counts as sending: a daemon that no longer accepts is given up as well.
Descriptor CreateStreamSocket(Timeout timeout);

/// Connects to a daemon; the address length is that of the path, without its NUL.
bool Connect(const Descriptor& socket, const sockaddr_un& address);

/// Sends all bytes, in one write unless the system takes only a part of them.
/// @return false when the peer is gone or takes nothing for the socket's time-out
bool SendAll(const Descriptor& socket, const void* bytes, std::size_t length);

/// What `ReceiveAll` received.
struct Reception {
  std::size_t length;  ///< bytes received
  bool timed_out;      ///< whether the time-out is the reason why bytes are missing
};

/// Receives exactly `length` bytes, however many pieces they arrive in: fewer when the peer closes,
/// or when `timeout` (the one the socket was created with) passes before the last one arrives.
Reception ReceiveAll(const Descriptor& socket, void* buffer, std::size_t length, Timeout timeout);

// The process and its surroundings.

/// Value of an environment variable, or null.
const char* Environment(const char* name);

std::uint32_t ProcessId();

/// Seconds since the epoch; 64 bits wide on every build, so right beyond 2038.
std::int64_t Now();

/// The same with its fraction.
struct TimeOfDay {
  std::int64_t seconds;
  std::int32_t microseconds;
};
TimeOfDay NowWithMicroseconds();

/// A clock for time-outs, in milliseconds; never goes back.
std::int64_t MonotonicMilliseconds();

/// To be called before anything is opened. Makes a write to a peer that is gone, or beyond the
/// longest file allowed, fail instead of ending the process, and fills standard streams that the
/// caller left closed, lest a socket or a file get their numbers and then the reply.
void PrepareDescriptors();

[[noreturn]] void Exit(int status);

}  // namespace os
