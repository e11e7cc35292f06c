// The simulated camera's state.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "simulator/clips.h"
#include "simulator/cloud_client.h"
#include "simulator/settings_files.h"
#include "simulator/time_code.h"
#include "simulator/upload.h"

namespace simulator {

/// First byte of a reply's payload.
enum class Result : std::uint8_t { kSuccess = 0, kRequestedError = 1, kDisableError = 2 };

/// 1 or 0 for the pages planning metadata, edit metadata, view remote and settings.
using PagePermissions = std::array<std::uint8_t, 4>;

/// A card slot.
struct Slot {
  bool write_protected = false;
  std::uint16_t remaining_minutes = 0;  ///< of recording time, when the camera was switched on
  Clips clips;
};

/// What keys and switches set. The mode numbers are those of the camera status block.
struct Controls {
  std::uint8_t full_auto = 0;
  std::uint8_t iris_mode = 0;
  std::uint8_t gain_mode = 0;
  std::uint8_t shutter_mode = 1;
  std::uint8_t white_balance_mode = 0;
  std::int16_t paint_red = 0;
  std::int16_t paint_blue = 0;
  std::uint8_t focus_mode = 3;
  std::uint8_t display_hidden = 0;
  std::uint8_t studio_tally = 0;  ///< 1 program, 2 preview
  std::uint8_t tally_on = 0;
  std::uint8_t tally_by_web = 0;  ///< whether the web remote has control of the lamp
  std::uint8_t streaming = 0;
  std::uint8_t ifb_active = 0;
  bool monitor_on = false;
};

/// A camera with a card in each slot, slot A selected. It lives in its own time, which `AdvanceTo`
/// moves: the time code runs, the zoom travels, recording uses up the card.
class Camera {
 public:
  /// Zoom positions run from 0, the wide end, to this one, the tele end.
  static constexpr int kZoomTele = 999;

  /// Moves the camera's time on. `uptime`: since the camera was switched on; never goes back.
  void AdvanceTo(std::chrono::milliseconds uptime);

  /// Disabled while the card is write-protected or full; no change while recording already.
  Result StartRecording();
  /// Closes the clip, if one is being recorded.
  void StopRecording();
  [[nodiscard]] bool IsRecording() const { return recording_; }

  /// Starts the zoom's way to a position; one beyond an end means that end.
  void ZoomTo(int position);
  /// Runs the zoom towards an end until `StopZoom`. `speed`: 0 (stands still) to 255.
  void RunZoom(int end, int speed);
  void StopZoom();
  [[nodiscard]] int ZoomPosition() const { return static_cast<int>(zoom_position_); }
  [[nodiscard]] bool IsZooming() const { return ZoomPosition() != zoom_target_; }

  /// Free run, 29.97 drop-frame, from 01:00:00.00 on.
  [[nodiscard]] TimeCode CurrentTimeCode() const;

  /// The recording time that is left in slot A.
  [[nodiscard]] std::uint16_t RemainingMinutesOfSlotA() const;
  Slot& SlotA() { return slot_a_; }
  [[nodiscard]] const Slot& SlotA() const { return slot_a_; }
  Slot& SlotB() { return slot_b_; }
  [[nodiscard]] const Slot& SlotB() const { return slot_b_; }

  /// The upload of clips to the FTP servers.
  Upload& upload() { return upload_; }
  [[nodiscard]] const Upload& upload() const { return upload_; }

  [[nodiscard]] const PagePermissions& AllowedPages() const { return allowed_pages_; }

  Controls& controls() { return controls_; }
  [[nodiscard]] const Controls& controls() const { return controls_; }

  CloudClient& cloud() { return cloud_; }
  [[nodiscard]] const CloudClient& cloud() const { return cloud_; }

  /// Takes over what the settings files say now.
  void ReloadSettings() { news_ = settings_.Reload(); }

  /// What has happened since the last call beside what `Summary` tells, in lines for its user.
  [[nodiscard]] std::vector<std::string> TakeNews() { return std::exchange(news_, {}); }

  /// What the camera is doing, in one line for its user. The same text means the same state.
  [[nodiscard]] std::string Summary() const;

 private:
  std::chrono::milliseconds uptime_{0};
  bool recording_ = false;
  TimeCode recording_from_{};
  std::chrono::milliseconds recorded_{0};
  double zoom_position_ = 0;
  int zoom_target_ = 0;
  double zoom_speed_ = 0;  ///< positions per second
  Slot slot_a_{false, 95, RecordedClips('A', 12)};
  Slot slot_b_{false, 120, RecordedClips('B', 33)};
  Upload upload_;
  PagePermissions allowed_pages_{1, 1, 1, 1};
  Controls controls_;
  CloudClient cloud_;
  SettingsFiles settings_;
  std::vector<std::string> news_;
};

}  // namespace simulator
