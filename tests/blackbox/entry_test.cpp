#include "harness/camera_test.h"

namespace {

using namespace harness;

class EntryTest : public CameraTest {};

TEST_F(EntryTest, AnswersAPost) {
  const Outcome outcome = Post(Body("GetSystemInfo"));
  EXPECT_THAT(outcome, Replied(DataJson("GetSystemInfo",
                                        "\"Model\":\"RV130/140\",\"Destination\":\"JP\","
                                        "\"ApiVersion\":\"1.08.0\",\"Serial\":\"\"")));
  EXPECT_THAT(log_.Lines(), Logged());
}

}  // namespace
