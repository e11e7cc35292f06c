// Carries out one command.
#pragma once

struct CommandRow;

/// Creates the command's object, which parses its parameters, acts and replies. A rejected request
/// gets one of the fixed error replies. Requests from the web server and from the command line both
/// end up here.
/// @param row   the command's row of the command table; null for an unknown command
/// @param name  the command's name as requested
/// @param body  the whole request text
/// @return the exit status of the program
int Dispatch(const CommandRow* row, const char* name, const char* body);
