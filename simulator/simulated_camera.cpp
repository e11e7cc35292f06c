#include "simulator/simulated_camera.h"

#include <sys/signalfd.h>

#include <csignal>
#include <filesystem>
#include <utility>

#include "simulator/control_daemon.h"
#include "simulator/date_time.h"
#include "simulator/recording.h"
#include "simulator/streaming_daemon.h"

namespace simulator {
namespace {

/// The signals that end the simulated camera, as something to read.
UniqueFd TerminationSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    sigaddset(&signals, signal);
  }
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  return UniqueFd(signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK));
}

std::string TimeText(const CameraClock& clock) {
  const std::string ms = std::to_string(clock.uptime % 1000);
  return DateText(CurrentSecond(clock)) + "." + std::string(3 - ms.size(), '0') + ms;
}

}  // namespace

SimulatedCamera::SimulatedCamera(const Options& options)
    : options_(options),
      console_(options.quiet, options.log, options.name),
      signals_(TerminationSignals()),
      status_image_(camera_),
      journal_(options.journal, options.show_secrets),
      login_(options.session, options.session_lifetime),
      system_log_(loop_,
                  [this](pid_t sender, const std::string& line) { NoteLogLine(sender, line); }),
      server_(loop_),
      tap_(
          loop_, [this](const Request& request) { return BeginRequest(request); },
          [this](int pid, const Outcome& outcome) { EndRequest(pid, outcome); }),
      up_to_(Clock::now()) {
  SetScene(camera_, Scene(""));
  Publish();
  StartDaemon("quonta_usb", {});
  StartDaemon("quonta_web", {});
  StartDaemon("quonta_nm", {});
  StartDaemon("streaming", StreamingMessages());
  StartDaemon("quonta_cp", ControlMessages());  // The last one: its socket shows that all is up.
}

void SimulatedCamera::Run() {
  loop_.Add(signals_.Get(), [this] { loop_.Stop(); });
  loop_.OnTick([this] {
    BringUpToDate();
    server_.SettleOverdue();
    Publish();
  });
  loop_.Run(lock_);
}

Json SimulatedCamera::Scene(const std::string& name) const {
  const auto is_file = [](const std::string& scene) {
    return scene.find('/') != std::string::npos || std::filesystem::path(scene).has_extension();
  };
  Json scene = Json::object();
  if (!name.empty()) {
    scene = ReadScene(options_.scenes, name);
  } else if (is_file(options_.scene)) {
    scene = ReadSceneFile(options_.scene);
  } else if (!options_.scene.empty()) {
    scene = ReadScene(options_.scenes, options_.scene);
  }
  if (scene.is_object() && !scene.contains("serial")) {
    scene["serial"] = options_.serial;
  }
  return scene;
}

void SimulatedCamera::StartDaemon(const std::string& name, std::vector<MessageRow> messages) {
  const Daemon daemon(name, std::move(messages), camera_);
  server_.Listen("/var/run/" + name + ".sock",
                 [this, daemon](const Message& message, pid_t sender) {
                   return Answer(daemon, message, sender);
                 });
}

Delivery SimulatedCamera::Answer(const Daemon& daemon, const Message& message, pid_t sender) {
  BringUpToDate();
  const auto running = running_.find(sender);
  const bool is_known = running != running_.end();
  // A handler that was started by hand is not known and meets no faults.
  const std::vector<Fault> to_meet = is_known ? running->second.faults : std::vector<Fault>();
  const Fault* const fault = ReplyFault(to_meet, daemon.name());
  MessageRecord record;
  record.daemon = daemon.name();
  record.bytes = message.bytes;
  record.decoded = daemon.Describe(message);
  Reply reply = ResultOnly(Result::kSuccess);
  if (fault == nullptr || IsCarriedOut(*fault)) {
    Answered answered = daemon.Answer(message);
    reply = std::move(answered.reply);
    record.changes = std::move(answered.changes);
    record.why = std::move(answered.why);
  }
  Delivery delivery;
  if (fault != nullptr && reply) {
    delivery = Deliver(*fault, message, *reply);
    record.fault = fault->name;
  } else if (reply) {
    delivery = {Delivery::Way::kAtOnce, MakeReply(message, *reply), 0, 0};
  }
  if (delivery.reply.size() >= kHeaderSize) {
    record.reply.emplace(delivery.reply.begin() + kHeaderSize, delivery.reply.end());
  }
  Publish();
  if (is_known) {
    running->second.messages.push_back(std::move(record));
  }
  return delivery;
}

void SimulatedCamera::NoteLogLine(pid_t sender, const std::string& line) {
  constexpr std::size_t kMostLines = 200;
  const auto running = running_.find(sender);
  if (running != running_.end() && running->second.log.size() < kMostLines) {
    running->second.log.push_back(line);
  }
}

std::vector<std::string> SimulatedCamera::BeginRequest(const Request& request) {
  BringUpToDate();
  Publish();
  RunningRequest running;
  running.request = request;
  running.command = CommandIn(request.body);
  running.faults = faults_.TakeFor(running.command);
  std::vector<std::string> world = WorldOf(running.faults, running.command);
  running_[request.pid] = std::move(running);
  return world;
}

void SimulatedCamera::EndRequest(int pid, const Outcome& outcome) {
  // Also what the handler has sent without waiting for an answer.
  server_.ReceiveAll();
  system_log_.ReceiveAll();
  BringUpToDate();
  const auto running = running_.find(pid);
  if (running == running_.end()) {
    return;
  }
  Entry entry = MakeEntry(running->second, outcome, login_.id());
  entry.time = TimeText(camera_.state().clock);
  running_.erase(running);
  console_.Request(journal_.Add(std::move(entry)));
}

void SimulatedCamera::BringUpToDate() {
  const Clock::time_point now = Clock::now();
  camera_.LetRealTimePass(now - up_to_);
  up_to_ = now;
  login_.Update(camera_.state().clock.uptime);
}

void SimulatedCamera::Publish() { status_image_.Update(camera_); }

void SimulatedCamera::LetTimePass(Milliseconds time) {
  camera_.LetTimePass(time);
  login_.Update(camera_.state().clock.uptime);
}

void SimulatedCamera::Reset(const std::string& scene) {
  SetScene(camera_, Scene(scene));
  faults_.Clear();
  journal_.Clear();
  login_.Reset(camera_.state().clock.uptime);
}

}  // namespace simulator
