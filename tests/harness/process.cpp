#include <elf.h>
#include <fcntl.h>
#include <linux/capability.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "harness/exchanges.h"
#include "harness/files.h"
#include "harness/handler.h"
#include "harness/recording.h"
#include "harness/refusal.h"
#include "harness/system_call.h"

namespace harness {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr std::size_t kBytesAtOnce = 65536;
constexpr int kEmulationIsSlower = 3;
constexpr int kExecFailed = 127;

std::string FromEnvironment(const char* name, const char* otherwise) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : otherwise;
}

std::string Binary() { return FromEnvironment("CAMERA_BINARY", CAMERA_BINARY); }

/// Sanitizers reserve terabytes of address space.
bool IsSanitized() { return ReadFile(Binary()).find("__asan_init") != std::string::npos; }

bool IsSlow() { return IsEmulated() || IsSanitized(); }

/// The processor of an ELF file; 0 if it is not an ELF file.
int Machine(const std::string& path) {
  Elf32_Ehdr header = {};  // both classes of ELF files are alike up to this field
  std::ifstream file(path, std::ios::binary);
  file.read(reinterpret_cast<char*>(&header), sizeof header);
  return file ? header.e_machine : 0;
}

/// Writing into the pipe of a handler that has ended must not end the test program.
class WithoutPipeSignal {
 public:
  WithoutPipeSignal() : before_(std::signal(SIGPIPE, SIG_IGN)) {}
  ~WithoutPipeSignal() { std::signal(SIGPIPE, before_); }
  WithoutPipeSignal(const WithoutPipeSignal&) = delete;
  WithoutPipeSignal& operator=(const WithoutPipeSignal&) = delete;

 private:
  void (*before_)(int);
};

void Limit(__rlimit_resource_t resource, std::size_t bytes) {
  rlimit limit = {};
  getrlimit(resource, &limit);
  limit.rlim_cur = bytes;
  setrlimit(resource, &limit);
}

}  // namespace

/// One run of the handler: writes its input, reads its output and waits for its end.
class Process {
 public:
  explicit Process(const Request& request) : request_(request) {}

  Outcome Run();

 private:
  /// A pipe whose ends are closed when it goes out of scope.
  struct Pipe {
    Pipe() { Check(pipe2(ends, O_CLOEXEC) == 0, "pipe"); }
    ~Pipe() {
      Close(0);
      Close(1);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    void Close(int end) {
      if (ends[end] >= 0) {
        close(ends[end]);
      }
      ends[end] = -1;
    }

    int ends[2] = {-1, -1};
  };

  void PrepareCommand();
  void Start();
  [[noreturn]] void BecomeHandler();
  void ConnectStandardStreams();
  void SetLimits() const;
  void Serve();
  void Feed();
  bool MayFeed() const { return input_.ends[1] >= 0 && steady_clock::now() >= next_feeding_; }
  int PollTimeout() const;
  static void Listen(Pipe& pipe, std::string& text);
  void AwaitEnd();
  bool IsLate() const { return steady_clock::now() >= deadline_; }
  void KillLate();

  const Request& request_;
  std::vector<std::string> command_;
  std::vector<std::string> environment_;
  Pipe input_;
  Pipe output_;
  Pipe errors_;
  std::size_t fed_ = 0;
  steady_clock::time_point start_;
  steady_clock::time_point deadline_;
  steady_clock::time_point next_feeding_;
  Outcome outcome_;
};

Outcome Process::Run() {
  const WithoutPipeSignal without_pipe_signal;
  PrepareCommand();
  RecordRequest(request_.body_, request_.environment_, request_.arguments_);
  Start();
  Serve();
  AwaitEnd();
  outcome_.elapsed = steady_clock::now() - start_;
  RecordExchange(request_.body_, outcome_.output);
  return outcome_;
}

void Process::PrepareCommand() {
  command_ = HandlerCommand();
  command_.insert(command_.end(), request_.arguments_.begin(), request_.arguments_.end());
  for (const auto& [name, value] : request_.environment_) {
    environment_.push_back(name + "=" + value);
  }
}

void Process::Start() {
  start_ = steady_clock::now();
  deadline_ = start_ + request_.deadline_ * (IsEmulated() ? kEmulationIsSlower : 1);
  next_feeding_ = start_ + request_.piece_pause_;
  outcome_.pid = fork();
  Check(outcome_.pid >= 0, "fork");
  if (outcome_.pid == 0) {
    BecomeHandler();
  }
  input_.Close(0);
  output_.Close(1);
  errors_.Close(1);
  if (request_.input_ == Input::kClosed) {
    input_.Close(1);
  }
}

void Process::BecomeHandler() {
  std::vector<char*> command = Pointers(command_);
  std::vector<char*> environment = Pointers(environment_);
  std::signal(SIGPIPE, SIG_DFL);
  ConnectStandardStreams();
  // The test runner may have left open descriptors.
  close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
  SetLimits();
  execvpe(command.front(), command.data(), environment.data());
  _exit(kExecFailed);
}

void Process::ConnectStandardStreams() {
  dup2(errors_.ends[1], STDERR_FILENO);
  dup2(input_.ends[0], STDIN_FILENO);
  if (request_.input_ == Input::kClosed) {
    close(STDIN_FILENO);
  }
  switch (request_.output_) {
    case Output::kPipe:
      dup2(output_.ends[1], STDOUT_FILENO);
      break;
    case Output::kClosed:
      close(STDOUT_FILENO);
      break;
    case Output::kFull:
      dup2(open("/dev/full", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
      break;
    case Output::kNoReader: {
      Pipe unread;
      dup2(unread.ends[1], STDOUT_FILENO);
      break;
    }
  }
}

void Process::SetLimits() const {
  if (request_.memory_limit_ != 0 && !IsEmulated() && !IsSanitized()) {
    Limit(RLIMIT_AS, request_.memory_limit_);
  }
  if (request_.has_file_size_limit_) {
    std::signal(SIGXFSZ, SIG_DFL);
    Limit(RLIMIT_FSIZE, request_.file_size_limit_);
  }
  if (!request_.has_privileges_) {
    prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
    prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
  }
  if (request_.descriptor_limit_ != 0 && !IsEmulated()) {
    Limit(RLIMIT_NOFILE, request_.descriptor_limit_);
  }
  if (request_.refused_call_ >= 0 && !RefuseSystemCall(request_.refused_call_, request_.refusal_)) {
    _exit(kExecFailed);
  }
  if (request_.last_call_ >= 0 && !EndAtSystemCall(request_.last_call_)) {
    _exit(kExecFailed);
  }
}

void Process::Serve() {
  while (output_.ends[0] >= 0 || errors_.ends[0] >= 0) {
    pollfd events[] = {{output_.ends[0], POLLIN, 0},
                       {errors_.ends[0], POLLIN, 0},
                       {MayFeed() ? input_.ends[1] : -1, POLLOUT, 0}};
    Check(poll(events, 3, PollTimeout()) >= 0, "poll");
    if (events[0].revents != 0) {
      Listen(output_, outcome_.output);
    }
    if (events[1].revents != 0) {
      Listen(errors_, outcome_.errors);
    }
    if (events[2].revents != 0) {
      Feed();
    }
    if (IsLate()) {
      KillLate();
      return;
    }
  }
}

int Process::PollTimeout() const {
  const auto now = steady_clock::now();
  auto until = deadline_;
  if (input_.ends[1] >= 0 && next_feeding_ > now) {
    until = std::min(until, next_feeding_);
  }
  return std::max(0, static_cast<int>(std::chrono::ceil<milliseconds>(until - now).count()));
}

void Process::Feed() {
  const std::string filler(kBytesAtOnce, request_.input_ == Input::kEndlessBlanks ? ' ' : 'x');
  const bool has_fed_all = fed_ == request_.body_.size();
  if (has_fed_all && request_.input_ == Input::kWhole) {
    input_.Close(1);
    return;
  }
  if (has_fed_all && request_.input_ == Input::kHeldOpen) {
    next_feeding_ = deadline_;
    return;
  }
  const std::string piece =
      has_fed_all ? filler
                  : request_.body_.substr(fed_, std::min(request_.piece_size_, kBytesAtOnce));
  const ssize_t length = write(input_.ends[1], piece.data(), piece.size());
  if (length < 0) {
    input_.Close(1);
    return;
  }
  fed_ = std::min(fed_ + static_cast<std::size_t>(length), request_.body_.size());
  next_feeding_ = steady_clock::now() + request_.piece_pause_;
}

void Process::Listen(Pipe& pipe, std::string& text) {
  char buffer[kBytesAtOnce];
  const ssize_t length = read(pipe.ends[0], buffer, sizeof buffer);
  if (length > 0) {
    text.append(buffer, static_cast<std::size_t>(length));
  } else {
    pipe.Close(0);
  }
}

void Process::AwaitEnd() {
  int status = 0;
  rusage usage = {};
  while (wait4(outcome_.pid, &status, WNOHANG, &usage) == 0) {
    if (IsLate()) {
      KillLate();
    }
    std::this_thread::sleep_for(milliseconds(1));
  }
  outcome_.max_rss_kib = usage.ru_maxrss;
  if (WIFSIGNALED(status)) {
    outcome_.signal = WTERMSIG(status);
  } else {
    outcome_.exit_status = WEXITSTATUS(status);
  }
}

void Process::KillLate() {
  if (kill(outcome_.pid, SIGKILL) == 0 && outcome_.signal == 0) {
    ADD_FAILURE() << "The handler did not end in time and was killed.";
    outcome_.signal = SIGKILL;
  }
}

Outcome RunHandler(const Request& request) {
  const Outcome outcome = Process(request).Run();
  if (outcome.errors.find("Sanitizer") != std::string::npos ||
      outcome.errors.find("runtime error:") != std::string::npos) {
    ADD_FAILURE() << outcome.errors;
  }
  return outcome;
}

std::vector<std::string> HandlerCommand() {
  if (access(Binary().c_str(), X_OK) != 0) {
    throw std::runtime_error(Binary() +
                             " cannot be started; in the tests' private world there is "
                             "nothing of the machine's /run, /var/tmp and /srv");
  }
  if (IsEmulated()) {
    return {FromEnvironment("CAMERA_EMULATOR", "qemu-arm-static"), Binary()};
  }
  return {Binary()};
}

double TimeMargin() { return IsSlow() ? 20 : 3; }

int Repetitions(int times) { return IsSlow() ? times / 10 : times; }

bool IsEmulated() { return Machine(Binary()) != Machine("/proc/self/exe"); }

}  // namespace harness
