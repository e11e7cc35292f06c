// Handles a request from the web server.
#pragma once

/// Serves the one request of this process: checks the method, reads the body, checks its form and
/// its session, and dispatches its command.
/// @return the exit status of the program: 1 if the method is not POST (nothing is printed) or the
///         command is unknown, otherwise 0
int ServeRequest();
