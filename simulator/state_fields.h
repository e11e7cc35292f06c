// The simulated camera's state as JSON: what `GET /simulator/state` shows, and what scenes and
// `PATCH /simulator/state` may say.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "simulator/json.h"
#include "simulator/state.h"

namespace simulator {

/// One member of the state that has no members itself.
struct Field {
  std::string path;    ///< names joined by dots, for example "slots.A.protect"
  std::string values;  ///< what it may be, for a reader
  std::function<Json(const State&)> get;
  /// @throws Rejected for a value that it cannot take
  std::function<void(State&, const Json&)> set;
  /// Whether it is the same in both states; empty: if both look the same.
  std::function<bool(const State&, const State&)> is_same = nullptr;
};

/// Every member of the state.
const std::vector<Field>& StateFields();

/// The whole state.
Json ToJson(const State& state);

/// Changes the members that a JSON merge patch names.
/// @throws Rejected for an invalid patch; the state is then undefined
void ApplyPatch(State& state, const Json& patch);

/// What differs between two states, one line for each member: "iris.stop F2.8 -> F4.0".
std::vector<std::string> Differences(const State& before, const State& after);

}  // namespace simulator
