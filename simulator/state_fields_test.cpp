#include "simulator/state_fields.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>

namespace {

using namespace simulator;
using testing::StartsWith;

/// Why a field does not take a value; nothing: it does.
std::optional<std::string> Rejection(const Field& field, State& state, const Json& value) {
  try {
    field.set(state, value);
  } catch (const Rejected& error) {
    return error.what();
  }
  return std::nullopt;
}

TEST(StateFieldsTest, EveryFieldTakesWhatItShows) {
  const State before = DefaultState();
  for (const Field& field : StateFields()) {
    State state = before;
    EXPECT_EQ(Rejection(field, state, field.get(before)), std::nullopt) << field.path;
    EXPECT_EQ(field.get(state), field.get(before)) << field.path;
  }
}

TEST(StateFieldsTest, NoFieldTakesAValueOfAnotherType) {
  for (const Field& field : StateFields()) {
    State state = DefaultState();
    const auto rejection = Rejection(field, state, Json::object());
    ASSERT_TRUE(rejection) << field.path;
    EXPECT_THAT(*rejection, StartsWith(field.path + ": must ")) << field.path;
  }
}

// Numbers at the ends of their types do not wrap round into a range.
TEST(StateFieldsTest, ANumberThatIsTakenIsShownUnchanged) {
  const Json numbers[] = {0,         1,         -1,         5,           255,         256,
                          65535,     65536,     2147483647, 2147483648U, -2147483649, 4294967296,
                          INT64_MAX, INT64_MIN, UINT64_MAX, 1e300,       -1e300};
  for (const Field& field : StateFields()) {
    if (!field.get(DefaultState()).is_number()) {
      continue;
    }
    for (const Json& number : numbers) {
      State state = DefaultState();
      if (!Rejection(field, state, number)) {
        EXPECT_EQ(field.get(state), number) << field.path;
      }
    }
  }
}

TEST(StateFieldsTest, ATextMayFillItsFieldAndNoMore) {
  State state = DefaultState();
  EXPECT_NO_THROW(ApplyPatch(state, {{"serial", "123456789"}}));
  EXPECT_EQ(state.serial, "123456789");
  EXPECT_THROW(ApplyPatch(state, {{"serial", "1234567890"}}), Rejected);
  EXPECT_THROW(ApplyPatch(state, {{"serial", "12\x7f"}}), Rejected);
}

TEST(StateFieldsTest, APatchNamesMembersThatDoNotExist) {
  const auto rejection_of = [](const Json& patch) -> std::string {
    State state = DefaultState();
    try {
      ApplyPatch(state, patch);
    } catch (const Rejected& error) {
      return error.what();
    }
    return "";
  };
  EXPECT_EQ(rejection_of({{"iriss", 1}}), "iriss: no such member");
  EXPECT_EQ(rejection_of({{"iris", {{"aperture", 1}}}}), "iris.aperture: no such member");
  EXPECT_EQ(rejection_of({{"iris.stop", "F4.0"}}), "iris.stop: no such member");
  EXPECT_EQ(rejection_of({{"iri", Json::object()}}), "iri: no such member");
  EXPECT_EQ(rejection_of({{"", 1}}), ": no such member");
  EXPECT_EQ(rejection_of({{"slots", nullptr}}), "slots: must be an object");
  EXPECT_EQ(rejection_of(Json::array()), "the state must be an object");
  EXPECT_EQ(rejection_of(Json::object()), "");
}

TEST(StateFieldsTest, DifferencesNameMembersAndValues) {
  const State before = DefaultState();
  State after = before;
  after.iris.stop = 12;
  after.slots[1].clips.pop_back();
  after.clock.paused = true;
  EXPECT_THAT(Differences(before, after),
              testing::ElementsAre("clock.paused false -> true", "slots.B.clips [33] -> [32]",
                                   "iris.stop F2.8 -> F5.6"));
  EXPECT_THAT(Differences(before, before), testing::IsEmpty());
}

}  // namespace
