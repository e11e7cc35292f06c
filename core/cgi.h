// Handles a request from the web server.
#pragma once

/// Serves the one request of this process: checks the method, reads the body, checks that it has a
/// command and a valid session, and dispatches the command.
/// @return the exit status of the program: 1 if the method is not POST (nothing is printed) or the
///         command is unknown, otherwise 0
int ServeRequest();
