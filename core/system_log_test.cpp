// The black-box tests cover what a request logs. These tests need many or very long messages, or a
// system that refuses a call. A process connects to the log daemon only once, so a child process
// sends the messages to a test's own daemon.
#include "core/system_log.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>

#include "harness/fake_daemon.h"
#include "harness/system_log.h"
#include "harness/unix_socket.h"

namespace {

using harness::BoundSocket;
using harness::Error;
using harness::FakeDaemon;
using harness::Logged;
using testing::ElementsAre;

constexpr char kLog[] = "/dev/log";
constexpr char kHead[] = "<11>unit_tests: ";
const std::string kEnd(1, '\0');

/// Longer than what the system keeps for a receiver.
const std::string kLongText(1 << 20, 'x');

class DescriptorLimit {
 public:
  explicit DescriptorLimit(rlim_t count) {
    getrlimit(RLIMIT_NOFILE, &before_);
    const rlimit limit = {count, before_.rlim_max};
    setrlimit(RLIMIT_NOFILE, &limit);
  }
  ~DescriptorLimit() { setrlimit(RLIMIT_NOFILE, &before_); }
  DescriptorLimit(const DescriptorLimit&) = delete;
  DescriptorLimit& operator=(const DescriptorLimit&) = delete;

 private:
  rlimit before_ = {};
};

/// Logs texts in a process of their own, which must end well.
template <typename... Texts>
void LogInChild(const Texts&... texts) {
  EXPECT_EXIT(
      {
        (os::SystemLog(3, std::string(texts).c_str()), ...);
        _exit(0);
      },
      testing::ExitedWithCode(0), "");
}

/// The bytes that came over the next connection, up to its end.
std::string ReceiveFromNext(int listening_socket) {
  const int socket = accept(listening_socket, nullptr, nullptr);
  std::string bytes;
  char buffer[65536];
  ssize_t length = 0;
  while ((length = recv(socket, buffer, sizeof buffer, 0)) > 0) {
    bytes.append(buffer, static_cast<std::size_t>(length));
  }
  close(socket);
  return bytes;
}

TEST(SystemLog, LosesOnlyTheMessageForWhichNoDescriptorIsFree) {
  {
    const DescriptorLimit none(0);
    os::SystemLog(3, "lost");
  }
  harness::SystemLog log;
  os::SystemLog(3, "kept");
  EXPECT_THAT(log.Lines(), Logged(Error("kept")));
}

TEST(SystemLog, NeedsOneDescriptorForManyMessagesWithoutADaemon) {
  const DescriptorLimit few(20);
  for (int i = 0; i < 100; ++i) {
    os::SystemLog(3, "lost");
  }
  harness::SystemLog log;
  os::SystemLog(3, "kept");
  EXPECT_THAT(log.Lines(), Logged(Error("kept")));
}

int CountOpenDescriptors() {
  constexpr int kMost = 1000;
  int count = 0;
  for (int number = 0; number < kMost; ++number) {
    count += fcntl(number, F_GETFD) != -1 ? 1 : 0;
  }
  return count;
}

void LogToNewDaemon(const char* text) {
  const int log = BoundSocket(kLog, SOCK_STREAM);
  listen(log, 1);
  os::SystemLog(3, text);
  close(log);
}

/// Exits with the number of descriptors that the second connection needs more than the first one.
[[noreturn]] void ExitWithDescriptorsOfReconnecting() {
  LogToNewDaemon("first");
  const int before = CountOpenDescriptors();
  LogToNewDaemon("second");
  _exit(CountOpenDescriptors() - before);
}

TEST(SystemLog, NeedsOneDescriptorHoweverOftenItConnects) {
  EXPECT_EXIT(ExitWithDescriptorsOfReconnecting(), testing::ExitedWithCode(0), "");
}

TEST(SystemLog, SendsALongMessageWholeOverAStream) {
  FakeDaemon log(kLog, harness::Silent());
  LogInChild(kLongText, "next");
  EXPECT_THAT(log.Received(), ElementsAre(kHead + kLongText + kEnd + kHead + "next" + kEnd));
}

TEST(SystemLog, DoesNotContinueATruncatedMessageWithTheNextOne) {
  const int log = BoundSocket(kLog, SOCK_STREAM);
  listen(log, 2);
  LogInChild(kLongText, "next");
  const std::string first = ReceiveFromNext(log);
  EXPECT_LT(first.size(), kLongText.size());
  EXPECT_EQ(first, (kHead + kLongText).substr(0, first.size()));
  EXPECT_EQ(ReceiveFromNext(log), kHead + std::string("next") + kEnd);
  close(log);
}

}  // namespace
