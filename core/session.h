// The session that a request belongs to. The camera's login component issues the session id and
// stores it in the session file; this program checks it and renews its times.
#pragma once

#include <cstdint>

#include "core/text.h"

/// The session file: lines "ID", "lifetime" and "sessiontime", with a tab between key and value.
/// The login component and session renewals write it; every request reads it.
extern const char SESSION_INFO_PATH[];

/// The "SessionID" of the current request.
extern char web_id[kTextSize];

/// Whether `web_id` is the stored session id. If not, or if the session file or the id on its first
/// line that begins with "ID" is missing, logs the reason at level 1.
bool SessionIsValid();

/// Rewrites the session file with `web_id` and new times. A session that has ended since it was
/// checked is not revived. On the command line, where nothing was checked, a missing file is
/// created.
/// @param seconds_left  how much longer the session is valid, from now; 0 ends it now
/// @return false if the session has ended, another one has begun, or the file could not be written
///         (only the last is logged, at level 1)
bool RenewSession(std::int64_t seconds_left);
