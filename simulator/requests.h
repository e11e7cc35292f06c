// The requests that are on their way through the handler, and what each of them causes.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "simulator/faults.h"
#include "simulator/journal.h"
#include "simulator/tap_server.h"

namespace simulator {

/// A request whose handler is running.
struct RunningRequest {
  Request request;
  std::string command;        ///< empty: none was recognized
  std::vector<Fault> faults;  ///< that it meets
  std::vector<MessageRecord> messages;
  std::vector<std::string> log;
};

/// The command that a body names; empty if there is none.
std::string CommandIn(const std::string& body);

/// The outcome of a request.
/// @param session  the id of the session there is; empty: no client is logged in
Entry MakeEntry(const RunningRequest& request, const Outcome& outcome, const std::string& session);

}  // namespace simulator
