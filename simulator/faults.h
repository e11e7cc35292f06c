// Faults: failures around the handler that users request.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "simulator/delivery.h"
#include "simulator/json.h"
#include "simulator/unique_fd.h"

namespace simulator {

struct Fault {
  int id = 0;
  std::string name;
  std::string command;       ///< only requests of this command; empty: of every one
  std::string daemon;        ///< only this daemon; empty: every one
  std::optional<int> count;  ///< how many more requests meet it; none: until it is removed
  int value = 0;             ///< of "slow" milliseconds, of "short" bytes, of "result" the code
};

Json ToJson(const Fault& fault);

/// The faults that are in force.
class Faults {
 public:
  /// @throws std::system_error when the sockets that refuse and that are busy cannot be made
  Faults();

  /// @param description  "fault", and as it needs "command", "daemon", "count", "ms", "bytes",
  ///                     "code"
  /// @throws Rejected for an invalid description
  const Fault& Add(const Json& description);
  [[nodiscard]] const std::vector<Fault>& all() const { return faults_; }
  void Clear() { faults_.clear(); }
  /// @return false if there is no fault with this id
  bool Remove(int id);

  /// The faults that a request meets; each of them counts this request.
  std::vector<Fault> TakeFor(const std::string& command);

 private:
  std::vector<Fault> faults_;
  int last_id_ = 0;
  UniqueFd busy_;  ///< listens, with a full backlog
  std::vector<UniqueFd> busy_clients_;
};

/// How the tap must change the world of one handler for faults of its sockets and of its
/// environment: lines for the tap.
std::vector<std::string> WorldOf(const std::vector<Fault>& faults, const std::string& command);

/// Whether a handler that meets this fault cannot connect.
bool KeepsFromConnecting(const Fault& fault);

/// Whether a handler that meets this fault cannot write settings.
bool KeepsFromWriting(const Fault& fault);

/// Whether a handler that meets this fault finds no session file.
bool HidesTheSession(const Fault& fault);

/// The first fault that concerns the replies of a daemon; null if there is none.
const Fault* ReplyFault(const std::vector<Fault>& faults, const std::string& daemon);

/// Whether a daemon with this fault carries out the message.
bool IsCarriedOut(const Fault& fault);

/// How a daemon's reply reaches the handler under a fault of its replies.
/// @param request  the message that is answered
/// @param payload  the reply without the fault
Delivery Deliver(const Fault& fault, const Message& request, const Bytes& payload);

}  // namespace simulator
