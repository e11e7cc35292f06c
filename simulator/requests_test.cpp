#include "simulator/requests.h"

#include <gtest/gtest.h>

namespace {

using simulator::Entry;
using simulator::MakeEntry;
using simulator::Outcome;
using simulator::RunningRequest;

TEST(MakeEntryTest, ARequestThatTookTooLongForTheWebServerIsAGatewayTimeout) {
  RunningRequest request;
  request.request.method = "POST";
  request.command = "GetClipInfo";
  Outcome outcome;
  outcome.lost = true;
  outcome.ms = 302000;
  const Entry entry = MakeEntry(request, outcome, "rv130-session");
  EXPECT_EQ(entry.status, 504);
  EXPECT_EQ(entry.result, "");
  EXPECT_EQ(entry.reason, "the web server did not wait any longer");
  EXPECT_EQ(entry.ms, 302000);
}

TEST(MakeEntryTest, AHandlerWithoutAReplyIsAnInternalError) {
  RunningRequest request;
  request.request.method = "POST";
  Outcome outcome;
  outcome.status = 1 << 8;
  const Entry entry = MakeEntry(request, outcome, "rv130-session");
  EXPECT_EQ(entry.status, 500);
  EXPECT_EQ(entry.reason, "the handler ended with status 1 and without a reply");
}

}  // namespace
