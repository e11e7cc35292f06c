#pragma once

#include <string>

namespace harness {

// With the environment variable CAMERA_EXCHANGES, every handler that a test starts leaves the
// request's body and what the handler printed in the folder of that name, in one file per test.
// `tests/api/run` checks these replies against the description of the API. Without the variable
// nothing is kept.

/// Records the run of a handler that has ended: the line "exchange BODY-BYTES OUTPUT-BYTES json"
/// (or "any", see below), then both texts, each with a line feed after it.
void RecordExchange(const std::string& body, const std::string& output);

/// While an object of this class lives, replies need not be as the API describes them: for tests
/// whose replies are deliberately invalid JSON.
class RepliesMayBreak {
 public:
  RepliesMayBreak() { ++alive_; }
  ~RepliesMayBreak() { --alive_; }
  RepliesMayBreak(const RepliesMayBreak&) = delete;
  RepliesMayBreak& operator=(const RepliesMayBreak&) = delete;

  static bool Alive() { return alive_ > 0; }

 private:
  static int alive_;
};

}  // namespace harness
