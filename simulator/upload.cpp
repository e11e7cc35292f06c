#include "simulator/upload.h"

#include <algorithm>
#include <utility>

namespace simulator {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kTimePerFile{3000};
constexpr milliseconds kTimePerStep{700};

}  // namespace

bool Upload::Start(std::size_t server, std::vector<std::string> files) {
  if (phase_ != Phase::kOff) {
    return false;
  }
  if (!files.empty()) {
    server_ = server;
    files_ = std::move(files);
    in_phase_ = milliseconds(0);
    phase_ = Phase::kStart;
  }
  return true;
}

bool Upload::AnswerPrompt(bool yes) {
  if (phase_ != Phase::kTrust) {
    return false;
  }
  trusted_[server_] = yes;
  in_phase_ = milliseconds(0);
  phase_ = yes ? Phase::kPutFile : Phase::kUnmount;
  return true;
}

void Upload::Advance(milliseconds elapsed) {
  in_phase_ += elapsed;
  while (Duration() > milliseconds(0) && in_phase_ >= Duration()) {
    in_phase_ -= Duration();
    NextPhase();
  }
}

milliseconds Upload::Duration() const {
  switch (phase_) {
    case Phase::kOff:
    case Phase::kTrust:
      return milliseconds(0);
    case Phase::kPutFile:
      return kTimePerFile * files_.size();
    case Phase::kStart:
    case Phase::kOccupySlot:
    case Phase::kMount:
    case Phase::kParse:
    case Phase::kUnmount:
    case Phase::kReleaseSlot:
      return kTimePerStep;
  }
  return milliseconds(0);
}

void Upload::NextPhase() {
  switch (phase_) {
    case Phase::kStart:
      phase_ = Phase::kOccupySlot;
      break;
    case Phase::kOccupySlot:
      phase_ = Phase::kMount;
      break;
    case Phase::kMount:
      phase_ = Phase::kParse;
      break;
    case Phase::kParse:
      phase_ = trusted_[server_] ? Phase::kPutFile : Phase::kTrust;
      break;
    case Phase::kPutFile:
      phase_ = Phase::kUnmount;
      break;
    case Phase::kUnmount:
      phase_ = Phase::kReleaseSlot;
      break;
    case Phase::kReleaseSlot:
      files_.clear();
      phase_ = Phase::kOff;
      break;
    case Phase::kOff:
    case Phase::kTrust:
      break;
  }
}

std::size_t Upload::CurrentFile() const {
  if (phase_ != Phase::kPutFile) {
    return 0;
  }
  return std::min(files_.size(), static_cast<std::size_t>(in_phase_ / kTimePerFile) + 1);
}

int Upload::Percent() const {
  return phase_ == Phase::kPutFile ? static_cast<int>(in_phase_ * 100 / Duration()) : 0;
}

std::chrono::seconds Upload::RemainingTime() const {
  if (phase_ != Phase::kPutFile) {
    return std::chrono::seconds(0);
  }
  return std::chrono::ceil<std::chrono::seconds>(Duration() - in_phase_);
}

std::string Upload::Message() const {
  return phase_ == Phase::kPutFile ? files_[CurrentFile() - 1] : "";
}

std::array<std::uint8_t, 20> Upload::ServerKey() const {
  std::array<std::uint8_t, 20> key{};
  for (std::size_t i = 0; i < key.size(); ++i) {
    key[i] = static_cast<std::uint8_t>((i + 1) * 37 + server_ * 64);
  }
  return key;
}

std::string Upload::Summary() const {
  const std::string ftp = " FTP" + std::to_string(server_ + 1);
  switch (phase_) {
    case Phase::kOff:
      return "off";
    case Phase::kTrust:
      return "asks whether to trust" + ftp;
    case Phase::kPutFile:
      return "of file " + std::to_string(CurrentFile()) + "/" + std::to_string(TotalFiles()) +
             " to" + ftp;
    case Phase::kStart:
    case Phase::kOccupySlot:
    case Phase::kMount:
    case Phase::kParse:
      return "to" + ftp + " begins";
    case Phase::kUnmount:
    case Phase::kReleaseSlot:
      return "to" + ftp + " ends";
  }
  return "";
}

}  // namespace simulator
