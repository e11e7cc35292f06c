// The cloud streaming service, and the client in the camera that talks to it.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace simulator {

/// How far a step of the client is. The numbers are those of the camera status block.
enum class CloudStepState : std::uint8_t { kIdle = 0, kDoing = 1, kFinished = 2, kFailed = 3 };

/// Why the last step failed. The numbers are those of the camera status block.
enum class CloudError : std::uint8_t { kNone = 0, kAuthorization = 3, kServer = 4, kUrl = 5 };

/// A broadcast that the service expects, and where to stream it to.
struct CloudEvent {
  std::string title;
  std::string url;
  std::string stream_key;
};

/// A client that talks to a service far away: each step takes half a second, and how it went shows
/// in its state. What a step has brought stays until logout, whatever becomes of its state.
class CloudClient {
 public:
  /// Moves the client's time on. `uptime`: since the camera was switched on; never goes back.
  void AdvanceTo(std::chrono::milliseconds uptime);

  /// The service is found under an "https://" URL; it knows every user who has a password.
  void LogIn(const std::string& password, const std::string& url);
  void LogOut();
  /// Needs a login, without which the service refuses.
  void ObtainEvents();
  /// Fails for an event that is not in the list.
  void ObtainStreamInfo(std::size_t event);

  /// The events obtained; none before.
  [[nodiscard]] std::vector<CloudEvent> Events() const;
  /// The stream information obtained; none before, and none about another event.
  [[nodiscard]] std::optional<CloudEvent> StreamInfo(std::size_t event) const;

  void ClearLogin() { login_ = {}; }
  void ClearEvents() { events_ = {}; }
  void ClearStreamInfo() { stream_info_ = {}; }

  [[nodiscard]] CloudStepState LoginState() const { return login_.state; }
  [[nodiscard]] CloudStepState EventsState() const { return events_.state; }
  [[nodiscard]] CloudStepState StreamInfoState() const { return stream_info_.state; }
  [[nodiscard]] CloudError Error() const { return error_; }
  [[nodiscard]] bool IsLoggedIn() const { return logged_in_; }

 private:
  struct Step {
    CloudStepState state = CloudStepState::kIdle;
    CloudError outcome = CloudError::kNone;
    std::chrono::milliseconds due{0};
  };

  void Begin(Step& step, CloudError outcome) const;
  /// Whether the step has come to a good end just now.
  bool Finish(Step& step);

  std::chrono::milliseconds uptime_{0};
  Step login_;
  Step events_;
  Step stream_info_;
  CloudError error_ = CloudError::kNone;
  bool logged_in_ = false;
  bool has_events_ = false;
  std::size_t asked_event_ = 0;
  std::optional<std::size_t> stream_event_;
};

}  // namespace simulator
