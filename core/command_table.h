// The command table: every command of the interface, as data.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>

#include "core/cmd/command.h"

/// How the handling of a command differs from the usual.
enum CommandTrait : std::uint8_t {
  kNeedsNoSession = 1,  ///< carried out without a session id
  kSilentRequest = 2,   ///< the request is not traced
  kSilentReply = 4,     ///< the reply is not traced
};

/// One command.
struct CommandRow {
  const char* name;  ///< as clients write it; the reply echoes it
  std::unique_ptr<Command> (*create)();
  CommandPreset preset;
  std::uint8_t traits;  ///< `CommandTrait`s

  [[nodiscard]] bool Has(CommandTrait trait) const { return (traits & trait) != 0; }
};

/// All commands, in matching order.
std::initializer_list<CommandRow> AllCommands();

/// The row of a command, compared exactly; null for an unknown name.
const CommandRow* FindCommand(const char* name);
