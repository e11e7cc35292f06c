// The upload of clips to an FTP server.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace simulator {

/// One upload after the other: it is prepared, asks for trust in a server's key when it meets the
/// server for the first time, sends file by file and cleans up. It lives in its own time, which
/// `Advance` moves.
class Upload {
 public:
  static constexpr std::size_t kServers = 4;

  /// What the upload is at, with the numbers of the camera status block.
  enum class Phase : std::uint8_t {
    kOff = 0,
    kStart = 1,
    kOccupySlot = 2,
    kMount = 4,
    kParse = 5,
    kPutFile = 7,
    kTrust = 9,
    kUnmount = 11,
    kReleaseSlot = 12,
  };

  /// Begins to upload files; nothing to do without any.
  /// @param server  0 to 3
  /// @return false while another upload is going on
  bool Start(std::size_t server, std::vector<std::string> files);

  /// Answers the question whether the server's key can be trusted: no ends the upload.
  /// @return false when no question was asked
  bool AnswerPrompt(bool yes);

  void Advance(std::chrono::milliseconds elapsed);

  [[nodiscard]] Phase phase() const { return phase_; }
  [[nodiscard]] std::size_t server() const { return server_; }
  [[nodiscard]] std::size_t TotalFiles() const { return files_.size(); }
  /// From 1; 0 before the first file is sent.
  [[nodiscard]] std::size_t CurrentFile() const;
  [[nodiscard]] int Percent() const;
  [[nodiscard]] std::chrono::seconds RemainingTime() const;
  /// For the user: the file being sent, or nothing.
  [[nodiscard]] std::string Message() const;
  /// The key of the server in question.
  [[nodiscard]] std::array<std::uint8_t, 20> ServerKey() const;

  [[nodiscard]] std::string Summary() const;

 private:
  /// How long the current phase takes; zero for one that waits.
  [[nodiscard]] std::chrono::milliseconds Duration() const;
  void NextPhase();

  Phase phase_ = Phase::kOff;
  std::chrono::milliseconds in_phase_{0};
  std::size_t server_ = 0;
  std::vector<std::string> files_;
  std::array<bool, kServers> trusted_{};
};

}  // namespace simulator
