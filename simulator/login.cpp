#include "simulator/login.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <thread>
#include <utility>

#include "simulator/settings_files.h"
#include "simulator/unique_fd.h"

namespace simulator {
namespace {

constexpr char kFile[] = "/var/tmp/lighttpd/.session";
constexpr char kNewFile[] = "/var/tmp/lighttpd/.session_new";

std::string RandomId() {
  constexpr char kDigits[] = "0123456789abcdef";
  constexpr int kLength = 32;
  std::random_device source;
  std::string id;
  for (int i = 0; i < kLength; ++i) {
    id += kDigits[source() % 16];
  }
  return id;
}

/// Handlers hold the lock of the folder while they rewrite the file.
bool LockFolder(const UniqueFd& folder) {
  constexpr int kAttempts = 20;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    if (flock(folder.Get(), LOCK_SH | LOCK_NB) == 0) {
      return true;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return false;
}

/// The file's text and the time of its last change; empty without a file. Nothing while it is being
/// rewritten.
std::optional<std::string> FileAsItIs() {
  const UniqueFd folder(open(kSettingsFolder, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!LockFolder(folder)) {
    return std::nullopt;
  }
  struct stat status = {};
  std::ifstream file(kFile, std::ios::binary);
  if (!file || stat(kFile, &status) != 0) {
    return std::string();
  }
  return std::string(std::istreambuf_iterator<char>(file), {}) + "changed\t" +
         std::to_string(status.st_mtim.tv_sec) + "." + std::to_string(status.st_mtim.tv_nsec);
}

std::int64_t NumberAfter(const std::string& text, const std::string& key) {
  const std::size_t at = text.find("\n" + key + "\t");
  return at == std::string::npos ? 0
                                 : std::strtoll(text.c_str() + at + key.size() + 2, nullptr, 10);
}

}  // namespace

Login::Login(std::string initial, std::optional<int> lifetime_seconds)
    : initial_(std::move(initial)), lifetime_(lifetime_seconds) {
  std::filesystem::create_directories(kSettingsFolder);
  Reset(0);
}

std::string Login::LogIn(Milliseconds now) {
  is_initial_ = false;
  Begin(RandomId(), lifetime_.value_or(kLifetimeSeconds), now);
  return id_;
}

void Login::LogOut() {
  id_.clear();
  std::filesystem::remove(kFile);
  written_.clear();
}

void Login::Reset(Milliseconds now) {
  is_initial_ = true;
  Begin(initial_, lifetime_, now);
}

void Login::Begin(const std::string& id, std::optional<int> lifetime_seconds, Milliseconds now) {
  // A session that does not expire gets a day: the handler does not read the time.
  constexpr int kDay = 86400;
  const auto second = static_cast<std::int64_t>(std::time(nullptr));
  std::ofstream file(kNewFile, std::ios::binary | std::ios::trunc);
  file << "ID\t" << id << "\nlifetime\t" << second + lifetime_seconds.value_or(kDay)
       << "\nsessiontime\t" << second << '\n';
  if (!file.flush()) {
    throw std::runtime_error(std::string("cannot write ") + kNewFile);
  }
  file.close();
  std::filesystem::rename(kNewFile, kFile);
  id_ = id;
  end_.reset();
  if (lifetime_seconds) {
    end_ = now + 1000 * static_cast<Milliseconds>(*lifetime_seconds);
  }
  written_ = FileAsItIs().value_or("");
}

void Login::Update(Milliseconds now) {
  if (id_.empty()) {
    return;
  }
  if (const auto file = FileAsItIs(); file && *file != written_) {
    written_ = *file;
    const std::int64_t left = NumberAfter(*file, "lifetime") - NumberAfter(*file, "sessiontime");
    if (left <= 0) {
      end_ = now;
    } else if (!is_initial_ || lifetime_) {
      end_ = now + 1000 * left;
    }
  }
  if (end_ && now >= *end_) {
    LogOut();
  }
}

}  // namespace simulator
