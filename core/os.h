// The operating system, except the system log (core/system_log.h): descriptors, files, standard
// streams, daemon sockets, the clock. Every call is complete: it repeats what a signal interrupts
// or the system does only in part. Only these two modules and the platform library make system
// calls, so a test can replace them. Nothing is close-on-exec: the handler executes no other
// program.
#pragma once

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

  /// Closes it early; closing twice is harmless.
  void Close();

 private:
  int number_ = -1;
};

// Files and standard streams.

/// Opens an existing file for reading. The descriptor is not open on failure.
Descriptor OpenForReading(const char* path);

/// Opens an existing file for reading and rewriting, or only for reading if nothing else is
/// allowed; rewriting then fails.
Descriptor OpenForUpdate(const char* path);

/// The most that is read of any file, because a device in place of one has no end.
constexpr std::size_t kMaxFile = std::size_t{16} << 20;

/// Reads at most `capacity` bytes with one read.
/// @param count  receives the number of bytes; 0 at the end of the file and on failure
/// @return false on failure; for example, a folder can be opened but not read
bool Read(const Descriptor& file, void* buffer, std::size_t capacity, std::size_t& count);

/// Replaces the whole contents of a file that is open for update; it stays the same file. At any
/// moment, even if the process is killed, it holds the old or the new contents, followed by at most
/// 4 KiB of empty lines. (A file that shrinks by more than that may also keep old lines.) If the
/// disk has no room for the new contents, the old ones stay.
/// @return false if the file could not be written completely
bool Rewrite(const Descriptor& file, std::string_view contents);

/// The same for a missing file. The umask limits its permissions. Where the system allows it, the
/// file gets its name only when it is complete, and never if there is no room.
bool WriteFile(const char* path, std::string_view contents);

/// Take and release the exclusive advisory lock on an open file or socket. `Lock` waits as long as
/// another process holds it, and returns false on failure. Closing also releases it.
bool Lock(const Descriptor& descriptor);
void Unlock(const Descriptor& descriptor);

/// Takes the same lock, but all calls of the process together wait for at most one second.
/// @return whether this process now holds the lock
bool LockInTime(const Descriptor& descriptor);

/// Reads at most `capacity` bytes of standard input, waiting for at most `timeout_ms`
/// milliseconds for the first of them.
/// @return the number of bytes; 0 at the end of the stream, on failure and after a time-out
std::size_t ReadInput(void* buffer, std::size_t capacity, int timeout_ms);

/// Writes all bytes to standard output.
/// @return false if the reader has gone or the device is full
bool WriteOutput(std::string_view bytes);

/// The same for standard error.
bool WriteErrors(std::string_view bytes);

// Daemon sockets.

/// A time span for a socket option; 32 bits wide on every build.
struct Timeout {
  std::int32_t seconds;
  std::int32_t microseconds;
};

/// Creates a Unix-domain stream socket whose sends and receives fail after `timeout`. This includes
/// connecting to a daemon that no longer accepts.
Descriptor CreateStreamSocket(Timeout timeout);

/// Connects to the daemon's socket at `path`; a path that is too long for an address is truncated.
/// @return false if no daemon listens there, or none accepts until the socket's time-out
bool Connect(const Descriptor& socket, const char* path);

/// Sends all bytes, in one write unless the system takes only a part of them.
/// @return false if the peer has gone or takes nothing until the socket's time-out
bool SendAll(const Descriptor& socket, const void* bytes, std::size_t length);

/// What `ReceiveAll` received.
struct Reception {
  std::size_t length;  ///< bytes received
  bool timed_out;      ///< whether bytes are missing because of the time-out
};

/// Receives exactly `length` bytes, in however many pieces they arrive; fewer if the peer closes or
/// `timeout` (that of the socket) passes before the last one.
Reception ReceiveAll(const Descriptor& socket, void* buffer, std::size_t length, Timeout timeout);

// The process and the clock.

/// Value of an environment variable, or null.
const char* Environment(const char* name);

std::uint32_t ProcessId();

/// Seconds since the epoch; 64 bits wide on every build, so correct beyond 2038.
std::int64_t Now();

/// The same in microseconds.
std::int64_t NowInMicroseconds();

/// A clock for time-outs, in milliseconds; it never goes back.
std::int64_t MonotonicMilliseconds();

/// Call this before opening anything. From then on, writes to a peer that has gone, or beyond the
/// file size limit, fail instead of ending the process. Opens closed standard streams on /dev/null
/// so that no socket or file takes their number and receives the reply.
void PrepareDescriptors();

[[noreturn]] void Exit(int status);

}  // namespace os
