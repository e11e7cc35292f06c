// The session that a request belongs to. Another component of the camera issues the session id at
// login and stores it in the session file; this program checks it and renews its times.
#pragma once

#include <cstdint>

#include "core/text.h"

/// The session file: lines "ID", "lifetime" and "sessiontime", each key and value separated by a
/// tab. Written by the login component and by session renewals, read by every request.
extern const char SESSION_INFO_PATH[];

/// The "SessionID" of the current request.
extern char web_id[kTextSize];

/// Whether `web_id` is the stored session id. Logs at level 1 when it is not, or when there is no
/// stored id: no session file, or no id on its first line that begins with "ID".
bool SessionIsValid();

/// Rewrites the session file with `web_id` and fresh times. A session that has ended since it was
/// checked stays so; without a check, on the command line, the file is created when it is missing.
///
/// @param seconds_left  how much longer the session is valid, from now on; 0 ends it now
/// @return false when the session has ended, another one has begun, or the file could not be
///         written (which alone is logged, at level 1)
bool RenewSession(std::int64_t seconds_left);
