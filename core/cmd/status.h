// Commands about the camera's state and its clips: status report, clip list, clip marking and FTP
// upload. All of them talk to the camera control daemon; numbers in their payloads are big-endian.
// `Parse` returns -1 if a parameter is missing.
#pragma once

#include <cstdint>

#include "core/cmd/command.h"
#include "core/text_builder.h"

/// Reports the camera's whole state; the pages of the web remote poll it.
/// The message is a bare header. The report combines the daemon's reply (see status/replies.h)
/// with the camera status block. Bytes of the reply that did not arrive are reported as zeros.
struct GetCamStatus : Command {
  /// Length of the longest report, reserved at once because this command is polled.
  static constexpr std::size_t kMaxReport = 3454;

  void Output() override;
};

/// Lists clips of one card slot.
/// Parameters: "Slot" ("A" or "B", only the first character counts), "StartIndexNo" (index number
/// of the first clip, at least 1) and "ClipNum" (number of clips, at least 1), both truncated to
/// signed 16 bits. `Parse` returns -1 for another slot, -2 for a bad start index, -3 for a bad
/// number of clips.
///
/// The daemon returns at most 15 clips, so there is one exchange for every 15 of them. Payload:
/// byte 0 slot (0 A, 1 B), byte 1 zero, bytes 2 and 3 index number of the first clip, bytes 4 and
/// 5 number of clips. Reply: byte 0 result, bytes 2 and 3 number of clips, then 32 bytes per clip.
/// An error result does not end the list, a time-out does; the reply has the result of the last
/// exchange that was answered.
class GetClipInfo : public Command {
 public:
  int Parse(const char* params) override;
  void Transmit() override;
  void Output() override;

 private:
  std::uint8_t slot_ = 0;
  std::int16_t start_index_ = 0;
  std::int16_t clip_count_ = 0;
  /// The received clip records (see status/replies.h). Memory grows with the clips that arrive,
  /// not with the number that the client asked for.
  TextBuilder clips_;
};

/// Sets or clears the OK mark of one clip.
/// Parameters: "Slot" ("A"; anything else means B, only the first character counts), "IndexNo" of
/// the clip (truncated to 16 bits) and "OKMark" ("NoMark" clears the mark, any other text sets it).
/// Payload: byte 0 slot (0 A, 1 B), byte 1 zero, bytes 2 and 3 index number, byte 4 OK mark (0 or
/// 1), byte 5 zero.
struct SetClipInfo : Command {
  int Parse(const char* params) override;
};

/// Answers a prompt of the camera's FTP client.
/// Parameter "Response": a number whose meaning only the daemon knows. Payload: byte 0 its low
/// byte, byte 1 zero.
struct WebFtpOperateResponse : Command {
  int Parse(const char* params) override;
};

/// Base of the commands that start the upload of many clips.
/// Parameters: the numbers "Server" and "Slot". Payload: byte 0 the low byte of the server, byte 1
/// the low byte of the slot.
class FtpUploadStart : public Command {
 protected:
  /// @param log_name  name of the command in the log
  int ParseAs(const char* log_name, const char* params);
};

/// Starts the upload of all clips of a slot.
struct SetWebFtpUploadAll : FtpUploadStart {
  int Parse(const char* params) override { return ParseAs("upload all", params); }
};

/// Starts the upload of all clips of a slot that have the OK mark.
struct SetWebFtpUploadOkMarked : FtpUploadStart {
  int Parse(const char* params) override { return ParseAs("upload ok mark", params); }
};

/// Base of the commands that select clips of one slot for the upload to one FTP server.
/// Parameters "block0" to "block124": 32 clips each, one bit per clip, as a decimal number, signed
/// or unsigned; a missing block selects none. See `SetClipUploadBitmap`. Payload: the 125 blocks
/// with 4 bytes each.
class FtpUploadSelection : public Command {
 protected:
  int ParseFor(int server, char slot, const char* params);
};

template <int kServer, char kSlot>
struct FtpUploadSelectionOf : FtpUploadSelection {
  int Parse(const char* params) override { return ParseFor(kServer, kSlot, params); }
};

using SetWebFtp1UploadASelect = FtpUploadSelectionOf<1, 'A'>;
using SetWebFtp2UploadASelect = FtpUploadSelectionOf<2, 'A'>;
using SetWebFtp3UploadASelect = FtpUploadSelectionOf<3, 'A'>;
using SetWebFtp4UploadASelect = FtpUploadSelectionOf<4, 'A'>;
using SetWebFtp1UploadBSelect = FtpUploadSelectionOf<1, 'B'>;
using SetWebFtp2UploadBSelect = FtpUploadSelectionOf<2, 'B'>;
using SetWebFtp3UploadBSelect = FtpUploadSelectionOf<3, 'B'>;
using SetWebFtp4UploadBSelect = FtpUploadSelectionOf<4, 'B'>;
