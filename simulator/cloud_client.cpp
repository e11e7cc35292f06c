#include "simulator/cloud_client.h"

namespace simulator {
namespace {

constexpr std::chrono::milliseconds kStepTime{500};

const std::vector<CloudEvent>& ScheduledEvents() {
  static const std::vector<CloudEvent> events = {
      {"Morning news", "rtmp://ingest.example/live", "morn-4821-aaaa"},
      {"City council, \"open house\"", "rtmp://ingest.example/live", "city-7730-bbbb"},
      {"Cup final", "rtmp://sport.example/app", "cupf-1166-cccc"},
  };
  return events;
}

}  // namespace

void CloudClient::AdvanceTo(std::chrono::milliseconds uptime) {
  uptime_ = uptime;
  if (Finish(login_)) {
    logged_in_ = true;
  }
  if (Finish(events_)) {
    has_events_ = true;
  }
  if (Finish(stream_info_)) {
    stream_event_ = asked_event_;
  }
}

void CloudClient::LogIn(const std::string& password, const std::string& url) {
  if (url.rfind("https://", 0) != 0) {
    Begin(login_, CloudError::kUrl);
  } else {
    Begin(login_, password.empty() ? CloudError::kAuthorization : CloudError::kNone);
  }
}

void CloudClient::LogOut() {
  const auto uptime = uptime_;
  *this = CloudClient();
  uptime_ = uptime;
}

void CloudClient::ObtainEvents() {
  Begin(events_, logged_in_ ? CloudError::kNone : CloudError::kAuthorization);
}

void CloudClient::ObtainStreamInfo(std::size_t event) {
  asked_event_ = event;
  if (!logged_in_) {
    Begin(stream_info_, CloudError::kAuthorization);
  } else {
    Begin(stream_info_, event < Events().size() ? CloudError::kNone : CloudError::kServer);
  }
}

std::vector<CloudEvent> CloudClient::Events() const {
  return has_events_ ? ScheduledEvents() : std::vector<CloudEvent>();
}

std::optional<CloudEvent> CloudClient::StreamInfo(std::size_t event) const {
  if (stream_event_ != event) {
    return std::nullopt;
  }
  return ScheduledEvents()[event];
}

void CloudClient::Begin(Step& step, CloudError outcome) const {
  step = {CloudStepState::kDoing, outcome, uptime_ + kStepTime};
}

bool CloudClient::Finish(Step& step) {
  if (step.state != CloudStepState::kDoing || uptime_ < step.due) {
    return false;
  }
  error_ = step.outcome;
  const bool succeeded = step.outcome == CloudError::kNone;
  step.state = succeeded ? CloudStepState::kFinished : CloudStepState::kFailed;
  return succeeded;
}

}  // namespace simulator
