// Measures how long handlers take for one request. Starts each of them as a web server does, in
// turn and in alternating order, reads the reply and waits for its end.
//
//   board_time_requests STARTS HANDLER... <BODY
//
// For each handler prints a line with tabs in between: its path, the median, the 10th and the 90th
// percentile of the time in microseconds, the largest amount of its memory that was resident in
// KiB, and the first reply's last line. Ends with status 1 if a reply differs from the first one.
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace {

constexpr int kMaxStarts = 1000;
constexpr int kMaxHandlers = 4;
constexpr std::size_t kMaxReply = 8192;
constexpr std::size_t kMaxBody = 4096;

struct Measurement {
  std::int32_t microseconds[kMaxStarts];
  long memory;
  char reply[kMaxReply];
};

Measurement measurements[kMaxHandlers];

[[noreturn]] void Fail(const char* what) {
  std::perror(what);
  std::exit(1);
}

std::int64_t Microseconds() {
  timespec now = {};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return std::int64_t{now.tv_sec} * 1000000 + now.tv_nsec / 1000;
}

pid_t Start(char* handler, char* content_length, int input, int output) {
  char gateway[] = "GATEWAY_INTERFACE=CGI/1.1";
  char method[] = "REQUEST_METHOD=POST";
  char* arguments[] = {handler, nullptr};
  char* environment[] = {gateway, method, content_length, nullptr};
  posix_spawn_file_actions_t streams;
  posix_spawn_file_actions_init(&streams);
  posix_spawn_file_actions_adddup2(&streams, input, STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&streams, output, STDOUT_FILENO);
  pid_t pid = 0;
  if (posix_spawn(&pid, handler, &streams, nullptr, arguments, environment) != 0) {
    Fail(handler);
  }
  posix_spawn_file_actions_destroy(&streams);
  return pid;
}

/// Sends one request. Returns how long that took in microseconds.
std::int64_t Post(char* handler, const char* body, char (&reply)[kMaxReply], rusage& usage) {
  int input[2];
  int output[2];
  if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0) {
    Fail("pipe");
  }
  char content_length[32];
  std::snprintf(content_length, sizeof content_length, "CONTENT_LENGTH=%zu", std::strlen(body));
  if (write(input[1], body, std::strlen(body)) < 0) {
    Fail("write");
  }
  const std::int64_t start = Microseconds();
  const pid_t pid = Start(handler, content_length, input[0], output[1]);
  close(output[1]);
  std::size_t size = 0;
  ssize_t count = 0;
  while ((count = read(output[0], reply + size, kMaxReply - 1 - size)) > 0) {
    size += static_cast<std::size_t>(count);
  }
  reply[size] = '\0';
  int status = 0;
  wait4(pid, &status, 0, &usage);
  const std::int64_t duration = Microseconds() - start;
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    std::fprintf(stderr, "%s has failed\n", handler);
    std::exit(1);
  }
  close(input[0]);
  close(input[1]);
  close(output[0]);
  return duration;
}

void Measure(char* handler, const char* body, int start, Measurement& measurement) {
  char reply[kMaxReply];
  rusage usage = {};
  measurement.microseconds[start] = static_cast<std::int32_t>(Post(handler, body, reply, usage));
  measurement.memory = std::max(measurement.memory, usage.ru_maxrss);
  if (start == 0) {
    std::strcpy(measurement.reply, reply);
  } else if (std::strcmp(measurement.reply, reply) != 0) {
    std::fprintf(stderr, "%s answers %s\n", handler, reply);
    std::exit(1);
  }
}

void Print(const char* handler, Measurement& measurement, int starts) {
  std::int32_t* times = measurement.microseconds;
  std::sort(times, times + starts);
  const char* line = std::strrchr(measurement.reply, '\n');
  std::printf("%s\t%d\t%d\t%d\t%ld\t%s\n", handler, times[starts / 2], times[starts / 10],
              times[starts - 1 - starts / 10], measurement.memory,
              line == nullptr ? measurement.reply : line + 1);
}

}  // namespace

int main(int argc, char** argv) {
  const int handlers = argc - 2;
  const int starts = argc > 1 ? std::atoi(argv[1]) : 0;
  if (handlers < 1 || handlers > kMaxHandlers || starts < 1 || starts > kMaxStarts) {
    std::fprintf(stderr, "usage: %s STARTS HANDLER... <BODY\n", argv[0]);
    return 2;
  }
  char body[kMaxBody] = {};
  if (read(STDIN_FILENO, body, sizeof body - 1) < 0) {
    Fail("the body");
  }
  for (int start = 0; start < starts; ++start) {
    for (int i = 0; i < handlers; ++i) {
      const int handler = start % 2 == 0 ? i : handlers - 1 - i;
      Measure(argv[2 + handler], body, start, measurements[handler]);
    }
  }
  for (int handler = 0; handler < handlers; ++handler) {
    Print(argv[2 + handler], measurements[handler], starts);
  }
}
