#include "simulator/faults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace simulator;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Names(const std::vector<Fault>& faults) {
  std::vector<std::string> names;
  for (const Fault& fault : faults) {
    names.push_back(fault.name);
  }
  return names;
}

TEST(FaultsTest, AFaultIsOverAfterSoManyRequests) {
  Faults faults;
  faults.Add({{"fault", "silent"}, {"count", 2}});
  faults.Add({{"fault", "no_log"}});
  EXPECT_THAT(Names(faults.TakeFor("GetCamStatus")), ElementsAre("silent", "no_log"));
  EXPECT_EQ(faults.all()[0].count, 1);
  EXPECT_THAT(Names(faults.TakeFor("GetCamStatus")), ElementsAre("silent", "no_log"));
  EXPECT_THAT(Names(faults.TakeFor("GetCamStatus")), ElementsAre("no_log"));
}

TEST(FaultsTest, OnlyRequestsThatCanMeetAFaultAreCounted) {
  Faults faults;
  faults.Add({{"fault", "closed"}, {"daemon", "streaming"}, {"count", 1}});
  for (const char* command : {"GetSystemInfo", "GetCamStatus", "NoSuchCommand", ""}) {
    EXPECT_THAT(faults.TakeFor(command), IsEmpty()) << command;
  }
  EXPECT_THAT(Names(faults.TakeFor("SetCldstrmLogout")), ElementsAre("closed"));
  EXPECT_THAT(faults.all(), IsEmpty());
}

TEST(FaultsTest, AFaultOfTheEnvironmentConcernsEveryRequest) {
  Faults faults;
  faults.Add({{"fault", "no_session"}});
  faults.Add({{"fault", "disk_full"}, {"command", "SetNTPServer"}});
  EXPECT_THAT(Names(faults.TakeFor("")), ElementsAre("no_session"));
  EXPECT_THAT(Names(faults.TakeFor("SetNTPServer")), ElementsAre("no_session", "disk_full"));
}

TEST(FaultsTest, AnIdIsNeverGivenTwice) {
  Faults faults;
  EXPECT_EQ(faults.Add({{"fault", "no_log"}}).id, 1);
  EXPECT_TRUE(faults.Remove(1));
  EXPECT_FALSE(faults.Remove(1));
  EXPECT_EQ(faults.Add({{"fault", "no_log"}}).id, 2);
}

TEST(FaultsTest, NoMoreThan100AreInForce) {
  Faults faults;
  for (int i = 0; i < 100; ++i) {
    faults.Add({{"fault", "no_log"}});
  }
  EXPECT_THROW(faults.Add({{"fault", "no_log"}}), Rejected);
}

TEST(FaultsTest, TheWorldOfACommandThatTalksToBothDaemons) {
  Faults faults;
  faults.Add({{"fault", "absent"}});
  faults.Add({{"fault", "busy"}, {"daemon", "streaming"}});
  faults.Add({{"fault", "pieces"}});
  const std::string both = "SetCldstrmStreamInfoToStrmsrv";
  EXPECT_THAT(WorldOf(faults.TakeFor(both), both),
              ElementsAre("hide /run quonta_cp.sock", "hide /run streaming.sock",
                          "bind /run/simulator/busy.sock /run/streaming.sock"));
  EXPECT_THAT(WorldOf(faults.TakeFor("GetCamStatus"), "GetCamStatus"),
              ElementsAre("hide /run quonta_cp.sock"));
}

TEST(FaultsTest, DeliveriesOfAReply) {
  const Message request{5, 17, {}, {}};
  const Bytes reply = {0, 5, 2, 0, 17, 0, 0, 0, 0, 0, 0, 0, 0, 9};
  const auto deliver = [&](const char* name, int value) {
    Fault fault;
    fault.name = name;
    fault.value = value;
    return Deliver(fault, request, {0, 9});
  };
  EXPECT_EQ(deliver("slow", 300).delay_ms, 300);
  EXPECT_EQ(deliver("slow", 300).reply, reply);
  EXPECT_EQ(deliver("short", 13).length, 13U);
  EXPECT_EQ(deliver("closed", 0).length, 0U);
  EXPECT_EQ(deliver("result", 77).reply.back(), 9);
  EXPECT_EQ(deliver("result", 77).reply[12], 77);
  EXPECT_EQ(deliver("disable_error", 0).reply, (Bytes{0, 5, 1, 0, 17, 0, 0, 0, 0, 0, 0, 0, 2}));
}

}  // namespace
