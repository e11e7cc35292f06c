// The upload of clips to an FTP server: one after the other.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "simulator/state.h"

namespace simulator {

/// Why the last upload ended early, as the camera status block reports it.
enum UploadError : int {
  kNoUploadError = 0,
  kNotTrusted = 1,
  kServerUnreachable = 2,
  kLoginRefused = 3,
  kNoSpaceOnServer = 4,
  kConnectionLost = 5,
};

/// Why the camera cannot upload, in words; null if it can.
const char* UploadObstacle(const State& state);

/// Begins to upload files; does nothing without files. Call it only without an `UploadObstacle`.
/// @param server  0 to 3
void StartUpload(State& state, int server, std::vector<std::string> files);

/// Whether the upload waits for the answer to a question.
bool UploadAsks(const Upload& upload);

/// Answers the question that the upload asks. Whether to trust the server's key: no ends the
/// upload. Whether to overwrite files: no leaves those on the server as they are, and ends it, too.
/// Does nothing when there is no question.
void AnswerUploadQuestion(State& state, bool yes);

/// The number of the file being sent, from 1; 0 when none is.
int CurrentFile(const Upload& upload);
/// Of all files.
int UploadPercent(const Upload& upload);
std::chrono::seconds UploadRemainingTime(const Upload& upload);
/// For the user: the file being sent, or nothing.
std::string UploadMessage(const Upload& upload);

/// Lets time pass: the upload goes through its phases.
void AdvanceUpload(State& state, Milliseconds elapsed);

}  // namespace simulator
