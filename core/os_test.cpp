// What the files and sockets of a request are asked for is tested from outside; here is what only
// happens when a signal comes or the system refuses something.
#include "core/os.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <string>
#include <thread>

#include "harness/files.h"
#include "harness/system_log.h"

namespace {

using namespace std::chrono_literals;

constexpr char kPath[] = "/var/run/file";
constexpr os::Timeout kLong = {10, 0};

/// While this thread waits for something, a signal comes, and then what it waits for.
template <typename Call, typename Event>
auto InterruptedUntil(Event event, Call call) {
  struct sigaction interrupt = {};
  interrupt.sa_handler = [](int) {};
  struct sigaction before = {};
  sigaction(SIGUSR1, &interrupt, &before);
  std::thread other([waiting = pthread_self(), event] {
    std::this_thread::sleep_for(50ms);
    pthread_kill(waiting, SIGUSR1);
    std::this_thread::sleep_for(50ms);
    event();
  });
  const auto result = call();
  other.join();
  sigaction(SIGUSR1, &before, nullptr);
  return result;
}

struct SocketPair {
  SocketPair() { socketpair(AF_UNIX, SOCK_STREAM, 0, ends); }
  ~SocketPair() { close(ends[1]); }
  SocketPair(const SocketPair&) = delete;
  SocketPair& operator=(const SocketPair&) = delete;

  void Send(const std::string& bytes) const { send(ends[1], bytes.data(), bytes.size(), 0); }

  int ends[2] = {-1, -1};
};

class NoFreeDescriptor {
 public:
  NoFreeDescriptor() {
    getrlimit(RLIMIT_NOFILE, &before_);
    const rlimit none = {0, before_.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
  }
  ~NoFreeDescriptor() { setrlimit(RLIMIT_NOFILE, &before_); }
  NoFreeDescriptor(const NoFreeDescriptor&) = delete;
  NoFreeDescriptor& operator=(const NoFreeDescriptor&) = delete;

 private:
  rlimit before_ = {};
};

TEST(Lock, IsStillAwaitedAfterASignal) {
  harness::WriteFile(kPath, "");
  const os::Descriptor mine = os::OpenForReading(kPath);
  const os::Descriptor others = os::OpenForReading(kPath);
  ASSERT_TRUE(os::Lock(others));
  EXPECT_TRUE(InterruptedUntil([&] { os::Unlock(others); }, [&] { return os::Lock(mine); }));
  EXPECT_EQ(flock(others.Number(), LOCK_EX | LOCK_NB), -1);
}

TEST(ReceiveAll, GoesOnAfterASignal) {
  const SocketPair pair;
  const os::Descriptor socket(pair.ends[0]);
  char bytes[5] = {};
  EXPECT_EQ(InterruptedUntil([&] { pair.Send("reply"); },
                             [&] { return os::ReceiveAll(socket, bytes, sizeof bytes, kLong); }),
            5U);
  EXPECT_EQ(std::string(bytes, sizeof bytes), "reply");
}

TEST(ReceiveAll, GivesUpAtTheTimeOutWithWhatHasCome) {
  const SocketPair pair;
  const os::Descriptor socket(pair.ends[0]);
  constexpr timeval kTimeOut = {0, 100000};
  setsockopt(socket.Number(), SOL_SOCKET, SO_RCVTIMEO, &kTimeOut, sizeof kTimeOut);
  pair.Send("rep");
  char bytes[5] = {};
  EXPECT_EQ(os::ReceiveAll(socket, bytes, sizeof bytes, {0, 100000}), 3U);
  EXPECT_EQ(std::string(bytes, 3), "rep");
}

TEST(Rewrite, FailsForAFileThatIsOpenForReadingAlone) {
  harness::WriteFile(kPath, "before");
  EXPECT_FALSE(os::Rewrite(os::OpenForReading(kPath), "after"));
  EXPECT_EQ(harness::ReadFile(kPath), "before");
}

TEST(CreateStreamSocket, FailsWithoutAFreeDescriptor) {
  {
    const NoFreeDescriptor none;
    EXPECT_FALSE(os::CreateStreamSocket(kLong).IsOpen());
  }
  EXPECT_TRUE(os::CreateStreamSocket(kLong).IsOpen());
}

TEST(PrepareDescriptors, DoesWithoutAFreeDescriptor) {
  const NoFreeDescriptor none;
  os::PrepareDescriptors();
}

TEST(SystemLog, LosesAMessageWithoutAFreeDescriptorAndNotTheNextOne) {
  {
    const NoFreeDescriptor none;
    os::SystemLog(3, "lost");
  }
  harness::SystemLog log;
  os::SystemLog(3, "kept");
  EXPECT_THAT(log.Lines(), harness::Logged(harness::Error("kept")));
}

}  // namespace
