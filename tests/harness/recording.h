#pragma once

#include <map>
#include <string>
#include <vector>

namespace harness {

// Records the seeds of the fuzzers. If the environment variable CAMERA_RECORDING is the name of a
// folder, every start of the handler leaves a file in it: the input of the handler in the format of
// fuzz/scenario.h.

/// The name of the current test, in a form that is valid as a file name.
std::string NameOfTest();

/// Starts a file for a handler that is about to start: its input, variables and arguments, and the
/// present files and status block of the camera.
void RecordRequest(const std::string& body, const std::map<std::string, std::string>& environment,
                   const std::vector<std::string>& arguments);

/// Adds what a daemon has sent in a finished conversation.
void RecordConversation(const std::string& sent);

}  // namespace harness
