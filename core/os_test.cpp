// The black-box tests cover what requests do with files and sockets. These tests cover what happens
// when a signal arrives or the system refuses a call.
#include "core/os.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <string>
#include <thread>

#include "harness/files.h"
#include "harness/refusal.h"

namespace {

using namespace std::chrono_literals;

constexpr char kFile[] = "/var/run/file";
constexpr os::Timeout kLong = {10, 0};

/// Makes a call that waits. While it waits, a signal arrives first, then the event that ends it.
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

TEST(Lock, KeepsWaitingAfterASignal) {
  harness::WriteFile(kFile, "");
  const os::Descriptor mine = os::OpenForReading(kFile);
  const os::Descriptor others = os::OpenForReading(kFile);
  ASSERT_TRUE(os::Lock(others));
  EXPECT_TRUE(InterruptedUntil([&] { os::Unlock(others); }, [&] { return os::Lock(mine); }));
  EXPECT_EQ(flock(others.Number(), LOCK_EX | LOCK_NB), -1);
}

TEST(Lock, ExcludesSharedLocksToo) {
  harness::WriteFile(kFile, "");
  const os::Descriptor mine = os::OpenForReading(kFile);
  const os::Descriptor others = os::OpenForReading(kFile);
  ASSERT_TRUE(os::Lock(mine));
  EXPECT_EQ(flock(others.Number(), LOCK_SH | LOCK_NB), -1);
  os::Unlock(mine);
  ASSERT_TRUE(os::LockInTime(mine));
  EXPECT_EQ(flock(others.Number(), LOCK_SH | LOCK_NB), -1);
}

TEST(LockInTime, WaitsUntilTheLockIsReleased) {
  harness::WriteFile(kFile, "");
  const os::Descriptor mine = os::OpenForReading(kFile);
  const os::Descriptor others = os::OpenForReading(kFile);
  ASSERT_TRUE(os::Lock(others));
  std::thread other([&others] {
    std::this_thread::sleep_for(50ms);
    os::Unlock(others);
  });
  EXPECT_TRUE(os::LockInTime(mine));
  other.join();
  EXPECT_EQ(flock(others.Number(), LOCK_EX | LOCK_NB), -1);
}

TEST(LockInTime, WaitsForOneSecondInTotal) {
  harness::WriteFile(kFile, "");
  const os::Descriptor mine = os::OpenForReading(kFile);
  const os::Descriptor others = os::OpenForReading(kFile);
  ASSERT_TRUE(os::Lock(others));
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(os::LockInTime(mine));
  const auto first = std::chrono::steady_clock::now();
  EXPECT_FALSE(os::LockInTime(mine));
  EXPECT_GE(first - start, std::chrono::milliseconds(900));
  EXPECT_LT(std::chrono::steady_clock::now() - first, std::chrono::milliseconds(500));
  os::Unlock(others);
  EXPECT_TRUE(os::LockInTime(mine));
}

TEST(ReceiveAll, ContinuesAfterASignal) {
  const SocketPair pair;
  const os::Descriptor socket(pair.ends[0]);
  char bytes[5] = {};
  const os::Reception reception =
      InterruptedUntil([&] { pair.Send("reply"); },
                       [&] { return os::ReceiveAll(socket, bytes, sizeof bytes, kLong); });
  EXPECT_EQ(reception.length, 5U);
  EXPECT_FALSE(reception.timed_out);
  EXPECT_EQ(std::string(bytes, sizeof bytes), "reply");
}

TEST(ReceiveAll, ReturnsWhatArrivedBeforeTheTimeOut) {
  const SocketPair pair;
  const os::Descriptor socket(pair.ends[0]);
  constexpr timeval kTimeOut = {0, 100000};
  setsockopt(socket.Number(), SOL_SOCKET, SO_RCVTIMEO, &kTimeOut, sizeof kTimeOut);
  pair.Send("rep");
  char bytes[5] = {};
  const os::Reception reception = os::ReceiveAll(socket, bytes, sizeof bytes, {0, 100000});
  EXPECT_EQ(reception.length, 3U);
  EXPECT_TRUE(reception.timed_out);
  EXPECT_EQ(std::string(bytes, 3), "rep");
}

TEST(ReceiveAll, AByteJustBeforeTheTimeOutDoesNotExtendIt) {
  const SocketPair pair;
  const os::Descriptor socket(pair.ends[0]);
  constexpr timeval kTimeOut = {2, 0};
  setsockopt(socket.Number(), SOL_SOCKET, SO_RCVTIMEO, &kTimeOut, sizeof kTimeOut);
  std::thread peer([&pair] {
    std::this_thread::sleep_for(1600ms);
    pair.Send("r");
  });
  const auto start = std::chrono::steady_clock::now();
  char bytes[5] = {};
  EXPECT_EQ(os::ReceiveAll(socket, bytes, sizeof bytes, {2, 0}).length, 1U);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(3200));
  peer.join();
}

TEST(ReceiveAll, APeerThatClosesHasNotTimedOut) {
  SocketPair pair;
  const os::Descriptor socket(pair.ends[0]);
  pair.Send("rep");
  shutdown(pair.ends[1], SHUT_WR);
  char bytes[5] = {};
  const os::Reception reception = os::ReceiveAll(socket, bytes, sizeof bytes, kLong);
  EXPECT_EQ(reception.length, 3U);
  EXPECT_FALSE(reception.timed_out);
}

// More than the socket keeps, so that writing stops in the middle; the signal comes then.
TEST(SendAll, ContinuesAfterASignalThatInterruptsALongMessage) {
  const SocketPair pair;
  const os::Descriptor socket(pair.ends[0]);
  std::string message;
  while (message.size() < 400000) {
    message += std::to_string(message.size()) + ' ';
  }
  std::string received;
  std::thread reader;
  const auto read_all = [&] {
    reader = std::thread([&] {
      char buffer[65536];
      while (received.size() < message.size()) {
        const ssize_t length = recv(pair.ends[1], buffer, sizeof buffer, 0);
        if (length <= 0) {
          return;
        }
        received.append(buffer, static_cast<std::size_t>(length));
      }
    });
  };
  const bool sent = InterruptedUntil(
      read_all, [&] { return os::SendAll(socket, message.data(), message.size()); });
  // Ends the reader also when bytes are missing.
  shutdown(socket.Number(), SHUT_RDWR);
  reader.join();
  EXPECT_TRUE(sent);
  EXPECT_TRUE(received == message) << received.size() << " of " << message.size() << " bytes";
}

TEST(Descriptor, ClosesOnlyItsOwnFileWhenClosedTwice) {
  os::Descriptor file = os::OpenForReading("/dev/null");
  file.Close();
  const os::Descriptor other = os::OpenForReading("/dev/null");
  file.Close();
  EXPECT_FALSE(file.IsOpen());
  EXPECT_NE(fcntl(other.Number(), F_GETFD), -1);
}

/// Closes the standard streams, prepares the descriptors and tells which ones are open.
[[noreturn]] void ExitWithOpenStandardStreams() {
  for (int number = 0; number <= 2; ++number) {
    close(number);
  }
  os::PrepareDescriptors();
  int open = 0;
  for (int number = 0; number <= 2; ++number) {
    open |= fcntl(number, F_GETFD) != -1 ? 1 << number : 0;
  }
  _exit(open);
}

TEST(PrepareDescriptors, OpensAllThreeStandardStreams) {
  EXPECT_EXIT(ExitWithOpenStandardStreams(), testing::ExitedWithCode(7), "");
}

TEST(Rewrite, FailsForAFileThatIsOpenOnlyForReading) {
  harness::WriteFile(kFile, "before");
  EXPECT_FALSE(os::Rewrite(os::OpenForReading(kFile), "after"));
  EXPECT_EQ(harness::ReadFile(kFile), "before");
}

TEST(Rewrite, ReplacesContentsOfAnyLengthByOnesOfAnyLength) {
  const std::size_t lengths[] = {0, 1, 100, 4096, 4097, 10000};
  for (const std::size_t before : lengths) {
    for (const std::size_t after : lengths) {
      SCOPED_TRACE(std::to_string(before) + " bytes before, " + std::to_string(after) + " after");
      harness::WriteFile(kFile, std::string(before, 'b'));
      EXPECT_TRUE(os::Rewrite(os::OpenForUpdate(kFile), std::string(after, 'a')));
      EXPECT_EQ(harness::ReadFile(kFile), std::string(after, 'a'));
    }
  }
}

TEST(Rewrite, DoesNotDependOnWhatWasReadBefore) {
  harness::WriteFile(kFile, "before");
  const os::Descriptor file = os::OpenForUpdate(kFile);
  char bytes[3];
  std::size_t count = 0;
  ASSERT_TRUE(os::Read(file, bytes, sizeof bytes, count));
  EXPECT_TRUE(os::Rewrite(file, "after"));
  EXPECT_EQ(harness::ReadFile(kFile), "after");
}

TEST(WriteFile, LetsTheUmaskDecideOnThePermissions) {
  umask(027);
  EXPECT_TRUE(os::WriteFile(kFile, "new"));
  struct stat status = {};
  stat(kFile, &status);
  EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST(WriteFile, WritesNothingIntoAPipe) {
  ASSERT_EQ(mkfifo(kFile, 0600), 0);
  const os::Descriptor reader = os::OpenForReading(kFile);
  EXPECT_FALSE(os::WriteFile(kFile, "new"));
  struct stat status = {};
  ASSERT_EQ(stat(kFile, &status), 0);
  EXPECT_TRUE(S_ISFIFO(status.st_mode));
}

// Where an open file cannot be named, the name is there first.
TEST(WriteFile, LeavesNoEmptyFileWhenThereIsNoRoom) {
  constexpr int kSkipped = 2;  // an emulator has no system calls to refuse
  EXPECT_EXIT(
      {
        const bool refuses = harness::RefuseSystemCall(SYS_linkat, EPERM) &&
                             harness::RefuseSystemCall(SYS_pwrite64, ENOSPC);
        _exit(refuses ? static_cast<int>(os::WriteFile(kFile, "new")) : kSkipped);
      },
      [](int status) {
        return WIFEXITED(status) && (WEXITSTATUS(status) == 0 || WEXITSTATUS(status) == kSkipped);
      },
      "");
  EXPECT_FALSE(harness::Exists(kFile));
}

TEST(CreateStreamSocket, FailsWithoutAFreeDescriptor) {
  {
    const NoFreeDescriptor none;
    EXPECT_FALSE(os::CreateStreamSocket(kLong).IsOpen());
  }
  EXPECT_TRUE(os::CreateStreamSocket(kLong).IsOpen());
}

TEST(PrepareDescriptors, ReturnsWithoutAFreeDescriptor) {
  const NoFreeDescriptor none;
  os::PrepareDescriptors();
}

}  // namespace
