// `Parse` refuses unknown names, so no request makes `Output` look them up. These tests do; the
// black-box tests cover the rest.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "core/cmd/streaming.h"
#include "harness/handler.h"
#include "harness/system_log.h"

namespace {

using harness::DataJson;
using harness::Info;
using testing::Contains;

std::string OutputOf(Command& command, const char* name) {
  command.Prepare({}, name, false);
  testing::internal::CaptureStdout();
  command.Output();
  return testing::internal::GetCapturedStdout();
}

TEST(AvailableStreamingFramerateSettings, AreZeroForAnUnknownResolution) {
  harness::SystemLog log;
  AvailableStreamingFramerateSettings command;
  EXPECT_EQ(command.Parse(R"({"Resolution":"7680x4320"})"), -1);
  EXPECT_EQ(OutputOf(command, "X"),
            harness::Reply(DataJson("X", R"("Resolution":"","AvailableFramerate":{"60p":0,"60i":0,)"
                                         R"("30p":0,"50p":0,"50i":0,"25p":0})")));
  EXPECT_THAT(log.Lines(), Contains(Info("##### GetSelectableFramerateTable param error")));
}

TEST(AvailableStreamingBitrateSettings, AreZeroForAnUnknownType) {
  harness::SystemLog log;
  AvailableStreamingBitrateSettings command;
  EXPECT_EQ(command.Parse(R"({"Type":"Fax","Resolution":"1280x720","Framerate":"60p"})"), -1);
  EXPECT_EQ(OutputOf(command, "X"),
            harness::Reply(DataJson("X", R"("Type":"","Resolution":"1280x720","AvailableBitrate":{)"
                                         R"("0.2M":0,"0.3M":0,"0.8M":0,"1.5M":0,"2.5M":0,)"
                                         R"("3.0M":0,"5.0M":0,"8.0M":0,"10M":0,"12M":0})")));
  EXPECT_THAT(log.Lines(), Contains(Info("##### GetSelectableBitrateTable param error")));
}

}  // namespace
