// What the simulated camera tells its user.
#pragma once

#include <map>
#include <string>

#include "simulator/journal.h"

namespace simulator {

/// A line for each request on standard output, flushed at once. Polls that change nothing are
/// counted instead. Color on a terminal, unless the environment has NO_COLOR.
class Console {
 public:
  /// @param quiet  nothing is shown
  /// @param log    the handler's log lines are shown, too
  /// @param name   the camera's, shown with each request; empty: there is one camera only
  Console(bool quiet, bool log, const std::string& name);
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;
  /// Shows the polls counted last.
  ~Console();

  /// A request that has ended: time, command, result, how long it took; below it what has changed,
  /// why it was refused, and what was logged.
  void Request(const Entry& entry);

 private:
  void CountPoll(const Entry& entry);
  [[nodiscard]] std::string Polls() const;
  void ShowPolls();

  bool quiet_;
  bool log_;
  std::string name_;      ///< with the blanks that follow it
  bool counts_in_place_;  ///< several cameras would overwrite each other's lines
  bool has_color_;
  std::map<std::string, int> polls_;  ///< since the last line, by command
};

}  // namespace simulator
