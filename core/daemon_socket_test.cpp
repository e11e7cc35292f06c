// Requests send one-way messages only to the control daemon, and never an empty one. These tests
// cover the rest of `socket_send_msg`.
#include "core/daemon_socket.h"

#include <gtest/gtest.h>

#include <string>

#include "harness/fake_daemon.h"
#include "harness/system_log.h"

namespace {

using harness::Error;
using harness::Logged;
using testing::ElementsAre;

constexpr unsigned char kMessage[] = {0xFF, 0, 'x'};

TEST(SocketSendMsg, ReachesTheDaemonOfEachIndex) {
  const char* const paths[] = {"/var/run/quonta_usb.sock", "/var/run/quonta_web.sock",
                               "/var/run/quonta_cp.sock", "/var/run/quonta_nm.sock"};
  for (unsigned char index = 0; index < 4; ++index) {
    SCOPED_TRACE(paths[index]);
    harness::FakeDaemon daemon(paths[index]);
    socket_send_msg(kMessage, sizeof kMessage, index);
    EXPECT_THAT(daemon.Received(), ElementsAre(std::string("\xFF\0x", 3)));
  }
}

TEST(SocketSendMsg, LogsAnEmptyMessageAndSendsNothing) {
  harness::SystemLog log;
  harness::FakeDaemon daemon;
  socket_send_msg(kMessage, 0, 2);
  EXPECT_THAT(daemon.Received(), ElementsAre(""));
  EXPECT_THAT(log.Lines(), Logged(Error("error: invalid msg size !!\n")));
}

TEST(SocketSendMsg, EndsTheRequestForAnIndexWithoutADaemon) {
  harness::SystemLog log;
  EXPECT_EXIT(socket_send_msg(kMessage, sizeof kMessage, 4), testing::ExitedWithCode(1), "");
  EXPECT_THAT(log.Lines(), Logged(Error("error: socket connect error.\n"),
                                  Error("cmd:6374: Can't connect SOCK_NAME")));
}

}  // namespace
