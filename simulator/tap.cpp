// The tap between the web server and the handler. The web server starts it in place of the handler,
// with the handler's path as its argument. It starts the handler with the same environment and
// input, forwards every byte and the exit status, and reports both to the simulated camera. Without
// a simulated camera it only forwards.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "simulator/tap_protocol.h"
#include "simulator/unique_fd.h"

namespace simulator::tap {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

/// Everything up to the end of a descriptor.
Frame ReadAll(int fd) {
  Frame all;
  std::uint8_t piece[65536];
  while (true) {
    const ssize_t count = read(fd, piece, sizeof piece);
    if (count < 0 && errno == EINTR) {
      continue;
    }
    if (count <= 0) {
      return all;
    }
    all.insert(all.end(), piece, piece + count);
  }
}

std::string Variable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

// --- The line to the simulated camera -----------------------------------------------------------

class Line {
 public:
  Line() : fd_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, kSocket, sizeof kSocket);
    is_open_ = connect(fd_.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  }

  /// Sends an object and waits for the answer; an empty object without a simulated camera.
  Object Tell(const Object& object) {
    const Frame frame = ToFrame(object);
    if (!is_open_ || !WriteAll(fd_.Get(), frame.data(), frame.size())) {
      return Object::object();
    }
    Frame length(kLengthSize);
    if (!Read(length)) {
      return Object::object();
    }
    Frame answer(LengthOf(length));
    return Read(answer) ? Object::from_msgpack(answer) : Object::object();
  }

 private:
  bool Read(Frame& frame) {
    std::size_t have = 0;
    while (have < frame.size()) {
      const ssize_t count = read(fd_.Get(), frame.data() + have, frame.size() - have);
      if (count < 0 && errno == EINTR) {
        continue;
      }
      if (count <= 0) {
        is_open_ = false;
        return false;
      }
      have += static_cast<std::size_t>(count);
    }
    return true;
  }

  UniqueFd fd_;
  bool is_open_ = false;
};

// --- The handler's world ------------------------------------------------------------------------

void Mount(const char* source, const std::string& target, const char* type, unsigned long flags,
           const char* data) {
  if (mount(source, target.c_str(), type, flags, data) != 0) {
    Fail("mount " + target);
  }
}

/// A place to put a folder together.
std::string NewPlace() {
  char place[] = "/tmp/camera_world_XXXXXX";
  if (mkdtemp(place) == nullptr) {
    Fail(place);
  }
  Mount("tmpfs", place, "tmpfs", 0, "mode=755");
  return place;
}

/// Moves a folder that was put together to where it belongs.
void MoveTo(const std::string& place, const std::string& folder) {
  Mount(place.c_str(), folder, nullptr, MS_MOVE, nullptr);
  rmdir(place.c_str());
}

/// Everything in a folder but one name. Files are the same ones as outside.
void Hide(const std::string& folder, const std::string& hidden) {
  const std::string place = NewPlace();
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    const std::string name = entry.path().filename();
    const std::string target = fs::path(place) / name;
    if (name == hidden) {
      continue;
    }
    if (entry.is_symlink()) {
      fs::copy_symlink(entry.path(), target);
      continue;
    }
    if (entry.is_directory()) {
      fs::create_directory(target);
    } else {
      std::ofstream{target};
    }
    Mount(entry.path().c_str(), target, nullptr, MS_BIND | MS_REC, nullptr);
  }
  MoveTo(place, folder);
}

void MakeReadOnly(const std::string& folder) {
  // A bind mount takes its flags only when it is remounted.
  Mount(folder.c_str(), folder, nullptr, MS_BIND, nullptr);
  Mount(nullptr, folder, nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr);
}

/// The folder's files on a disk without any space left. What the handler changes there is lost with
/// it.
void MakeFull(const std::string& folder) {
  const std::string place = NewPlace();
  Mount("tmpfs", place, "tmpfs", MS_REMOUNT, "size=256k");
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    if (entry.is_regular_file()) {
      fs::copy_file(entry.path(), place + "/" + entry.path().filename().string());
    }
  }
  std::ofstream ballast(place + "/.ballast", std::ios::binary);
  const std::string block(4096, 'x');
  while (ballast.write(block.data(), static_cast<std::streamsize>(block.size())).flush()) {
  }
  MoveTo(place, folder);
}

/// Carries out one line of the simulated camera's answer.
void Arrange(const std::string& line) {
  std::istringstream words(line);
  std::string action;
  std::string first;
  std::string second;
  words >> action >> first >> second;
  if (action == "hide") {
    Hide(first, second);
  } else if (action == "bind") {
    Mount(first.c_str(), second, nullptr, MS_BIND, nullptr);
  } else if (action == "readonly") {
    MakeReadOnly(first);
  } else if (action == "full") {
    MakeFull(first);
  } else {
    throw std::runtime_error("unknown action " + action);
  }
}

void ArrangeWorld(const std::string& lines) {
  if (lines.empty()) {
    return;
  }
  if (unshare(CLONE_NEWNS) != 0) {
    Fail("unshare");
  }
  Mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
  std::istringstream text(lines);
  for (std::string line; std::getline(text, line);) {
    Arrange(line);
  }
}

// --- The handler --------------------------------------------------------------------------------

struct Pipe {
  UniqueFd out;
  UniqueFd in;
};

Pipe NewPipe() {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    Fail("pipe");
  }
  return {UniqueFd(ends[0]), UniqueFd(ends[1])};
}

/// The request's body as something to read from the start.
UniqueFd AsInput(const Frame& body) {
  UniqueFd input(memfd_create("request", MFD_CLOEXEC));
  if (input.Get() < 0 || !WriteAll(input.Get(), body.data(), body.size()) ||
      lseek(input.Get(), 0, SEEK_SET) != 0) {
    Fail("memfd");
  }
  return input;
}

/// In the child: the web server that ends the tap, because of a time-out of its own, means the
/// handler.
void EndWithTheTap(pid_t tap) {
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  if (getppid() != tap) {
    _exit(1);
  }
}

/// In the child: waits for its world, then becomes the handler.
[[noreturn]] void BecomeHandler(char** argv, pid_t tap, const UniqueFd& input, const Pipe& orders,
                                const Pipe& output) {
  try {
    EndWithTheTap(tap);
    const Frame lines = ReadAll(orders.out.Get());
    ArrangeWorld({lines.begin(), lines.end()});
    dup2(input.Get(), STDIN_FILENO);
    dup2(output.in.Get(), STDOUT_FILENO);
    std::signal(SIGPIPE, SIG_DFL);
    execv(argv[0], argv);
    Fail(argv[0]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "camera_tap: %s\n", error.what());
    _exit(1);
  }
}

double MillisecondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
      .count();
}

/// Ends as the handler has ended.
[[noreturn]] void EndLike(int status) {
  if (WIFSIGNALED(status)) {
    std::signal(WTERMSIG(status), SIG_DFL);
    raise(WTERMSIG(status));
  }
  _exit(WEXITSTATUS(status));
}

/// Starts the handler and tells the simulated camera about it.
/// @param argv  the handler's path and arguments
void Run(char** argv) {
  Line line;
  const Frame body = ReadAll(STDIN_FILENO);
  const UniqueFd input = AsInput(body);
  Pipe orders = NewPipe();
  Pipe output = NewPipe();
  const pid_t tap = getpid();
  const pid_t child = fork();
  if (child < 0) {
    Fail("fork");
  }
  if (child == 0) {
    orders.in = UniqueFd();
    BecomeHandler(argv, tap, input, orders, output);
  }
  output.in = UniqueFd();
  const Object answer = line.Tell({{"pid", child},
                                   {"method", Variable("REQUEST_METHOD")},
                                   {"client", Variable("REMOTE_ADDR")},
                                   {"body", Object::binary(body)}});
  std::string lines;
  for (const Object& entry : answer.value("world", Object::array())) {
    lines += entry.get<std::string>() + "\n";
  }
  const auto start = std::chrono::steady_clock::now();
  WriteAll(orders.in.Get(), reinterpret_cast<const std::uint8_t*>(lines.data()), lines.size());
  orders.in = UniqueFd();
  const Frame reply = ReadAll(output.out.Get());
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  // Before the client has the reply, so that it finds the request in the journal.
  line.Tell(
      {{"output", Object::binary(reply)}, {"status", status}, {"ms", MillisecondsSince(start)}});
  WriteAll(STDOUT_FILENO, reply.data(), reply.size());
  EndLike(status);
}

}  // namespace
}  // namespace simulator::tap

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: camera_tap HANDLER [ARGUMENT...]\n");
    return 2;
  }
  try {
    simulator::tap::Run(argv + 1);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "camera_tap: %s\n", error.what());
  }
  return 1;
}
