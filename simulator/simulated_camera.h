// The camera with everything around it that a client can notice.
#pragma once

#include <chrono>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "simulator/camera.h"
#include "simulator/console.h"
#include "simulator/daemon.h"
#include "simulator/event_loop.h"
#include "simulator/faults.h"
#include "simulator/journal.h"
#include "simulator/login.h"
#include "simulator/message_server.h"
#include "simulator/requests.h"
#include "simulator/scenes.h"
#include "simulator/status_image.h"
#include "simulator/system_log.h"
#include "simulator/tap_server.h"
#include "simulator/unique_fd.h"

namespace simulator {

struct Options {
  std::string session = "rv130-session";
  std::optional<int> session_lifetime;
  std::string serial = "13250042";
  std::string name;                         ///< on the terminal; empty: none
  std::string scenes = "simulator/scenes";  ///< folder
  std::string scene;                        ///< a name, or a file; empty: none
  std::string journal;                      ///< file; empty: none
  bool show_secrets = false;
  bool quiet = false;
  bool log = false;
};

/// Two threads of work meet here: the event loop, in which the daemons and the tap are served, and
/// the control interface. Both hold the lock while they touch anything else.
class SimulatedCamera {
 public:
  /// @throws std::exception when the scene makes no sense, or sockets or files cannot be made
  explicit SimulatedCamera(const Options& options);

  /// Plays the camera until a signal ends it.
  void Run();

  std::mutex& lock() { return lock_; }

  // What the control interface may do, with the lock held.

  /// Lets the time pass that has passed.
  void BringUpToDate();
  /// Shows what has changed to the handler.
  void Publish();
  Camera& camera() { return camera_; }
  Faults& faults() { return faults_; }
  Journal& journal() { return journal_; }
  Login& login() { return login_; }
  [[nodiscard]] std::vector<std::string> SceneNames() const {
    return simulator::SceneNames(options_.scenes);
  }
  /// Everything as after the start, but in another scene; empty: that of the start.
  void Reset(const std::string& scene);
  void LetTimePass(Milliseconds time);

 private:
  using Clock = std::chrono::steady_clock;

  /// The scene to start in, or the named one; empty: that to start in.
  [[nodiscard]] Json Scene(const std::string& name) const;
  void StartDaemon(const std::string& name, std::vector<MessageRow> messages);
  Delivery Answer(const Daemon& daemon, const Message& message, pid_t sender);
  void NoteLogLine(pid_t sender, const std::string& line);
  std::vector<std::string> BeginRequest(const Request& request);
  void EndRequest(int pid, const Outcome& outcome);

  const Options options_;
  Console console_;
  const UniqueFd signals_;
  std::mutex lock_;
  Camera camera_;
  StatusImage status_image_;
  Faults faults_;
  Journal journal_;
  Login login_;
  EventLoop loop_;
  SystemLog system_log_;
  MessageServer server_;
  TapServer tap_;
  std::map<int, RunningRequest> running_;  ///< by the handler's process id
  Clock::time_point up_to_;                ///< up to when the camera's time has passed
};

}  // namespace simulator
