#pragma once

#include <map>
#include <string>
#include <vector>

namespace harness {

// What the tests do is where fuzzing starts from. With the environment variable CAMERA_RECORDING,
// every handler that a test starts leaves a file in the folder of that name: what the handler was
// given, in the form that fuzz/scenario.h describes. Without the variable nothing is kept.

/// The name of the current test, as a file can be called.
std::string NameOfTest();

/// A handler is about to be started: keeps its input, its variables, its arguments, and the
/// camera's files and status block as they now are. What follows belongs to it.
void RecordRequest(const std::string& body, const std::map<std::string, std::string>& environment,
                   const std::vector<std::string>& arguments);

/// A daemon has finished a conversation, in which it sent this.
void RecordConversation(const std::string& sent);

}  // namespace harness
