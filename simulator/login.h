// The camera's login component: issues session ids, and ends sessions that have expired.
#pragma once

#include <optional>
#include <string>

#include "simulator/state.h"

namespace simulator {

/// There is one session at a time. It is in the session file, which the handler reads and renews.
/// Sessions expire in the camera's time. Of the times that the handler writes, only their
/// difference counts: how long the session lasts from then on.
class Login {
 public:
  /// What a renewal of the handler's grants, and a login, too.
  static constexpr int kLifetimeSeconds = 30;

  /// @param initial           the id of the session that is there from the start
  /// @param lifetime_seconds  how long sessions last without renewal; none: the initial one for
  ///                          ever, one from a login as long as a renewal grants
  Login(std::string initial, std::optional<int> lifetime_seconds);

  /// Issues a new random id and makes it the only session.
  std::string LogIn(Milliseconds now);
  /// Ends the session, if there is one.
  void LogOut();
  /// Brings the initial session back.
  void Reset(Milliseconds now);

  /// Looks for a renewal in the session file, and ends the session if it has expired.
  void Update(Milliseconds now);

  /// The session's id; empty: no client is logged in.
  [[nodiscard]] const std::string& id() const { return id_; }

 private:
  void Begin(const std::string& id, std::optional<int> lifetime_seconds, Milliseconds now);

  std::string initial_;
  std::optional<int> lifetime_;
  std::string id_;
  bool is_initial_ = false;
  std::optional<Milliseconds> end_;
  std::string written_;  ///< what the file held when it was last looked at, with its change time
};

}  // namespace simulator
