#include "simulator/faults.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <system_error>
#include <utility>

#include "simulator/commands.h"
#include "simulator/list_text.h"
#include "simulator/result.h"

namespace simulator {
namespace {

namespace fs = std::filesystem;

constexpr char kFolder[] = "/run/simulator";
constexpr char kDeadSocket[] = "/run/simulator/dead.sock";
constexpr char kBusySocket[] = "/run/simulator/busy.sock";
constexpr char kShortMemory[] = "/run/simulator/short_memory";
constexpr char kMemory[] = "/run/camera_memory";

enum class Place { kSocket, kReply, kEnvironment };

/// How a reply is delivered under a fault.
/// @param payload  the reply that there would be without the fault
using DeliverFunction = Delivery (*)(const Fault& fault, const Message& request,
                                     const Bytes& payload);

Delivery DeliverNothing(const Fault&, const Message&, const Bytes&) {
  return {Delivery::Way::kSilent, {}, 0, 0};
}

Delivery DeliverLater(const Fault& fault, const Message& request, const Bytes& payload) {
  return {Delivery::Way::kLater, MakeReply(request, payload), fault.value, 0};
}

Delivery DeliverInPieces(const Fault&, const Message& request, const Bytes& payload) {
  return {Delivery::Way::kPieces, MakeReply(request, payload), 0, 0};
}

/// The first bytes, none of them for the fault "closed".
Delivery DeliverPart(const Fault& fault, const Message& request, const Bytes& payload) {
  return {Delivery::Way::kShort, MakeReply(request, payload), 0,
          static_cast<std::size_t>(fault.value)};
}

Delivery DeliverGarbage(const Fault&, const Message&, const Bytes&) {
  constexpr std::size_t kLength = 61;
  Bytes garbage(kLength);
  for (std::size_t i = 0; i < kLength; ++i) {
    garbage[i] = static_cast<std::uint8_t>(i * 167 + 89);
  }
  return {Delivery::Way::kShort, garbage, 0, kLength};
}

template <Result kResult>
Delivery DeliverRefusal(const Fault&, const Message& request, const Bytes&) {
  return {Delivery::Way::kAtOnce, MakeReply(request, {static_cast<std::uint8_t>(kResult)}), 0, 0};
}

Delivery DeliverResult(const Fault& fault, const Message& request, const Bytes& payload) {
  Bytes changed = payload;
  changed.resize(std::max<std::size_t>(changed.size(), 1));
  changed[0] = static_cast<std::uint8_t>(fault.value);
  return {Delivery::Way::kAtOnce, MakeReply(request, changed), 0, 0};
}

/// The parameter of a fault.
struct Parameter {
  std::string_view name;  ///< empty: nothing
  int lowest = 0;
  int highest = 0;
};

struct FaultRow {
  std::string_view name;
  Place place;
  Parameter parameter;
  std::string_view world;  ///< for the tap; "SOCKET" stands for the daemon's socket in /run
  DeliverFunction deliver = nullptr;
  bool is_carried_out = false;  ///< whether the daemon does what it is told
};

constexpr FaultRow kFaults[] = {
    {"absent", Place::kSocket, {}, "hide /run SOCKET"},
    {"refused", Place::kSocket, {}, "bind /run/simulator/dead.sock /run/SOCKET"},
    {"busy", Place::kSocket, {}, "bind /run/simulator/busy.sock /run/SOCKET"},
    {"silent", Place::kReply, {}, "", DeliverNothing},
    {"slow", Place::kReply, {"ms", 0, 60000}, "", DeliverLater, true},
    {"pieces", Place::kReply, {}, "", DeliverInPieces, true},
    {"short", Place::kReply, {"bytes", 0, 65535}, "", DeliverPart, true},
    {"closed", Place::kReply, {}, "", DeliverPart},
    {"garbage", Place::kReply, {}, "", DeliverGarbage},
    {"requested_error", Place::kReply, {}, "", DeliverRefusal<Result::kRequestedError>},
    {"disable_error", Place::kReply, {}, "", DeliverRefusal<Result::kDisableError>},
    {"result", Place::kReply, {"code", 0, 255}, "", DeliverResult, true},
    {"no_status_block", Place::kEnvironment, {}, "hide /run camera_memory"},
    {"short_status_block",
     Place::kEnvironment,
     {},
     "bind /run/simulator/short_memory /run/camera_memory"},
    {"settings_read_only", Place::kEnvironment, {}, "readonly /var/tmp/lighttpd"},
    {"disk_full", Place::kEnvironment, {}, "full /var/tmp/lighttpd"},
    {"no_session", Place::kEnvironment, {}, "hide /var/tmp/lighttpd .session"},
    {"no_log", Place::kEnvironment, {}, "hide /dev log"},
};

const FaultRow& RowNamed(const std::string& name) {
  const auto* const row = std::find_if(std::begin(kFaults), std::end(kFaults),
                                       [&name](const FaultRow& r) { return r.name == name; });
  if (row == std::end(kFaults)) {
    std::string known;
    for (const FaultRow& candidate : kFaults) {
      AddToList(known, candidate.name);
    }
    throw Rejected("fault: must be one of " + known);
  }
  return *row;
}

std::string TextOf(const Json& description, const char* name) {
  const auto member = description.find(name);
  if (member == description.end()) {
    return "";
  }
  if (!member->is_string()) {
    throw Rejected(std::string(name) + ": must be a text");
  }
  return member->get<std::string>();
}

int NumberOf(const Json& description, const Parameter& parameter) {
  const auto member = description.find(parameter.name);
  if (member == description.end() || !member->is_number_integer() || *member < parameter.lowest ||
      *member > parameter.highest) {
    throw Rejected(std::string(parameter.name) + ": must be a number from " +
                   std::to_string(parameter.lowest) + " to " + std::to_string(parameter.highest));
  }
  return member->get<int>();
}

void CheckMembers(const Json& description, const FaultRow& row) {
  for (const auto& [name, value] : description.items()) {
    const bool is_known = name == "fault" || name == "command" || name == "count" ||
                          (name == "daemon" && row.place != Place::kEnvironment) ||
                          (!row.parameter.name.empty() && name == row.parameter.name);
    if (!is_known) {
      throw Rejected(name + ": \"" + std::string(row.name) + "\" has no such member");
    }
  }
}

void CheckPartners(const Fault& fault, Place place) {
  if (!fault.command.empty() && !IsCommand(fault.command)) {
    throw Rejected("command: there is no \"" + fault.command + '"');
  }
  const auto is_daemon = [](const std::string& name) {
    return name == kControlDaemon || name == kStreamingDaemon;
  };
  if (!fault.daemon.empty() && !is_daemon(fault.daemon)) {
    throw Rejected("daemon: must be one of quonta_cp, streaming; no command talks to others");
  }
  if (place == Place::kEnvironment || fault.command.empty()) {
    return;
  }
  const bool meets = fault.daemon.empty()
                         ? TalksTo(fault.command, std::string(kControlDaemon)) ||
                               TalksTo(fault.command, std::string(kStreamingDaemon))
                         : TalksTo(fault.command, fault.daemon);
  if (!meets) {
    throw Rejected("command: \"" + fault.command + "\" does not talk to " +
                   (fault.daemon.empty() ? "any daemon" : fault.daemon));
  }
}

/// Whether a request of a command can meet a fault at all.
bool Concerns(const Fault& fault, const std::string& command) {
  if (!fault.command.empty() && fault.command != command) {
    return false;
  }
  if (RowNamed(fault.name).place == Place::kEnvironment) {
    return true;
  }
  const auto meets = [&](std::string_view daemon) {
    return (fault.daemon.empty() || fault.daemon == daemon) &&
           TalksTo(command, std::string(daemon));
  };
  return meets(kControlDaemon) || meets(kStreamingDaemon);
}

sockaddr_un AddressOf(const char* path) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, path, sizeof address.sun_path - 1);
  return address;
}

UniqueFd Bound(const char* path) {
  unlink(path);
  const sockaddr_un address = AddressOf(path);
  UniqueFd fd(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (bind(fd.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    throw std::system_error(errno, std::generic_category(), path);
  }
  return fd;
}

/// The shared memory area up to the middle of the status block.
void MakeShortMemory() {
  constexpr std::uintmax_t kMiddle = 0x1d400 + 512;
  std::error_code error;
  fs::copy_file(kMemory, kShortMemory, fs::copy_options::overwrite_existing, error);
  fs::resize_file(kShortMemory, kMiddle, error);
}

/// A fault's line for the tap, once for each daemon that it concerns.
void AddLines(const Fault& fault, const std::string& command, std::vector<std::string>& lines) {
  constexpr std::string_view kSocketName = "SOCKET";
  const std::string line(RowNamed(fault.name).world);
  const std::size_t at = line.find(kSocketName);
  if (at == std::string::npos) {
    lines.push_back(line);
    return;
  }
  for (const std::string_view daemon : {kControlDaemon, kStreamingDaemon}) {
    if ((fault.daemon.empty() || fault.daemon == daemon) && TalksTo(command, std::string(daemon))) {
      lines.push_back(
          std::string(line).replace(at, kSocketName.size(), std::string(daemon) + ".sock"));
    }
  }
}

}  // namespace

Json ToJson(const Fault& fault) {
  Json json = {{"id", fault.id}, {"fault", fault.name}};
  if (!fault.command.empty()) {
    json["command"] = fault.command;
  }
  if (!fault.daemon.empty()) {
    json["daemon"] = fault.daemon;
  }
  if (fault.count) {
    json["count"] = *fault.count;
  }
  const FaultRow& row = RowNamed(fault.name);
  if (!row.parameter.name.empty()) {
    json[std::string(row.parameter.name)] = fault.value;
  }
  return json;
}

Faults::Faults() {
  fs::create_directories(kFolder);
  Bound(kDeadSocket);  // closed at once: no process listens there
  busy_ = Bound(kBusySocket);
  listen(busy_.Get(), 0);
  const sockaddr_un address = AddressOf(kBusySocket);
  while (true) {
    UniqueFd client(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (connect(client.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
      return;
    }
    busy_clients_.push_back(std::move(client));
  }
}

const Fault& Faults::Add(const Json& description) {
  if (!description.is_object()) {
    throw Rejected("the fault must be an object");
  }
  constexpr int kMostRequests = 1000000;
  constexpr std::size_t kMostFaults = 100;
  const FaultRow& row = RowNamed(TextOf(description, "fault"));
  CheckMembers(description, row);
  Fault fault;
  fault.name = row.name;
  fault.command = TextOf(description, "command");
  fault.daemon = TextOf(description, "daemon");
  CheckPartners(fault, row.place);
  if (description.contains("count")) {
    fault.count = NumberOf(description, {"count", 1, kMostRequests});
  }
  if (!row.parameter.name.empty()) {
    fault.value = NumberOf(description, row.parameter);
  }
  if (faults_.size() >= kMostFaults) {
    throw Rejected("fault: there are too many; remove some first");
  }
  fault.id = ++last_id_;
  return faults_.emplace_back(std::move(fault));
}

bool Faults::Remove(int id) {
  const auto fault = std::find_if(faults_.begin(), faults_.end(),
                                  [id](const Fault& candidate) { return candidate.id == id; });
  if (fault == faults_.end()) {
    return false;
  }
  faults_.erase(fault);
  return true;
}

std::vector<Fault> Faults::TakeFor(const std::string& command) {
  std::vector<Fault> taken;
  for (Fault& fault : faults_) {
    if (Concerns(fault, command)) {
      taken.push_back(fault);
      if (fault.count) {
        --*fault.count;
      }
    }
  }
  const auto is_over = [](const Fault& fault) { return fault.count == 0; };
  faults_.erase(std::remove_if(faults_.begin(), faults_.end(), is_over), faults_.end());
  return taken;
}

std::vector<std::string> WorldOf(const std::vector<Fault>& faults, const std::string& command) {
  std::vector<std::string> lines;
  for (const Fault& fault : faults) {
    if (RowNamed(fault.name).world.empty()) {
      continue;
    }
    if (fault.name == "short_status_block") {
      MakeShortMemory();
    }
    AddLines(fault, command, lines);
  }
  return lines;
}

bool KeepsFromConnecting(const Fault& fault) {
  return RowNamed(fault.name).place == Place::kSocket;
}

bool KeepsFromWriting(const Fault& fault) {
  return fault.name == "settings_read_only" || fault.name == "disk_full";
}

bool HidesTheSession(const Fault& fault) { return fault.name == "no_session"; }

const Fault* ReplyFault(const std::vector<Fault>& faults, const std::string& daemon) {
  for (const Fault& fault : faults) {
    if (RowNamed(fault.name).place == Place::kReply &&
        (fault.daemon.empty() || fault.daemon == daemon)) {
      return &fault;
    }
  }
  return nullptr;
}

bool IsCarriedOut(const Fault& fault) { return RowNamed(fault.name).is_carried_out; }

Delivery Deliver(const Fault& fault, const Message& request, const Bytes& payload) {
  return RowNamed(fault.name).deliver(fault, request, payload);
}

}  // namespace simulator
