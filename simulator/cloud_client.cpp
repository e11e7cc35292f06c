#include "simulator/cloud_client.h"

#include <algorithm>

#include "simulator/network.h"

namespace simulator {
namespace {

/// How long the client waits for a service that does not answer.
constexpr Milliseconds kPatience = 5000;

/// Begins a step that ends as it should, unless the service or the network is at fault.
void Begin(const State& state, CloudProgress& progress, CloudError outcome) {
  const Cloud& cloud = state.cloud;
  if (!IsOnline(state)) {
    outcome = CloudError::kTimeout;
  } else if (cloud.service != CloudError::kNone) {
    outcome = cloud.service;
  }
  progress = {CloudStep::kDoing, outcome,
              outcome == CloudError::kTimeout ? std::max(kPatience, cloud.delay) : cloud.delay};
}

/// Whether the step has come to a good end just now.
bool Finish(Cloud& cloud, CloudProgress& progress, Milliseconds elapsed) {
  if (progress.step != CloudStep::kDoing) {
    return false;
  }
  progress.left -= elapsed;
  if (progress.left > 0) {
    return false;
  }
  const bool succeeded = progress.outcome == CloudError::kNone;
  cloud.error = progress.outcome;
  progress.step = succeeded ? CloudStep::kFinished : CloudStep::kFailed;
  return succeeded;
}

CloudError OutcomeForMember(const Cloud& cloud) {
  return cloud.logged_in ? CloudError::kNone : CloudError::kAuthorization;
}

}  // namespace

void LogInToCloud(State& state, const std::string& password, const std::string& url) {
  const Cloud& cloud = state.cloud;
  const bool is_right = cloud.password.empty() ? !password.empty() : password == cloud.password;
  CloudError outcome = is_right ? CloudError::kNone : CloudError::kAuthorization;
  if (url.rfind("https://", 0) != 0) {
    outcome = CloudError::kUrl;
  }
  Begin(state, state.cloud.login, outcome);
}

void LogOutOfCloud(State& state) {
  Cloud& cloud = state.cloud;
  cloud.login = {};
  cloud.event_list = {};
  cloud.stream_info = {};
  cloud.error = CloudError::kNone;
  cloud.logged_in = false;
  cloud.has_events = false;
  cloud.stream_event = Cloud::kNoEvent;
}

void ObtainCloudEvents(State& state) {
  Begin(state, state.cloud.event_list, OutcomeForMember(state.cloud));
}

void ObtainStreamInfo(State& state, int event) {
  Cloud& cloud = state.cloud;
  CloudError outcome = OutcomeForMember(cloud);
  if (outcome == CloudError::kNone &&
      static_cast<std::size_t>(event) >= ObtainedEvents(state).size()) {
    outcome = CloudError::kServer;
  }
  cloud.asked_event = event;
  Begin(state, cloud.stream_info, outcome);
}

const std::vector<CloudEvent>& ObtainedEvents(const State& state) {
  static const std::vector<CloudEvent> none;
  return state.cloud.has_events ? state.cloud.events : none;
}

const CloudEvent* ObtainedStreamInfo(const State& state, int event) {
  const std::vector<CloudEvent>& events = state.cloud.events;
  const bool is_there =
      event == state.cloud.stream_event && static_cast<std::size_t>(event) < events.size();
  return is_there ? &events[static_cast<std::size_t>(event)] : nullptr;
}

void AdvanceCloud(State& state, Milliseconds elapsed) {
  Cloud& cloud = state.cloud;
  if (Finish(cloud, cloud.login, elapsed)) {
    cloud.logged_in = true;
  }
  if (Finish(cloud, cloud.event_list, elapsed)) {
    cloud.has_events = true;
  }
  if (Finish(cloud, cloud.stream_info, elapsed)) {
    cloud.stream_event = cloud.asked_event;
  }
}

}  // namespace simulator
