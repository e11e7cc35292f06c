// The journal: every request with its reply, and what it caused.
#pragma once

#include <cstddef>
#include <deque>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "simulator/json.h"
#include "simulator/message.h"

namespace simulator {

/// A message that a request has sent to a daemon.
struct MessageRecord {
  std::string daemon;
  Bytes bytes;                 ///< with its header
  std::string decoded;         ///< "iris close 3"
  std::optional<Bytes> reply;  ///< its payload; none: it got none
  std::string fault;           ///< the fault it met, if any
  std::string why;             ///< why the daemon refused it, if it did
  std::vector<std::string> changes;
};

/// A request that has ended.
struct Entry {
  unsigned long number = 0;
  std::string time;  ///< the camera's
  std::string client;
  std::string method;
  std::string command;  ///< empty if the request names none
  std::string result;   ///< result or error word; empty if there was no reply
  int status = 0;       ///< HTTP status
  double ms = 0;
  std::string request;  ///< as received
  std::string reply;    ///< the JSON text alone
  std::string reason;   ///< why it was refused; empty: it was not
  std::vector<std::string> faults;
  std::vector<MessageRecord> messages;
  std::vector<std::string> log;  ///< the handler's log lines
};

Json ToJson(const Entry& entry);

/// Hides the secrets of an entry everywhere in it: passwords and stream keys.
void MaskSecrets(Entry& entry);

/// The last entries, in the order in which the requests ended.
class Journal {
 public:
  static constexpr std::size_t kMaxEntries = 1000;
  static constexpr std::size_t kMaxBytes = 16 << 20;

  /// @param file          a file to which every entry is also appended as a line of JSON; may be
  /// empty
  /// @param show_secrets  whether passwords and stream keys are shown
  /// @throws std::runtime_error if the file cannot be written
  Journal(const std::string& file, bool show_secrets);

  /// Gives the entry its number and stores it; drops the oldest entries if there are too many.
  const Entry& Add(Entry entry);

  /// The entries with numbers above `after`:
  /// {"dropped": how many that were asked for are no longer there, "last": number, "entries":
  /// [...]}
  [[nodiscard]] Json After(unsigned long after) const;

  /// Forgets all entries; numbers go on.
  void Clear();

 private:
  struct Kept {
    Entry entry;
    std::size_t size;
  };

  std::ofstream file_;
  bool show_secrets_;
  std::deque<Kept> entries_;
  std::size_t size_ = 0;
  unsigned long last_ = 0;
  unsigned long cleared_to_ = 0;  ///< entries up to this one were forgotten on purpose
};

}  // namespace simulator
