#include "streaming/renewal_notice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "harness/fake_daemon.h"
#include "harness/messages.h"
#include "harness/system_log.h"

namespace {

using harness::Bytes;
using harness::Info;
using harness::Logged;
using testing::ElementsAre;

TEST(RenewSetting, SendsThirteenBytesAndOnlyOneMeansReconnect) {
  harness::SystemLog log;
  harness::FakeDaemon daemon;
  for (const int renew_reconnect : {1, 0, 2, -1}) {
    EXPECT_EQ(RenewSetting(renew_reconnect), 0);
  }
  const std::string keep = Bytes({0, 1, 1, 0, 1, 1, 0, 0, 0, 0, 0, 0, 0});
  const std::string reconnect = Bytes({0, 1, 1, 0, 1, 1, 0, 0, 0, 0, 0, 0, 1});
  EXPECT_THAT(daemon.Received(), ElementsAre(reconnect, keep, keep, keep));
  EXPECT_THAT(log.Lines(), Logged(Info("##### RenewSetting socket_send_msg() renew_reconnect 1"),
                                  Info("##### RenewSetting socket_send_msg() renew_reconnect 0"),
                                  Info("##### RenewSetting socket_send_msg() renew_reconnect 2"),
                                  Info("##### RenewSetting socket_send_msg() renew_reconnect -1")));
}

}  // namespace
