#pragma once

#include <string>

namespace harness {

inline constexpr char kSettingsFolder[] = "/var/tmp/lighttpd";
inline constexpr char kStreamingSettingsFile[] = "/var/tmp/lighttpd/streaming";
inline constexpr char kSessionFile[] = "/var/tmp/lighttpd/.session";
inline constexpr char kLogLevelFile[] = "/var/tmp/lighttpd/cgilog";

/// The session id that `CameraTest` stores and `Body` sends.
inline constexpr char kSession[] = "5f0c2a9e71d4";

/// Creates or replaces a file. Throws if that fails.
void WriteFile(const std::string& path, const std::string& content);

/// The contents of a file. Throws if it cannot be read.
std::string ReadFile(const std::string& path);

bool Exists(const std::string& path);

/// Puts a session file with this id in the place of the old one, as the login component does.
void WriteSession(const std::string& id);

/// Lines that settings files ignore, long and then empty ones.
/// @param length  in bytes, of all of them together
std::string IgnoredLines(std::size_t length);

/// Makes a file or folder read-only, for root, too, for the lifetime of this object.
class ReadOnly {
 public:
  explicit ReadOnly(std::string path);
  ~ReadOnly();
  ReadOnly(const ReadOnly&) = delete;
  ReadOnly& operator=(const ReadOnly&) = delete;

 private:
  std::string path_;
};

/// Replaces a folder by a full disk with the same files, for the lifetime of this object.
class FullDisk {
 public:
  explicit FullDisk(std::string folder);
  ~FullDisk();
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  std::string folder_;
};

}  // namespace harness
