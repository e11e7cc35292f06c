// JSON for the control interface.
#pragma once

#include <nlohmann/json.hpp>
#include <stdexcept>

namespace simulator {

/// Members keep the order in which they are written.
using Json = nlohmann::ordered_json;

/// Input that makes no sense; the text says which part of it and why.
class Rejected : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace simulator
