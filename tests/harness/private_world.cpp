#include "harness/private_world.h"

#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "harness/files.h"
#include "harness/system_call.h"

namespace harness {
namespace {

namespace fs = std::filesystem;

bool entered = false;

void WriteProcFile(const char* path, const std::string& text) {
  std::ofstream file(path);
  file << text << std::flush;
  Check(file.good(), path);
}

void Mount(const char* source, const std::string& target, const char* type, unsigned long flags,
           const char* data) {
  Check(mount(source, target.c_str(), type, flags, data) == 0, "mount " + target);
}

void MountEmpty(const std::string& target) { Mount("tmpfs", target, "tmpfs", 0, "mode=0755"); }

/// Non-root users need a user namespace to mount.
void UnshareMounts() {
  if (geteuid() == 0 && unshare(CLONE_NEWNS) == 0) {
    return;
  }
  const std::string uid = std::to_string(geteuid());
  const std::string gid = std::to_string(getegid());
  Check(unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0, "unshare");
  WriteProcFile("/proc/self/setgroups", "deny");
  WriteProcFile("/proc/self/uid_map", "0 " + uid + " 1");
  WriteProcFile("/proc/self/gid_map", "0 " + gid + " 1");
}

/// A private /dev, in which /dev/log can be bound. The other devices are the real ones.
void ReplaceDev() {
  const std::string staging = "/run/dev";
  fs::create_directory(staging);
  MountEmpty(staging);
  for (const std::string name : {"null", "zero", "full", "random", "urandom", "tty"}) {
    std::ofstream(staging + "/" + name);
    Mount(("/dev/" + name).c_str(), staging + "/" + name, nullptr, MS_BIND, nullptr);
  }
  fs::create_symlink("/proc/self/fd", staging + "/fd");
  fs::create_symlink("/proc/self/fd/0", staging + "/stdin");
  fs::create_symlink("/proc/self/fd/1", staging + "/stdout");
  fs::create_symlink("/proc/self/fd/2", staging + "/stderr");
  fs::create_directory(staging + "/shm");
  Mount(staging.c_str(), "/dev", nullptr, MS_MOVE, nullptr);
  fs::remove(staging);
}

void MakeDirectories() {
  fs::create_directories(kSettingsFolder);
  fs::create_directories("/srv/www/htdocs");
}

}  // namespace

void EnterPrivateWorld() {
  UnshareMounts();
  Mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
  MountEmpty("/run");
  if (!fs::is_symlink("/var/run")) {
    MountEmpty("/var/run");
  }
  MountEmpty("/var/tmp");
  MountEmpty("/srv");
  ReplaceDev();
  MakeDirectories();
  entered = true;
}

void ResetPrivateWorld() {
  if (!entered) {
    throw std::logic_error("not in a private world: nothing is deleted");
  }
  for (const char* directory : {"/var/run", "/var/tmp", "/srv"}) {
    for (const fs::directory_entry& entry : fs::directory_iterator(directory)) {
      fs::remove_all(entry.path());
    }
  }
  MakeDirectories();
}

}  // namespace harness
