// The camera around the measured programs: daemons that answer immediately, a system log, a session
// and a status block.
#pragma once

namespace bench {

inline constexpr char kSessionId[] = "5f0c2a9e71d4";

/// Enters a private world and puts the camera's files and daemons into it. The daemons are
/// processes of their own and end with this one.
void EnterCamera();

}  // namespace bench
