// The camera that the measured programs meet: daemons that answer at once, a system log, a session,
// a status block.
#pragma once

namespace bench {

inline constexpr char kSessionId[] = "5f0c2a9e71d4";

/// Enters a private world and puts the camera's files and daemons into it. The daemons are
/// processes of their own and end with this one.
void EnterCamera();

}  // namespace bench
