#pragma once

namespace harness {

/// Gives this process, and every process it starts, its own empty /run (so /var/run), /var/tmp,
/// /srv and /dev, by a mount namespace. The handler under test has its paths compiled in; in here
/// they lead to nothing of the machine, and test programs can run in parallel. Called once, at the
/// start of main; throws std::system_error if the system refuses.
void EnterPrivateWorld();

/// Empties the private world; done before each test. Throws std::logic_error outside a private
/// world: it deletes files.
void ResetPrivateWorld();

}  // namespace harness
