#include "core/os.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/uio.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <iterator>

#include "core/io_vector.h"
#include "core/text.h"
#include "core/uninterrupted.h"

namespace os {

namespace {

bool WriteAll(int descriptor, const void* bytes, std::size_t length) {
  const char* next = static_cast<const char*>(bytes);
  while (length > 0) {
    const ssize_t written = Uninterrupted([&] { return write(descriptor, next, length); });
    if (written <= 0) {
      return false;
    }
    next += written;
    length -= static_cast<std::size_t>(written);
  }
  return true;
}

/// Up to 4 KiB of empty lines, which readers of settings files ignore.
class EmptyLines {
 public:
  explicit EmptyLines(std::size_t length) : length_(std::min(length, sizeof text_)) {
    std::memset(text_, '\n', length_);
  }

  [[nodiscard]] std::string_view View() const { return {text_, length_}; }

 private:
  char text_[4096];
  std::size_t length_;
};

void SetLength(int file, std::size_t length) {
  Uninterrupted([&] { return ftruncate(file, static_cast<off_t>(length)); });
}

/// Appends empty lines. If there is no room for all of them, the file keeps its length.
bool Lengthen(int file, std::size_t length, std::size_t new_length) {
  const EmptyLines empty(new_length - length);
  for (std::size_t end = length; end < new_length;) {
    const std::size_t size = std::min(empty.View().size(), new_length - end);
    const ssize_t written = Uninterrupted(
        [&] { return pwrite(file, empty.View().data(), size, static_cast<off_t>(end)); });
    if (written <= 0) {
      SetLength(file, length);
      return false;
    }
    end += static_cast<std::size_t>(written);
  }
  return true;
}

/// Overwrites the beginning of a file with the contents, and what follows with empty lines: in one
/// write, unless the system takes only a part of it.
bool Overwrite(int file, std::string_view contents, std::size_t rest) {
  const EmptyLines empty(rest);
  for (std::size_t done = 0; done < contents.size();) {
    // Not substr, whose range check throws.
    const std::string_view left(contents.data() + done, contents.size() - done);
    const iovec pieces[] = {Piece(left), Piece(empty.View())};
    const ssize_t written =
        Uninterrupted([&] { return pwritev(file, pieces, 2, static_cast<off_t>(done)); });
    if (written <= 0) {
      return false;
    }
    done += static_cast<std::size_t>(written);
  }
  return true;
}

constexpr mode_t kDefaultFileMode = 0666;  // limited by the umask

/// Opens a new file without a name on the disk that holds `path`.
int OpenUnnamed(const char* path) {
  char folder[256];
  const std::string_view whole(path);
  CopyText(folder, std::string_view(path, std::min(whole.rfind('/'), whole.size())));
  return open(folder, O_WRONLY | O_TMPFILE, kDefaultFileMode);
}

/// Gives the open file a name.
/// @return false if the name exists or the system cannot do that
bool Link(const Descriptor& file, const char* path) {
  char link[32] = "/proc/self/fd/";
  AppendText(link, DecimalText(file.Number()).View());
  return linkat(AT_FDCWD, link, AT_FDCWD, path, AT_SYMLINK_FOLLOW) == 0;
}

/// O_NONBLOCK: do not block if the path is a named pipe.
constexpr int kOpenFlags = O_NONBLOCK;

/// How much longer this process will wait for locks.
std::int64_t remaining_lock_wait_ms = 1000;

}  // namespace

void Descriptor::Close() {
  if (number_ >= 0) {
    close(number_);
    number_ = -1;
  }
}

Descriptor OpenForReading(const char* path) {
  return Descriptor(Uninterrupted([&] { return open(path, O_RDONLY | kOpenFlags); }));
}

Descriptor OpenForUpdate(const char* path) {
  const int number = Uninterrupted([&] { return open(path, O_RDWR | kOpenFlags); });
  return number < 0 && errno != ENOENT ? OpenForReading(path) : Descriptor(number);
}

bool Read(const Descriptor& file, void* buffer, std::size_t capacity, std::size_t& count) {
  const ssize_t result = Uninterrupted([&] { return read(file.Number(), buffer, capacity); });
  count = result > 0 ? static_cast<std::size_t>(result) : 0;
  return result >= 0;
}

bool Rewrite(const Descriptor& file, std::string_view contents) {
  const off_t end = lseek(file.Number(), 0, SEEK_END);
  if (end < 0) {
    return false;
  }
  const auto length = static_cast<std::size_t>(end);
  if (length < contents.size() && !Lengthen(file.Number(), length, contents.size())) {
    return false;
  }
  const std::size_t rest = length > contents.size() ? length - contents.size() : 0;
  if (!Overwrite(file.Number(), contents, rest)) {
    return false;
  }
  if (rest > 0) {
    SetLength(file.Number(), contents.size());
  }
  return true;
}

bool WriteFile(const char* path, std::string_view contents) {
  const Descriptor unnamed(OpenUnnamed(path));
  if (unnamed.IsOpen()) {
    if (!WriteAll(unnamed.Number(), contents.data(), contents.size())) {
      return false;
    }
    if (Link(unnamed, path)) {
      return true;
    }
  }
  // Not every file system has files without a name, not every process sees /proc, and the path may
  // be a symbolic link to a missing file.
  const Descriptor file(
      Uninterrupted([&] { return open(path, O_WRONLY | O_CREAT | kOpenFlags, kDefaultFileMode); }));
  if (!file.IsOpen() || Rewrite(file, contents)) {
    return file.IsOpen();
  }
  struct stat status = {};
  fstat(file.Number(), &status);
  if (S_ISREG(status.st_mode) && status.st_size == 0) {
    unlink(path);
  }
  return false;
}

bool Lock(const Descriptor& descriptor) {
  return Uninterrupted([&] { return flock(descriptor.Number(), LOCK_EX); }) == 0;
}

void Unlock(const Descriptor& descriptor) { flock(descriptor.Number(), LOCK_UN); }

bool LockInTime(const Descriptor& descriptor) {
  while (flock(descriptor.Number(), LOCK_EX | LOCK_NB) != 0) {
    if ((errno != EWOULDBLOCK && errno != EINTR) || remaining_lock_wait_ms <= 0) {
      return false;
    }
    const std::int64_t start = MonotonicMilliseconds();
    poll(nullptr, 0, 1);
    remaining_lock_wait_ms -= MonotonicMilliseconds() - start;
  }
  return true;
}

std::size_t ReadInput(void* buffer, std::size_t capacity, int timeout_ms) {
  pollfd input = {STDIN_FILENO, POLLIN, 0};
  if (Uninterrupted([&] { return poll(&input, 1, timeout_ms); }) <= 0) {
    return 0;
  }
  const ssize_t count = Uninterrupted([&] { return read(STDIN_FILENO, buffer, capacity); });
  return count > 0 ? static_cast<std::size_t>(count) : 0;
}

bool WriteOutput(std::string_view bytes) {
  return WriteAll(STDOUT_FILENO, bytes.data(), bytes.size());
}

bool WriteErrors(std::string_view bytes) {
  return WriteAll(STDERR_FILENO, bytes.data(), bytes.size());
}

Descriptor CreateStreamSocket(Timeout timeout) {
  const int number = socket(AF_UNIX, SOCK_STREAM, 0);
  if (number >= 0) {
    const timeval value = {timeout.seconds, timeout.microseconds};
    setsockopt(number, SOL_SOCKET, SO_SNDTIMEO, &value, sizeof value);
    setsockopt(number, SOL_SOCKET, SO_RCVTIMEO, &value, sizeof value);
  }
  return Descriptor(number);
}

bool Connect(const Descriptor& socket, const char* path) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  CopyText(address.sun_path, path);
  // Without the NUL after the path.
  const auto length =
      static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + std::strlen(address.sun_path));
  return Uninterrupted([&] {
           return connect(socket.Number(), reinterpret_cast<const sockaddr*>(&address), length);
         }) == 0;
}

bool SendAll(const Descriptor& socket, const void* bytes, std::size_t length) {
  return WriteAll(socket.Number(), bytes, length);
}

Reception ReceiveAll(const Descriptor& socket, void* buffer, std::size_t length, Timeout timeout) {
  const std::int64_t deadline =
      MonotonicMilliseconds() + std::int64_t{1000} * timeout.seconds + timeout.microseconds / 1000;
  std::size_t received = 0;
  while (received < length) {
    // With MSG_WAITALL the socket's time-out covers all pieces together, so a peer that sends
    // single bytes cannot extend it.
    const ssize_t count = recv(socket.Number(), static_cast<char*>(buffer) + received,
                               length - received, MSG_WAITALL);
    if (count > 0) {
      received += static_cast<std::size_t>(count);
    } else if (count == 0 || errno != EINTR) {
      return {received, count < 0 && errno == EAGAIN};
    }
    if (received < length && MonotonicMilliseconds() >= deadline) {
      break;
    }
  }
  return {received, received < length};
}

const char* Environment(const char* name) { return std::getenv(name); }

std::uint32_t ProcessId() { return static_cast<std::uint32_t>(getpid()); }

std::int64_t Now() {
  static_assert(sizeof(time_t) == sizeof(std::int64_t), "times must reach beyond 2038");
  return time(nullptr);
}

std::int64_t NowInMicroseconds() {
  timeval now = {};
  gettimeofday(&now, nullptr);
  return now.tv_sec * std::int64_t{1000000} + now.tv_usec;
}

std::int64_t MonotonicMilliseconds() {
  timespec now = {};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * std::int64_t{1000} + now.tv_nsec / 1000000;
}

void PrepareDescriptors() {
  sigset_t signals_of_writes;
  sigemptyset(&signals_of_writes);
  sigaddset(&signals_of_writes, SIGPIPE);
  sigaddset(&signals_of_writes, SIGXFSZ);
  sigprocmask(SIG_BLOCK, &signals_of_writes, nullptr);
  pollfd streams[] = {{STDIN_FILENO, 0, 0}, {STDOUT_FILENO, 0, 0}, {STDERR_FILENO, 0, 0}};
  poll(streams, std::size(streams), 0);
  for (const pollfd& stream : streams) {
    if ((stream.revents & POLLNVAL) != 0) {
      open("/dev/null", O_RDWR);  // gets the lowest free number, which is this one
    }
  }
}

void Exit(int status) { _exit(status); }

}  // namespace os
