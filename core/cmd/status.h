// Commands about the camera's state and its clips: status report, clip list, clip marking and the
// selection of clips for FTP upload. All of them speak to the camera control daemon; numbers of
// several bytes in their payloads are big-endian.
#pragma once

#include <cstdint>

#include "core/cmd/command.h"
#include "core/growing_array.h"

/// Reports the camera's whole state; the pages of the web remote poll it.
///
/// The bare header is the message. The daemon's reply (see status/status_reply.h) and the camera
/// status block together make the report. What did not arrive of the reply is reported as zeros.
class GetCamStatus : public Command {
 public:
  void Output() override;
};

/// Lists clips of one card slot.
///
/// Parameters: "Slot" ("A" or "B", only the first character counts), "StartIndexNo" (index number
/// of the first clip, at least 1) and "ClipNum" (number of clips asked for, at least 1), both cut
/// to signed 16 bits. A missing parameter or another slot is refused with -1, the start index with
/// -2, the number with -3.
///
/// The daemon returns 15 clips at most, so there is one exchange for every 15 of them. Payload:
/// byte 0 slot (0 A, 1 B), byte 1 zero, bytes 2 and 3 index number of the first clip, bytes 4 and
/// 5 number of clips. Reply: byte 0 result, bytes 2 and 3 number of clips, then the clips with 32
/// bytes each. An exchange that fails does not end the list; the last one's result is the reply's.
class GetClipInfo : public Command {
 public:
  int Parse(const char* params) override;
  void Transmit() override;
  void Output() override;

 private:
  /// What the daemon tells of one clip.
  struct ClipRecord {
    static constexpr std::size_t kSize = 32;
    std::uint8_t bytes[kSize];
  };

  void KeepClips();
  static void WriteClip(JsonWriter& data, const ClipRecord& record);

  std::uint8_t slot_ = 0;
  std::int16_t start_index_ = 0;
  std::int16_t clip_count_ = 0;
  GrowingArray<ClipRecord> clips_;  ///< all that were received, so memory is no client's to claim
};

/// Sets or clears the OK mark of one clip.
///
/// Parameters: "Slot" ("A"; anything else means B, only the first character counts), "IndexNo" of
/// the clip (cut to 16 bits) and "OKMark" ("NoMark" clears the mark, any other text of at most 30
/// characters sets it). A missing one is refused with -1.
///
/// Payload: byte 0 slot (0 A, 1 B), byte 1 zero, bytes 2 and 3 index number, byte 4 OK mark (0 or
/// 1), byte 5 zero.
class SetClipInfo : public Command {
 public:
  int Parse(const char* params) override;

 private:
  char slot_ = '\0';
  std::uint16_t index_no_ = 0;
  char ok_mark_[31] = {};
};

/// Answers the question that the camera's FTP client asks.
///
/// Parameter "Response": a number that only the daemon knows the meaning of; a missing one is
/// refused with -1. Payload: byte 0 its low byte, byte 1 zero.
class WebFtpOperateResponse : public Command {
 public:
  int Parse(const char* params) override;
};

/// The shape of the commands that start an upload of many clips.
///
/// Parameters: the numbers "Server" and "Slot"; a missing one is refused with -1. Payload: byte 0
/// the low byte of the server, byte 1 that of the slot.
class FtpUploadStart : public Command {
 public:
  int Parse(const char* params) override;

 protected:
  /// @param log_name  what the log calls the command
  explicit FtpUploadStart(const char* log_name) : log_name_(log_name) {}

 private:
  const char* log_name_;
};

/// Starts the upload of all clips of a slot.
class SetWebFtpUploadAll : public FtpUploadStart {
 public:
  SetWebFtpUploadAll() : FtpUploadStart("upload all") {}
};

/// Starts the upload of all clips of a slot that have the OK mark.
class SetWebFtpUploadOkMarked : public FtpUploadStart {
 public:
  SetWebFtpUploadOkMarked() : FtpUploadStart("upload ok mark") {}
};

/// The shape of the commands that choose clips of one slot for the upload to one FTP server.
///
/// Parameters "block0" to "block124": 32 clips each, one bit per clip, as a decimal number, signed
/// or unsigned; a missing block selects none. See `SetClipUploadBitmap`. Payload: the 125 blocks
/// with 4 bytes each.
class FtpUploadSelection : public Command {
 public:
  int Parse(const char* params) override;

 protected:
  FtpUploadSelection(int server, char slot) : server_(server), slot_(slot) {}

 private:
  int server_;
  char slot_;
};

class SetWebFtp1UploadASelect : public FtpUploadSelection {
 public:
  SetWebFtp1UploadASelect() : FtpUploadSelection(1, 'A') {}
};

class SetWebFtp2UploadASelect : public FtpUploadSelection {
 public:
  SetWebFtp2UploadASelect() : FtpUploadSelection(2, 'A') {}
};

class SetWebFtp3UploadASelect : public FtpUploadSelection {
 public:
  SetWebFtp3UploadASelect() : FtpUploadSelection(3, 'A') {}
};

class SetWebFtp4UploadASelect : public FtpUploadSelection {
 public:
  SetWebFtp4UploadASelect() : FtpUploadSelection(4, 'A') {}
};

class SetWebFtp1UploadBSelect : public FtpUploadSelection {
 public:
  SetWebFtp1UploadBSelect() : FtpUploadSelection(1, 'B') {}
};

class SetWebFtp2UploadBSelect : public FtpUploadSelection {
 public:
  SetWebFtp2UploadBSelect() : FtpUploadSelection(2, 'B') {}
};

class SetWebFtp3UploadBSelect : public FtpUploadSelection {
 public:
  SetWebFtp3UploadBSelect() : FtpUploadSelection(3, 'B') {}
};

class SetWebFtp4UploadBSelect : public FtpUploadSelection {
 public:
  SetWebFtp4UploadBSelect() : FtpUploadSelection(4, 'B') {}
};
