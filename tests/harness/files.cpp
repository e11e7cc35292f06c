#include "harness/files.h"

#include <sys/mount.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <utility>

#include "harness/system_call.h"

namespace harness {

void WriteFile(const std::string& path, const std::string& content) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << content << std::flush;
  if (!file) {
    throw std::runtime_error("cannot write " + path);
  }
}

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    throw std::runtime_error("cannot read " + path);
  }
  return std::string(std::istreambuf_iterator<char>(file), {});
}

bool Exists(const std::string& path) { return std::filesystem::exists(path); }

void WriteSession(const std::string& id) {
  const std::string complete = std::string(kSessionFile) + ".new";
  WriteFile(complete, "ID\t" + id + "\nlifetime\t1700000030\nsessiontime\t1700000000\n");
  std::filesystem::rename(complete, kSessionFile);
}

std::string IgnoredLines(std::size_t length) {
  const std::string line = "unknown\t" + std::string(119, 'x') + "\n";
  std::string lines;
  while (lines.size() + line.size() <= length) {
    lines += line;
  }
  lines.resize(length, '\n');
  return lines;
}

ReadOnly::ReadOnly(std::string path) : path_(std::move(path)) {
  // A bind mount takes its flags only when it is remounted.
  Check(mount(path_.c_str(), path_.c_str(), nullptr, MS_BIND, nullptr) == 0 &&
            mount(nullptr, path_.c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) == 0,
        "mount " + path_);
}

FullDisk::FullDisk(std::string folder) : folder_(std::move(folder)) {
  std::map<std::string, std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
    files[entry.path()] = ReadFile(entry.path());
  }
  Check(mount("tmpfs", folder_.c_str(), "tmpfs", 0, "size=64k") == 0, "mount " + folder_);
  for (const auto& [path, content] : files) {
    WriteFile(path, content);
  }
  std::ofstream ballast(folder_ + "/.ballast", std::ios::binary);
  const std::string block(4096, 'x');
  while (ballast.write(block.data(), static_cast<std::streamsize>(block.size())).flush()) {
  }
}

FullDisk::~FullDisk() { umount2(folder_.c_str(), MNT_DETACH); }

ReadOnly::~ReadOnly() { umount2(path_.c_str(), MNT_DETACH); }

}  // namespace harness
