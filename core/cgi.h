// The road of a request that the web server hands over.
#pragma once

/// Serves the one request of this process: checks the method, reads the body, checks its form and
/// its session, and dispatches its command.
/// @return the exit status of the program: 1 without a POST (nothing is printed) and for an
///         unknown command, otherwise 0
int ServeRequest();
