#include "process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "harness/files.h"
#include "harness/system_call.h"

namespace bench {
namespace {

constexpr int kReplyCapacity = 1 << 20;
constexpr char kValgrindLog[] = "/var/tmp/callgrind.log";

using harness::Check;
using harness::Pointers;

/// Command, environment, request and a pipe for the reply of one run, prepared before it starts.
class Run {
 public:
  explicit Run(const Program& program)
      : command_(program.command),
        environment_{"GATEWAY_INTERFACE=CGI/1.1",
                     "REQUEST_METHOD=POST",
                     "CONTENT_LENGTH=" + std::to_string(program.body.size()),
                     "CONTENT_TYPE=application/json",
                     "SERVER_PROTOCOL=HTTP/1.1",
                     "SERVER_NAME=camera",
                     "SERVER_PORT=80",
                     "REMOTE_ADDR=192.168.0.2",
                     "REQUEST_URI=/cgi-bin/camera_remote.cgi",
                     "SCRIPT_NAME=/cgi-bin/camera_remote.cgi"},
        arguments_(Pointers(command_)),
        variables_(Pointers(environment_)),
        input_(memfd_create("request", MFD_CLOEXEC)) {
    Check(input_ >= 0, "memfd_create");
    Check(write(input_, program.body.data(), program.body.size()) >= 0, "write");
    lseek(input_, 0, SEEK_SET);
    Check(pipe2(output_, O_CLOEXEC) == 0, "pipe");
    fcntl(output_[0], F_SETPIPE_SZ, kReplyCapacity);
    fcntl(output_[0], F_SETFL, O_NONBLOCK);
    posix_spawn_file_actions_init(&actions_);
    posix_spawn_file_actions_adddup2(&actions_, input_, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions_, output_[1], STDOUT_FILENO);
  }
  ~Run() {
    posix_spawn_file_actions_destroy(&actions_);
    close(input_);
    close(output_[0]);
    close(output_[1]);
  }
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  [[nodiscard]] pid_t Spawn() const {
    pid_t pid = 0;
    errno =
        posix_spawnp(&pid, arguments_[0], &actions_, nullptr, arguments_.data(), variables_.data());
    Check(errno == 0, arguments_[0]);
    return pid;
  }

  /// In a forked process: becomes the program, traced by its parent.
  [[noreturn]] void BecomeTraced() const {
    dup2(input_, STDIN_FILENO);
    dup2(output_[1], STDOUT_FILENO);
    ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    execvpe(arguments_[0], arguments_.data(), variables_.data());
    _exit(127);
  }

  /// The output of the program, after it has ended.
  [[nodiscard]] std::string Output() const {
    std::string output(kReplyCapacity, '\0');
    const ssize_t size = read(output_[0], output.data(), output.size());
    output.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return output;
  }

 private:
  std::vector<std::string> command_;
  std::vector<std::string> environment_;
  std::vector<char*> arguments_;
  std::vector<char*> variables_;
  int input_;
  int output_[2] = {-1, -1};
  posix_spawn_file_actions_t actions_ = {};
};

/// The number after a word in a text file.
long NumberAfter(const std::string& path, const std::string& word) {
  std::istringstream text(harness::ReadFile(path));
  for (std::string found; text >> found;) {
    long number = 0;
    if (found == word && text >> number) {
      return number;
    }
  }
  throw std::runtime_error("no " + word + " in " + path);
}

}  // namespace

double Microseconds(const Program& program, const std::string& expected) {
  const Run run(program);
  int status = 0;
  const auto start = std::chrono::steady_clock::now();
  const pid_t pid = run.Spawn();
  waitpid(pid, &status, 0);
  const std::chrono::duration<double, std::micro> elapsed =
      std::chrono::steady_clock::now() - start;
  if (!WIFEXITED(status) || run.Output().find(expected) == std::string::npos) {
    throw std::runtime_error(program.command[0] + " did not answer " + expected);
  }
  return elapsed.count();
}

Counts CountCalls(const Program& program) {
  const Run run(program);
  const pid_t pid = fork();
  Check(pid >= 0, "fork");
  if (pid == 0) {
    run.BecomeTraced();
  }
  int status = 0;
  waitpid(pid, &status, 0);
  Check(WIFSTOPPED(status) &&
            ptrace(PTRACE_SETOPTIONS, pid, nullptr,
                   PTRACE_O_TRACESYSGOOD | PTRACE_O_TRACEEXIT | PTRACE_O_EXITKILL) == 0,
        "ptrace");
  constexpr int kSystemCallStop = SIGTRAP | 0x80;
  Counts counts;
  // Each call stops the program twice, except for execve, which starts before it is traced, and
  // exit_group, which does not return.
  int stops = 2;
  while (ptrace(PTRACE_SYSCALL, pid, nullptr, nullptr) == 0 && waitpid(pid, &status, 0) == pid &&
         WIFSTOPPED(status)) {
    if (WSTOPSIG(status) == kSystemCallStop) {
      ++stops;
    } else if (status >> 8 == (SIGTRAP | (PTRACE_EVENT_EXIT << 8))) {
      counts.peak_kib = NumberAfter("/proc/" + std::to_string(pid) + "/status", "VmHWM:");
    }
  }
  counts.system_calls = (stops + 1) / 2;
  return counts;
}

long Instructions(const Program& program) {
  Program traced = program;
  traced.command.insert(traced.command.begin(),
                        {"valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null",
                         std::string("--log-file=") + kValgrindLog});
  const Run run(traced);
  int status = 0;
  waitpid(run.Spawn(), &status, 0);
  std::string log = harness::ReadFile(kValgrindLog);
  const std::size_t found = log.find("Collected :");
  if (found == std::string::npos) {
    throw std::runtime_error("valgrind: " + log);
  }
  return std::stol(log.substr(found + sizeof "Collected :"));
}

}  // namespace bench
