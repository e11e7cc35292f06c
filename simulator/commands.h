// The commands of the remote-control interface, by what the handler does for them.
#pragma once

#include <string>
#include <string_view>

namespace simulator {

// The daemons that commands talk to.
inline constexpr std::string_view kControlDaemon = "quonta_cp";
inline constexpr std::string_view kStreamingDaemon = "streaming";

/// Whether there is such a command.
bool IsCommand(const std::string& name);

/// Whether a command talks to a daemon.
bool TalksTo(const std::string& command, const std::string& daemon);

}  // namespace simulator
