#pragma once

#include <map>
#include <string>
#include <vector>

namespace harness {

// Records the seeds of the fuzzers. If the environment variable CAMERA_RECORDING is the name of a
// folder, every start of the handler leaves a file in it: the input of the handler in the format of
// fuzz/scenario.h.

/// The name of the current test, as a file can be called.
std::string NameOfTest();

/// A handler is about to be started: keeps its input, its variables, its arguments, and the
/// camera's files and status block as they now are. What follows belongs to it.
void RecordRequest(const std::string& body, const std::map<std::string, std::string>& environment,
                   const std::vector<std::string>& arguments);

/// Adds what a daemon has sent in a conversation that is over.
void RecordConversation(const std::string& sent);

}  // namespace harness
