// The session file, which the login component writes.
#pragma once

#include <string>

namespace simulator {

/// Writes the session file as after a login with the session id `id`, which holds no white space;
/// makes its folder if need be. The simulated camera never ends a session.
/// @throws std::exception when it cannot be written
void WriteSessionFile(const std::string& id);

}  // namespace simulator
