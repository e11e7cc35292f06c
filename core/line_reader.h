// Reads the small text files of the handler line by line.
#pragma once

#include <cstddef>
#include <string_view>

#include "core/os.h"

/// Reads a file's lines in pieces that fit the caller's buffer: the part of `LineReader` that does
/// not depend on the size of the buffer.
class LinePieces {
 public:
  /// @param file  must outlive the reader; not open if there is no such file
  explicit LinePieces(const os::Descriptor& file) : file_(file), failed_(!file.IsOpen()) {}

  /// Whether the file is missing or cannot be read; known after the last line.
  [[nodiscard]] bool Failed() const { return failed_; }

  /// Fills `piece` with the next line, including its line feed, or with the first `size - 1` bytes
  /// of it; the rest is another piece. A NUL byte in the file ends the text of its piece.
  /// @return false at the end of the file and if it cannot be read
  bool Next(char* piece, std::size_t size);

 private:
  bool Refill();

  const os::Descriptor& file_;
  bool failed_;
  std::size_t length_ = 0;
  std::size_t next_ = 0;
  std::size_t filled_ = 0;
  char block_[1024];
};

/// Reads a text file in lines of at most `Size - 1` characters, up to `os::kMaxFile` bytes. A
/// missing or unreadable file and a folder have no lines.
template <std::size_t Size>
class LineReader : public LinePieces {
 public:
  explicit LineReader(const os::Descriptor& file) : LinePieces(file) {}

  /// The next line, or null after the last one; valid until the next call.
  const char* Next() { return LinePieces::Next(line_, Size) ? line_ : nullptr; }

 private:
  char line_[Size];
};

/// Size of a line in the settings files and the session file, including its line feed and the NUL.
/// The rest of a longer one is read as another line.
constexpr std::size_t kSettingsLineSize = 256;

/// The value on a settings line that begins with `key`: the first word after the key; empty if
/// there is none. It need not be separated from the key. The result points into `line`.
std::string_view ValueAfterKey(const char* line, std::string_view key);
