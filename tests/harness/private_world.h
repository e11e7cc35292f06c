#pragma once

namespace harness {

/// Gives this process, and every process that it starts, an empty /run (and so /var/run), /var/tmp,
/// /srv and /dev of its own, in a mount namespace. The paths of the handler are compiled in; in the
/// namespace they do not lead to the machine's files, and test programs can run in parallel. Call
/// it once, at the start of main. Throws std::system_error if the system refuses.
void EnterPrivateWorld();

/// Empties the private world, before each test. Throws std::logic_error outside a private world,
/// because it deletes files.
void ResetPrivateWorld();

}  // namespace harness
