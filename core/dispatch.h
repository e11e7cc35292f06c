// Carries one command out.
#pragma once

struct CommandRow;

/// Creates the command's object, lets it parse its parameters, act and reply; rejected requests
/// get one of the fixed error replies. Both roads to a command, the web server's and the command
/// line's, meet here.
///
/// @param row   the command's row of the command table; null for an unknown command
/// @param name  the command's name as requested
/// @param body  the whole request text
/// @return the exit status of the program
int Dispatch(const CommandRow* row, const char* name, const char* body);
