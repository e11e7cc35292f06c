// The simulated camera: everything that the request handler talks to, for machines that have no
// camera.
#include <sys/signalfd.h>

#include <CLI/CLI.hpp>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "simulator/camera.h"
#include "simulator/console.h"
#include "simulator/control_daemon.h"
#include "simulator/daemon.h"
#include "simulator/event_loop.h"
#include "simulator/message_server.h"
#include "simulator/session_file.h"
#include "simulator/status_image.h"
#include "simulator/streaming_daemon.h"
#include "simulator/system_log.h"
#include "simulator/unique_fd.h"

namespace simulator {
namespace {

struct Options {
  std::string session = "rv130-session";
  bool quiet = false;
  bool log = false;
};

/// The signals that end the simulated camera, as something to read.
UniqueFd EndingSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    sigaddset(&signals, signal);
  }
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  return UniqueFd(signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK));
}

/// The camera and everything around it that a client can notice.
class SimulatedCamera {
 public:
  explicit SimulatedCamera(const Options& options)
      : console_(options.quiet), signals_(EndingSignals()), status_image_(camera_), server_(loop_) {
    WriteSessionFile(options.session);
    if (options.log) {
      system_log_.emplace(loop_, console_);
    }
    StartDaemon("quonta_usb", {});
    StartDaemon("quonta_web", {});
    StartDaemon("quonta_nm", {});
    StartDaemon("streaming", StreamingMessages());
    StartDaemon("quonta_cp", ControlMessages());  // The last one: its socket shows that all is up.
  }

  /// Plays the camera until a signal ends it.
  void Run() {
    loop_.Add(signals_.Get(), [this] { loop_.Stop(); });
    loop_.OnTick([this] {
      BringUpToDate();
      server_.SettleOverdue();
    });
    loop_.Run();
  }

 private:
  using Clock = std::chrono::steady_clock;

  void StartDaemon(const std::string& name, std::vector<MessageRow> messages) {
    const Daemon daemon(name, std::move(messages), camera_, console_);
    server_.Listen("/var/run/" + name + ".sock", [this, daemon](const Message& message) {
      BringUpToDate();
      Reply reply = daemon.Answer(message);
      status_image_.Update(camera_);
      return reply;
    });
  }

  void BringUpToDate() {
    using std::chrono::milliseconds;
    camera_.AdvanceTo(std::chrono::duration_cast<milliseconds>(Clock::now() - power_on_));
    status_image_.Update(camera_);
  }

  const Clock::time_point power_on_ = Clock::now();
  const Console console_;
  const UniqueFd signals_;
  Camera camera_;
  StatusImage status_image_;
  EventLoop loop_;
  std::optional<SystemLog> system_log_;
  MessageServer server_;
};

}  // namespace
}  // namespace simulator

int main(int argc, char** argv) {
  try {
    simulator::Options options;
    CLI::App app(
        "A simulated camera: the daemons, the status block and the session file that the request "
        "handler works with.");
    app.add_option("--session", options.session, "Session id of the one logged-in client")
        ->capture_default_str();
    app.add_flag("--quiet", options.quiet, "Show nothing of what happens");
    app.add_flag("--log", options.log, "Stand in for the system log and show what is logged");
    CLI11_PARSE(app, argc, argv);
    std::signal(SIGPIPE, SIG_IGN);
    simulator::SimulatedCamera(options).Run();
  } catch (const std::exception& error) {
    std::fprintf(stderr, "simulated_camera: %s\n", error.what());
    return 1;
  }
  return 0;
}
