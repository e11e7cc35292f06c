#include "simulator/remote_events.h"

#include <iterator>

namespace simulator {
namespace {

enum Kind : std::uint8_t {
  kRec = 1,
  kFullAuto = 2,
  kIris = 3,
  kGain = 4,
  kShutter = 6,
  kWhiteBalance = 7,
  kZoom = 8,
  kFocus = 9,
  kDisplay = 11,
  kStreaming = 13,
  kTally = 14,
  kStudioTally = 15,
  kZoomBar = 17,
  kPaintRed = 20,
  kPaintBlue = 21,
  kPaintField = 22,
  kIfbStreaming = 24,
  kZoomSeesaw = 26,
};

/// A key that sets one control. A key may stand in several rows.
struct SettingKey {
  Kind kind;
  std::uint8_t key;
  std::uint8_t value;
  std::uint8_t Controls::*control;
};

constexpr SettingKey kSettingKeys[] = {
    {kFullAuto, 0, 1, &Controls::full_auto},
    {kFullAuto, 1, 0, &Controls::full_auto},
    {kIris, 0, 0, &Controls::iris_mode},
    {kIris, 1, 1, &Controls::iris_mode},
    {kGain, 0, 0, &Controls::gain_mode},
    {kGain, 1, 3, &Controls::gain_mode},
    {kGain, 2, 0, &Controls::gain_mode},
    {kGain, 3, 1, &Controls::gain_mode},
    {kGain, 4, 2, &Controls::gain_mode},
    {kGain, 5, 5, &Controls::gain_mode},
    {kShutter, 0, 0, &Controls::shutter_mode},
    {kShutter, 1, 1, &Controls::shutter_mode},
    {kShutter, 2, 4, &Controls::shutter_mode},
    {kShutter, 3, 5, &Controls::shutter_mode},
    {kShutter, 4, 2, &Controls::shutter_mode},
    {kWhiteBalance, 0, 0, &Controls::white_balance_mode},
    {kWhiteBalance, 1, 3, &Controls::white_balance_mode},
    {kWhiteBalance, 2, 1, &Controls::white_balance_mode},
    {kWhiteBalance, 3, 2, &Controls::white_balance_mode},
    {kWhiteBalance, 4, 0, &Controls::white_balance_mode},
    {kFocus, 0, 3, &Controls::focus_mode},
    {kFocus, 1, 1, &Controls::focus_mode},
    {kDisplay, 0, 0, &Controls::display_hidden},
    {kDisplay, 1, 1, &Controls::display_hidden},
    {kStreaming, 0, 1, &Controls::streaming},
    {kStreaming, 1, 0, &Controls::streaming},
    {kTally, 0, 0, &Controls::tally_by_web},
    {kTally, 1, 1, &Controls::tally_by_web},
    {kTally, 2, 1, &Controls::tally_on},
    {kTally, 3, 0, &Controls::tally_on},
    {kTally, 4, 1, &Controls::tally_by_web},
    {kTally, 4, 1, &Controls::tally_on},
    {kTally, 5, 1, &Controls::tally_by_web},
    {kTally, 5, 0, &Controls::tally_on},
    {kStudioTally, 0, 0, &Controls::studio_tally},
    {kStudioTally, 1, 1, &Controls::studio_tally},
    {kStudioTally, 2, 2, &Controls::studio_tally},
    {kIfbStreaming, 0, 1, &Controls::ifb_active},
    {kIfbStreaming, 1, 0, &Controls::ifb_active},
};

Reply PressRecKey(Camera& camera, std::uint8_t key) {
  if (key == 0) {
    return ResultOnly(camera.StartRecording());
  }
  camera.StopRecording();
  return ResultOnly(Result::kSuccess);
}

/// Keys 0 to 2 are three steps towards tele, 3 to 5 three steps towards wide.
Reply PressZoomKey(Camera& camera, std::uint8_t key) {
  constexpr int kSteps[] = {10, 30, 90, -10, -30, -90};
  if (key < std::size(kSteps)) {
    camera.ZoomTo(camera.ZoomPosition() + kSteps[key]);
  }
  return ResultOnly(Result::kSuccess);
}

/// Keys 6 and 7 are one step of red up and down, 8 and 9 of blue. Other keys are not for the paint.
void StepPaint(Controls& controls, std::uint8_t key) {
  switch (key) {
    case 6:
      ++controls.paint_red;
      break;
    case 7:
      --controls.paint_red;
      break;
    case 8:
      ++controls.paint_blue;
      break;
    case 9:
      --controls.paint_blue;
      break;
    default:
      break;
  }
}

void OperateZoom(Camera& camera, std::uint8_t direction, std::uint8_t speed) {
  constexpr std::uint8_t kWide = 1;
  constexpr std::uint8_t kTele = 2;
  if (direction == kWide) {
    camera.RunZoom(0, speed);
  } else if (direction == kTele) {
    camera.RunZoom(Camera::kZoomTele, speed);
  } else {
    camera.StopZoom();
  }
}

}  // namespace

Reply PressKey(Camera& camera, const Bytes& payload) {
  const std::uint8_t kind = payload[0];
  const std::uint8_t key = payload[1];
  if (kind == kRec) {
    return PressRecKey(camera, key);
  }
  if (kind == kZoom) {
    return PressZoomKey(camera, key);
  }
  if (kind == kWhiteBalance) {
    StepPaint(camera.controls(), key);
  }
  for (const SettingKey& row : kSettingKeys) {
    if (row.kind == kind && row.key == key) {
      camera.controls().*row.control = row.value;
    }
  }
  return ResultOnly(Result::kSuccess);
}

Reply MoveSlider(Camera& camera, const Bytes& payload) {
  const std::uint8_t kind = payload[0];
  const auto position = static_cast<std::int16_t>(payload[1] << 8 | payload[2]);
  if (kind == kZoomBar) {
    camera.ZoomTo(position);
  } else if (kind == kPaintRed) {
    camera.controls().paint_red = position;
  } else if (kind == kPaintBlue) {
    camera.controls().paint_blue = position;
  }
  return ResultOnly(Result::kSuccess);
}

Reply MoveField(Camera& camera, const Bytes& payload) {
  if (payload[0] == kPaintField) {
    camera.controls().paint_red = payload[1];
    camera.controls().paint_blue = payload[2];
  }
  return ResultOnly(Result::kSuccess);
}

Reply OperateZoomSwitch(Camera& camera, const Bytes& payload) {
  OperateZoom(camera, payload[0], payload[1]);
  return ResultOnly(Result::kSuccess);
}

Reply OperateSeesawSwitch(Camera& camera, const Bytes& payload) {
  if (payload[0] == kZoomSeesaw) {
    OperateZoom(camera, payload[1], payload[2]);
  }
  return ResultOnly(Result::kSuccess);
}

}  // namespace simulator
