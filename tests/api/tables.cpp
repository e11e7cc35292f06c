// Prints the tables of the handler that the description of the API repeats, as JSON.
#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>

#include "core/command_table.h"
#include "remote/event_table.h"
#include "status/enable_table.h"
#include "streaming/capability_tables.h"

namespace {

using Json = nlohmann::ordered_json;

Json Commands() {
  Json commands = Json::array();
  for (const CommandRow& row : AllCommands()) {
    commands.push_back({{"name", row.name}, {"needs_session", !row.Has(kNeedsNoSession)}});
  }
  return commands;
}

Json Events() {
  Json events = Json::array();
  for (const RemoteEvent& event : eventTable) {
    if (event.kind_code == 0) {
      break;
    }
    events.push_back({{"kind", event.kind},
                      {"kind_code", event.kind_code},
                      {"key", event.key},
                      {"key_code", event.key_code}});
  }
  return events;
}

Json EnableFlags() {
  Json groups = Json::object();
  for (const camera_status::EnableGroup& group : camera_status::kEnableTable) {
    for (const camera_status::EnableFlag& flag : group.flags) {
      groups[group.name].push_back(flag.key);
    }
  }
  return groups;
}

template <std::size_t Rows>
Json Names(const char (&table)[Rows][kCapabilityNameSize]) {
  Json names = Json::array();
  for (const char* const name : table) {
    if (*name != '\0') {
      names.push_back(name);
    }
  }
  return names;
}

}  // namespace

int main() {
  const Json tables = {{"commands", Commands()},
                       {"events", Events()},
                       {"enable_flags", EnableFlags()},
                       {"server_types", Names(streaming_type_table)},
                       {"streaming_types", Names(streaming_type_zixi_separate_table)},
                       {"resolutions", Names(resolution_table)},
                       {"framerates", Names(framerate_table)},
                       {"bitrates", Names(bitrate_table)}};
  std::puts(tables.dump(1).c_str());
  return 0;
}
