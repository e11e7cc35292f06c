#include "simulator/upload.h"

#include <algorithm>
#include <utility>

#include "simulator/models.h"
#include "simulator/network.h"
#include "simulator/recording.h"

namespace simulator {
namespace {

constexpr Milliseconds kTimePerFile = 3000;
constexpr Milliseconds kTimePerStep = 700;
/// How long an upload waits for the network to come back.
constexpr Milliseconds kRecoveryPatience = 30000;

const FtpServer& ServerOf(const Upload& upload) {
  return upload.servers[static_cast<std::size_t>(upload.server)];
}

void Enter(Upload& upload, UploadPhase phase) {
  upload.phase = phase;
  upload.in_phase = 0;
}

void Fail(Upload& upload, UploadError error) {
  upload.error = error;
  Enter(upload, UploadPhase::kUnmount);
}

/// Connected, and trusted: may files of these names be there already?
void AskOrSend(Upload& upload) {
  Enter(upload, ServerOf(upload).asks_to_overwrite ? UploadPhase::kPrompt : UploadPhase::kPutFile);
}

/// The end of the phase in which the camera connects.
void Connect(Upload& upload) {
  const FtpServer& server = ServerOf(upload);
  if (server.answer == ServerAnswer::kUnreachable) {
    Fail(upload, kServerUnreachable);
  } else if (server.answer == ServerAnswer::kLoginRefused) {
    Fail(upload, kLoginRefused);
  } else if (!server.trusted) {
    Enter(upload, UploadPhase::kTrust);
  } else {
    AskOrSend(upload);
  }
}

void EndFile(Upload& upload) {
  ++upload.file;
  upload.in_phase = 0;
  if (ServerOf(upload).answer == ServerAnswer::kNoSpace) {
    Fail(upload, kNoSpaceOnServer);
  } else if (upload.file >= static_cast<int>(upload.files.size())) {
    Enter(upload, UploadPhase::kUnmount);
  }
}

/// How long a phase takes; 0 for one that does not end by itself.
Milliseconds Duration(UploadPhase phase) {
  switch (phase) {
    case UploadPhase::kOff:
    case UploadPhase::kUnnamed:
    case UploadPhase::kTrust:
    case UploadPhase::kPrompt:
      return 0;
    case UploadPhase::kPutFile:
      return kTimePerFile;
    case UploadPhase::kRecover:
      return kRecoveryPatience;
    case UploadPhase::kStart:
    case UploadPhase::kOccupySlot:
    case UploadPhase::kClear:
    case UploadPhase::kMount:
    case UploadPhase::kParse:
    case UploadPhase::kTrans:
    case UploadPhase::kUnmount:
    case UploadPhase::kReleaseSlot:
    case UploadPhase::kResume:
      break;
  }
  return kTimePerStep;
}

void EndPhase(Upload& upload) {
  switch (upload.phase) {
    case UploadPhase::kStart:
      return Enter(upload, UploadPhase::kOccupySlot);
    case UploadPhase::kOccupySlot:
      return Enter(upload, UploadPhase::kClear);
    case UploadPhase::kClear:
      return Enter(upload, UploadPhase::kMount);
    case UploadPhase::kMount:
      return Enter(upload, UploadPhase::kParse);
    case UploadPhase::kParse:
      return Enter(upload, UploadPhase::kTrans);
    case UploadPhase::kTrans:
      return Connect(upload);
    case UploadPhase::kPutFile:
      return EndFile(upload);
    case UploadPhase::kUnmount:
      return Enter(upload, UploadPhase::kReleaseSlot);
    case UploadPhase::kReleaseSlot:
      upload.files.clear();
      upload.file = 0;
      return Enter(upload, UploadPhase::kOff);
    case UploadPhase::kRecover:
      return Fail(upload, kConnectionLost);
    case UploadPhase::kResume:
      return Enter(upload, UploadPhase::kPutFile);
    case UploadPhase::kOff:
    case UploadPhase::kUnnamed:
    case UploadPhase::kTrust:
    case UploadPhase::kPrompt:
      break;
  }
}

void FollowNetwork(State& state) {
  Upload& upload = state.upload;
  if (upload.phase == UploadPhase::kPutFile && !IsOnline(state)) {
    Enter(upload, UploadPhase::kRecover);
  } else if (upload.phase == UploadPhase::kRecover && IsOnline(state)) {
    Enter(upload, UploadPhase::kResume);
  }
}

Milliseconds Sent(const Upload& upload) {
  return upload.file * kTimePerFile + (upload.phase == UploadPhase::kPutFile ? upload.in_phase : 0);
}

Milliseconds Whole(const Upload& upload) {
  return static_cast<Milliseconds>(upload.files.size()) * kTimePerFile;
}

bool IsSending(const Upload& upload) {
  return !upload.files.empty() &&
         (upload.phase == UploadPhase::kPutFile || upload.phase == UploadPhase::kRecover ||
          upload.phase == UploadPhase::kResume);
}

}  // namespace

const char* UploadObstacle(const State& state) {
  if (!HasUpload(state)) {
    return "this model has no upload";
  }
  if (state.upload.phase != UploadPhase::kOff) {
    return "an upload is running";
  }
  if (HasOpenClip(state)) {
    return "the camera is recording";
  }
  return IsOnline(state) ? nullptr : "the camera is not connected to a network";
}

void StartUpload(State& state, int server, std::vector<std::string> files) {
  if (files.empty()) {
    return;
  }
  Upload& upload = state.upload;
  upload.server = server;
  upload.files = std::move(files);
  upload.file = 0;
  upload.error = kNoUploadError;
  Enter(upload, UploadPhase::kStart);
}

bool UploadAsks(const Upload& upload) {
  return upload.phase == UploadPhase::kTrust || upload.phase == UploadPhase::kPrompt;
}

void AnswerUploadQuestion(State& state, bool yes) {
  Upload& upload = state.upload;
  if (upload.phase == UploadPhase::kTrust) {
    upload.servers[static_cast<std::size_t>(upload.server)].trusted = yes;
    if (yes) {
      AskOrSend(upload);
    } else {
      Fail(upload, kNotTrusted);
    }
  } else if (upload.phase == UploadPhase::kPrompt) {
    Enter(upload, yes ? UploadPhase::kPutFile : UploadPhase::kUnmount);
  }
}

int CurrentFile(const Upload& upload) {
  return IsSending(upload) ? std::min(upload.file + 1, static_cast<int>(upload.files.size())) : 0;
}

int UploadPercent(const Upload& upload) {
  return IsSending(upload)
             ? static_cast<int>(std::min<Milliseconds>(100, Sent(upload) * 100 / Whole(upload)))
             : 0;
}

std::chrono::seconds UploadRemainingTime(const Upload& upload) {
  const Milliseconds left =
      IsSending(upload) ? std::max<Milliseconds>(0, Whole(upload) - Sent(upload)) : 0;
  return std::chrono::ceil<std::chrono::seconds>(std::chrono::milliseconds(left));
}

std::string UploadMessage(const Upload& upload) {
  const int file = CurrentFile(upload);
  return file > 0 ? upload.files[static_cast<std::size_t>(file - 1)] : "";
}

void AdvanceUpload(State& state, Milliseconds elapsed) {
  Upload& upload = state.upload;
  FollowNetwork(state);
  upload.in_phase += elapsed;
  const Milliseconds duration = Duration(upload.phase);
  if (duration > 0 && upload.in_phase >= duration) {
    EndPhase(upload);
  }
}

}  // namespace simulator
