#include "simulator/controls.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "simulator/exposure.h"
#include "simulator/lens.h"
#include "simulator/models.h"
#include "simulator/network.h"
#include "simulator/recording.h"
#include "simulator/values.h"

namespace simulator {
namespace {

enum Kind : std::uint8_t {
  kRec = 1,
  kFullAuto = 2,
  kIris = 3,
  kGain = 4,
  kAeLevel = 5,
  kShutter = 6,
  kWhiteBalance = 7,
  kZoom = 8,
  kFocus = 9,
  kUser = 10,
  kDisplay = 11,
  kMenu = 12,
  kStreaming = 13,
  kTally = 14,
  kStudioTally = 15,
  kDetail = 16,
  kZoomBar = 17,
  kFocusBar = 18,
  kIrisBar = 19,
  kPaintRed = 20,
  kPaintBlue = 21,
  kPaintField = 22,
  kIfb = 24,
  kMasterBlack = 25,
  kZoomSeesaw = 26,
  kIrisSeesaw = 27,
  kMasterBlackSeesaw = 28,
  kFocusSeesaw = 29,
  kSystem = 30,
};

// --- When a control can be used -----------------------------------------------------------------

// Each returns why the control cannot be used, in words; null if it can.

const char* Always(const State&) { return nullptr; }
const char* Awake(const State& s) { return s.suspended ? "the camera is suspended" : nullptr; }
const char* ByHand(const State& s) {
  const char* const obstacle = ShootingObstacle(s);
  return obstacle == nullptr && s.full_auto ? "full auto is on" : obstacle;
}

/// The same for a manual control that also depends on a condition.
const char* ByHandIf(const State& s, bool condition, const char* otherwise) {
  const char* const obstacle = ByHand(s);
  return obstacle == nullptr && !condition ? otherwise : obstacle;
}

const char* IrisByHand(const State& s) {
  return ByHandIf(s, s.iris.mode == IrisMode::kManual, "the iris is automatic");
}
const char* GainByHand(const State& s) {
  return ByHandIf(s, s.gain.mode != GainMode::kAlc && s.gain.mode != GainMode::kLolux,
                  "the gain is automatic");
}
const char* AeLevelCounts(const State& s) {
  const char* const obstacle = ShootingObstacle(s);
  return obstacle == nullptr && !AeIsOn(s) ? "nothing is exposed automatically" : obstacle;
}
const char* ShutterByHand(const State& s) {
  return ByHandIf(s, s.shutter.mode != ShutterMode::kOff && s.shutter.mode != ShutterMode::kEei,
                  "the shutter is off or automatic");
}
const char* WhiteCanBeAdjusted(const State& s) {
  return ByHandIf(
      s,
      s.white_balance.mode == WhiteBalanceMode::kA || s.white_balance.mode == WhiteBalanceMode::kB,
      "the white balance is neither A nor B");
}
const char* PaintByHand(const State& s) {
  return ByHandIf(s, s.white_balance.mode != WhiteBalanceMode::kFaw,
                  "the white balance is automatic");
}
const char* FocusByHand(const State& s) {
  const char* const obstacle = ShootingObstacle(s);
  return obstacle == nullptr && s.focus.mode == FocusMode::kAuto ? "the focus is automatic"
                                                                 : obstacle;
}
const char* MenuCanOpen(const State& s) {
  const char* const obstacle = Awake(s);
  return obstacle == nullptr && HasOpenClip(s) ? "the camera is recording" : obstacle;
}
const char* MenuIsUsed(const State& s) {
  const char* const obstacle = Awake(s);
  return obstacle == nullptr && !s.display.menu && s.mode == Mode::kCamera ? "the menu is closed"
                                                                           : obstacle;
}
const char* LampByWeb(const State& s) {
  return s.tally.control == TallyControl::kWeb ? nullptr : "the camera controls its tally lamp";
}
const char* Streams(const State& s) {
  return HasStreaming(s) ? nullptr : "this model has no streaming";
}
const char* ReturnsAudio(const State& s) {
  return HasIfb(s) ? nullptr : "this model or firmware has no return audio";
}

/// Controls that play clips need a clip, and a camera that is free to play it.
const char* ReviewObstacle(const State& s) {
  if (s.mode != Mode::kCamera && s.mode != Mode::kPlay) {
    return "the camera is in another mode than Camera and Play";
  }
  if (HasOpenClip(s)) {
    return "the camera is recording";
  }
  if (s.upload.phase != UploadPhase::kOff) {
    return "an upload is running";
  }
  const bool has_clips = std::any_of(s.slots.begin(), s.slots.end(), [](const Slot& slot) {
    return HasCard(slot) && !slot.clips.empty();
  });
  return has_clips ? nullptr : "there is no clip";
}

/// What a user switch does is on its label.
template <std::size_t kSwitch>
const char* SwitchIsUsed(const State& s) {
  const std::string& label = s.user[kSwitch].label;
  if (s.suspended) {
    return "the camera is suspended";
  }
  if (label.empty() || label == "None") {
    return "the switch does nothing";
  }
  return label == "Rec Review" || label == "Clip Review" ? ReviewObstacle(s) : ShootingObstacle(s);
}

// --- What a key does ----------------------------------------------------------------------------

using Action = void (*)(State&);

/// Sets a member of a member of the state.
template <auto kPart, auto kMember, auto kValue>
void Set(State& s) {
  s.*kPart.*kMember = kValue;
}

/// Switches a member of a member of the state.
template <auto kPart, auto kMember>
void Toggle(State& s) {
  s.*kPart.*kMember = !(s.*kPart.*kMember);
}

template <bool kOn>
void SetFullAuto(State& s) {
  s.full_auto = kOn;
}

template <int kThirds>
void MoveIris(State& s) {
  StepIris(s, kThirds);
}

void PushAutoIris(State& s) {
  s.iris.mode = IrisMode::kAuto;
  s.iris.stop = CurrentIrisStop(s);
  s.iris.mode = IrisMode::kManual;
}

void GainByHandAgain(State& s) {
  if (s.gain.mode == GainMode::kAlc || s.gain.mode == GainMode::kLolux) {
    s.gain.mode = GainMode::kManualL;
  }
}

template <int kStep>
void StepGain(State& s) {
  int& db = s.gain.db[static_cast<std::size_t>(s.gain.mode)];
  db = std::clamp(db + kStep, kGainLowest, kGainHighest);
}

template <int kStep>
void StepAeLevel(State& s) {
  s.ae.level = std::clamp(s.ae.level + kStep, -kAeLevelEnd, kAeLevelEnd);
}

template <int kStep>
void StepShutter(State& s) {
  Shutter& shutter = s.shutter;
  if (shutter.mode == ShutterMode::kVariable) {
    constexpr int kFineUpTo = 1000;  // tenths of a hertz
    int& tenths = shutter.variable_tenth_hz;
    const bool is_fine = kStep > 0 ? tenths < kFineUpTo : tenths <= kFineUpTo;
    tenths = std::clamp(tenths + kStep * (is_fine ? 1 : 10), kVariableLowest, kVariableHighest);
  } else {
    shutter.step = std::clamp(shutter.step + kStep, 0, static_cast<int>(kShutterSpeeds.size()) - 1);
  }
}

void WhiteByHandAgain(State& s) {
  if (s.white_balance.mode == WhiteBalanceMode::kFaw) {
    s.white_balance.mode = WhiteBalanceMode::kPreset;
  }
}

void AdjustWhite(State& s) {
  WhiteBalance& white = s.white_balance;
  (white.mode == WhiteBalanceMode::kA ? white.a_kelvin : white.b_kelvin) = s.light.kelvin;
}

template <auto kColor, int kStep>
void StepPaint(State& s) {
  int& paint = s.white_balance.*kColor;
  paint = std::clamp(paint + kStep, -kPaintScale, kPaintScale);
}

template <int kPositions>
void StepZoom(State& s) {
  ZoomTo(s, s.zoom.position + kPositions);
}

template <int kPositions>
void MoveFocus(State& s) {
  StepFocus(s, kPositions);
}

void FocusToInfinity(State& s) { s.focus.position = kFocusInfinity; }

void PushAuto(State& s) { PushAutoFocus(s); }

template <auto kControl, int kStep, int kEnd>
void StepLevel(State& s) {
  int& level = (s.*kControl).level;
  level = std::clamp(level + kStep, -kEnd, kEnd);
}
template <int kStep>
constexpr Action kStepBlack = StepLevel<&State::master_black, kStep, kMasterBlackEnd>;
template <int kStep>
constexpr Action kStepDetail = StepLevel<&State::detail, kStep, kDetailEnd>;

template <std::size_t kSwitch>
void PressUserSwitch(State& s) {
  UserSwitch& pressed = s.user[kSwitch];
  pressed.on = !pressed.on;
  if (pressed.label == "AE Lock") {
    s.ae.lock = pressed.on;
  } else if (pressed.label == "Face Detect") {
    s.face_detection = pressed.on;
  } else if (pressed.label == "Rec Review" || pressed.label == "Clip Review") {
    s.mode = s.mode == Mode::kPlay ? Mode::kCamera : Mode::kPlay;
    pressed.on = s.mode == Mode::kPlay;
  }
}

void NextInformation(State& s) {
  constexpr int kKinds = 3;
  s.display.information = (s.display.information + 1) % kKinds;
}

void CloseMenu(State& s) { s.display.menu = false; }

/// The menu itself is not played.
void MoveInMenu(State&) {}

template <bool kOn>
void TakeLamp(State& s) {
  s.tally.control = TallyControl::kWeb;
  s.tally.lamp = kOn;
}

template <bool kOn>
void SwitchIfb(State& s) {
  s.ifb.on = kOn;
}

void Resume(State& s) { s.suspended = false; }

// --- The keys -----------------------------------------------------------------------------------

struct Key {
  std::uint8_t kind;
  std::uint8_t key;
  std::string_view name;
  std::size_t enable_flag;  ///< its offset in the status block; 0: none
  const char* (*obstacle)(const State&);
  Action act;
};

using I = Iris;
using G = Gain;
using Sh = Shutter;
using W = WhiteBalance;
using F = Focus;
using D = Display;
using T = Tally;
using S = State;

constexpr Key kKeys[] = {
    {kRec, 0, "rec start", 0, RecordingObstacle, StartRecording},
    {kRec, 1, "rec stop", 0, Always, StopRecording},
    {kFullAuto, 0, "full auto on", 130, ShootingObstacle, SetFullAuto<true>},
    {kFullAuto, 1, "full auto off", 131, ShootingObstacle, SetFullAuto<false>},
    {kIris, 0, "iris manual", 132, ByHand, Set<&S::iris, &I::mode, IrisMode::kManual>},
    {kIris, 1, "iris auto", 133, ByHand, Set<&S::iris, &I::mode, IrisMode::kAuto>},
    {kIris, 2, "iris open 1", 134, IrisByHand, MoveIris<-1>},
    {kIris, 3, "iris open 2", 135, IrisByHand, MoveIris<-3>},
    {kIris, 4, "iris open 3", 136, IrisByHand, MoveIris<-6>},
    {kIris, 5, "iris close 1", 137, IrisByHand, MoveIris<1>},
    {kIris, 6, "iris close 2", 138, IrisByHand, MoveIris<3>},
    {kIris, 7, "iris close 3", 139, IrisByHand, MoveIris<6>},
    {kIris, 8, "iris push auto", 140, IrisByHand, PushAutoIris},
    {kGain, 0, "gain manual", 141, ByHand, GainByHandAgain},
    {kGain, 1, "gain ALC", 142, ByHand, Set<&S::gain, &G::mode, GainMode::kAlc>},
    {kGain, 2, "gain L", 143, ByHand, Set<&S::gain, &G::mode, GainMode::kManualL>},
    {kGain, 3, "gain M", 144, ByHand, Set<&S::gain, &G::mode, GainMode::kManualM>},
    {kGain, 4, "gain H", 145, ByHand, Set<&S::gain, &G::mode, GainMode::kManualH>},
    {kGain, 5, "gain low light", 146, ByHand, Set<&S::gain, &G::mode, GainMode::kLolux>},
    {kGain, 6, "gain up", 120, GainByHand, StepGain<kGainStep>},
    {kGain, 7, "gain down", 121, GainByHand, StepGain<-kGainStep>},
    {kAeLevel, 0, "AE level up", 193, AeLevelCounts, StepAeLevel<1>},
    {kAeLevel, 1, "AE level down", 194, AeLevelCounts, StepAeLevel<-1>},
    {kShutter, 0, "shutter off", 147, ByHand, Set<&S::shutter, &Sh::mode, ShutterMode::kOff>},
    {kShutter, 1, "shutter manual", 148, ByHand, Set<&S::shutter, &Sh::mode, ShutterMode::kManual>},
    {kShutter, 2, "shutter step", 200, ByHand, Set<&S::shutter, &Sh::mode, ShutterMode::kStep>},
    {kShutter, 3, "shutter variable", 201, ByHand,
     Set<&S::shutter, &Sh::mode, ShutterMode::kVariable>},
    {kShutter, 4, "shutter EEI", 149, ByHand, Set<&S::shutter, &Sh::mode, ShutterMode::kEei>},
    {kShutter, 5, "shutter faster", 151, ShutterByHand, StepShutter<1>},
    {kShutter, 6, "shutter slower", 150, ShutterByHand, StepShutter<-1>},
    {kWhiteBalance, 0, "white manual", 152, ByHand, WhiteByHandAgain},
    {kWhiteBalance, 1, "white FAW", 153, ByHand,
     Set<&S::white_balance, &W::mode, WhiteBalanceMode::kFaw>},
    {kWhiteBalance, 2, "white A", 155, ByHand,
     Set<&S::white_balance, &W::mode, WhiteBalanceMode::kA>},
    {kWhiteBalance, 3, "white B", 156, ByHand,
     Set<&S::white_balance, &W::mode, WhiteBalanceMode::kB>},
    {kWhiteBalance, 4, "white preset", 154, ByHand,
     Set<&S::white_balance, &W::mode, WhiteBalanceMode::kPreset>},
    {kWhiteBalance, 5, "white adjust", 157, WhiteCanBeAdjusted, AdjustWhite},
    {kWhiteBalance, 6, "white paint red up", 192, PaintByHand, StepPaint<&W::paint_red, 1>},
    {kWhiteBalance, 7, "white paint red down", 192, PaintByHand, StepPaint<&W::paint_red, -1>},
    {kWhiteBalance, 8, "white paint blue up", 192, PaintByHand, StepPaint<&W::paint_blue, 1>},
    {kWhiteBalance, 9, "white paint blue down", 192, PaintByHand, StepPaint<&W::paint_blue, -1>},
    {kZoom, 0, "zoom tele 1", 158, ShootingObstacle, StepZoom<10>},
    {kZoom, 1, "zoom tele 2", 159, ShootingObstacle, StepZoom<30>},
    {kZoom, 2, "zoom tele 3", 160, ShootingObstacle, StepZoom<90>},
    {kZoom, 3, "zoom wide 1", 161, ShootingObstacle, StepZoom<-10>},
    {kZoom, 4, "zoom wide 2", 162, ShootingObstacle, StepZoom<-30>},
    {kZoom, 5, "zoom wide 3", 163, ShootingObstacle, StepZoom<-90>},
    {kFocus, 0, "focus manual", 164, ShootingObstacle,
     Set<&S::focus, &F::mode, FocusMode::kManual>},
    {kFocus, 1, "focus auto", 165, ShootingObstacle, Set<&S::focus, &F::mode, FocusMode::kAuto>},
    {kFocus, 2, "focus far 1", 166, FocusByHand, MoveFocus<1>},
    {kFocus, 3, "focus far 2", 167, FocusByHand, MoveFocus<10>},
    {kFocus, 4, "focus far 3", 168, FocusByHand, MoveFocus<50>},
    {kFocus, 5, "focus infinity", 172, FocusByHand, FocusToInfinity},
    {kFocus, 6, "focus near 1", 169, FocusByHand, MoveFocus<-1>},
    {kFocus, 7, "focus near 2", 170, FocusByHand, MoveFocus<-10>},
    {kFocus, 8, "focus near 3", 171, FocusByHand, MoveFocus<-50>},
    {kFocus, 9, "focus push auto", 173, FocusByHand, PushAuto},
    {kMasterBlack, 0, "master black up 1", 122, ShootingObstacle, kStepBlack<1>},
    {kMasterBlack, 1, "master black up 2", 123, ShootingObstacle, kStepBlack<3>},
    {kMasterBlack, 2, "master black up 3", 124, ShootingObstacle, kStepBlack<10>},
    {kMasterBlack, 3, "master black down 1", 125, ShootingObstacle, kStepBlack<-1>},
    {kMasterBlack, 4, "master black down 2", 126, ShootingObstacle, kStepBlack<-3>},
    {kMasterBlack, 5, "master black down 3", 127, ShootingObstacle, kStepBlack<-10>},
    {kDetail, 0, "detail up", 220, ShootingObstacle, kStepDetail<1>},
    {kDetail, 1, "detail down", 221, ShootingObstacle, kStepDetail<-1>},
    {kUser, 0, "user switch 1", 174, SwitchIsUsed<0>, PressUserSwitch<0>},
    {kUser, 1, "user switch 2", 175, SwitchIsUsed<1>, PressUserSwitch<1>},
    {kUser, 2, "user switch 3", 176, SwitchIsUsed<2>, PressUserSwitch<2>},
    {kUser, 3, "user switch 4", 177, SwitchIsUsed<3>, PressUserSwitch<3>},
    {kUser, 4, "user switch 5", 178, SwitchIsUsed<4>, PressUserSwitch<4>},
    {kUser, 5, "user switch 6", 179, SwitchIsUsed<5>, PressUserSwitch<5>},
    {kUser, 6, "user switch 7", 180, SwitchIsUsed<6>, PressUserSwitch<6>},
    {kUser, 7, "user switch 8", 195, SwitchIsUsed<7>, PressUserSwitch<7>},
    {kUser, 8, "user switch 9", 196, SwitchIsUsed<8>, PressUserSwitch<8>},
    {kUser, 9, "user switch 10", 197, SwitchIsUsed<9>, PressUserSwitch<9>},
    {kUser, 10, "user switch 11", 198, SwitchIsUsed<10>, PressUserSwitch<10>},
    {kUser, 11, "lens return", 199, SwitchIsUsed<11>, PressUserSwitch<11>},
    {kDisplay, 0, "display on", 181, Awake, Set<&S::display, &D::on, true>},
    {kDisplay, 1, "display off", 182, Awake, Set<&S::display, &D::on, false>},
    {kDisplay, 2, "character mix SDI", 202, Awake, Toggle<&S::display, &D::mix_sdi>},
    {kDisplay, 3, "character mix HDMI", 203, Awake, Toggle<&S::display, &D::mix_hdmi>},
    {kDisplay, 4, "character mix video", 204, Awake, Toggle<&S::display, &D::mix_video>},
    {kDisplay, 5, "display information", 183, Awake, NextInformation},
    {kDisplay, 6, "status screen", 184, Awake, Toggle<&S::display, &D::status_screen>},
    {kMenu, 0, "menu", 185, MenuCanOpen, Toggle<&S::display, &D::menu>},
    {kMenu, 1, "menu cancel", 187, MenuIsUsed, CloseMenu},
    {kMenu, 2, "menu set", 186, MenuIsUsed, MoveInMenu},
    {kMenu, 3, "menu up", 188, MenuIsUsed, MoveInMenu},
    {kMenu, 4, "menu down", 190, MenuIsUsed, MoveInMenu},
    {kMenu, 5, "menu left", 189, MenuIsUsed, MoveInMenu},
    {kMenu, 6, "menu right", 191, MenuIsUsed, MoveInMenu},
    {kStreaming, 0, "streaming start", 0, Streams, StartStreaming},
    {kStreaming, 1, "streaming stop", 0, Streams, StopStreaming},
    {kTally, 0, "tally by the camera", 0, Always,
     Set<&S::tally, &T::control, TallyControl::kCamera>},
    {kTally, 1, "tally by the web", 0, Always, Set<&S::tally, &T::control, TallyControl::kWeb>},
    {kTally, 2, "tally on", 0, LampByWeb, Set<&S::tally, &T::lamp, true>},
    {kTally, 3, "tally off", 0, LampByWeb, Set<&S::tally, &T::lamp, false>},
    {kTally, 4, "tally on, by the web", 0, Always, TakeLamp<true>},
    {kTally, 5, "tally off, by the web", 0, Always, TakeLamp<false>},
    {kStudioTally, 0, "studio tally off", 0, Always, Set<&S::tally, &T::studio, StudioTally::kOff>},
    {kStudioTally, 1, "studio tally program", 0, Always,
     Set<&S::tally, &T::studio, StudioTally::kProgram>},
    {kStudioTally, 2, "studio tally preview", 0, Always,
     Set<&S::tally, &T::studio, StudioTally::kPreview>},
    {kIfb, 0, "return audio start", 0, ReturnsAudio, SwitchIfb<true>},
    {kIfb, 1, "return audio stop", 0, ReturnsAudio, SwitchIfb<false>},
    {kSystem, 0, "resume", 0, Always, Resume},
};

const Key* FindKey(std::uint8_t kind, std::uint8_t key) {
  const auto* const row = std::find_if(std::begin(kKeys), std::end(kKeys), [&](const Key& k) {
    return k.kind == kind && k.key == key;
  });
  return row != std::end(kKeys) ? row : nullptr;
}

/// Flags without a key of their own: one for each group, and those of the zoom.
struct GroupFlag {
  std::size_t offset;
  const char* (*obstacle)(const State&);
};

constexpr GroupFlag kGroupFlags[] = {
    {205, ShootingObstacle},  // full auto
    {206, ByHand},            // iris
    {207, ByHand},            // gain
    {208, ByHand},            // shutter
    {209, ByHand},            // white balance
    {210, ShootingObstacle},  // zoom
    {211, ShootingObstacle},  // focus
    {212, AeLevelCounts},     // AE level
    {213, ShootingObstacle},  // zoom: tele, wide, presets, clearing them
    {214, ShootingObstacle}, {215, ShootingObstacle}, {216, ShootingObstacle},
};

/// The zoom's presets can be used once they are set.
struct PresetFlag {
  std::size_t offset;
  const char* setting;
};

constexpr PresetFlag kPresetFlags[] = {{217, "preset_a"}, {218, "preset_b"}, {219, "preset_c"}};

// --- Sliders, the field, switches ---------------------------------------------------------------

struct Slider {
  std::uint8_t kind;
  std::string_view name;
  const char* (*obstacle)(const State&);
  void (*move)(State&, int position);
};

void SetPaintRed(State& s, int position) {
  s.white_balance.paint_red = std::clamp(position, -kPaintScale, kPaintScale);
}

void SetPaintBlue(State& s, int position) {
  s.white_balance.paint_blue = std::clamp(position, -kPaintScale, kPaintScale);
}

void SetFocus(State& s, int position) {
  s.focus.position = std::clamp(position, 0, kFocusInfinity);
}

/// The bar runs from 0, open, to 999, closed.
void SetIris(State& s, int position) {
  constexpr int kBarEnd = 999;
  constexpr int kStops = static_cast<int>(kIrisStops.size());
  s.iris.stop = std::clamp(position, 0, kBarEnd) * (kStops - 1) / kBarEnd;
}

constexpr Slider kSliders[] = {
    {kZoomBar, "zoom bar", ShootingObstacle, ZoomTo},
    {kFocusBar, "focus bar", FocusByHand, SetFocus},
    {kIrisBar, "iris bar", IrisByHand, SetIris},
    {kPaintRed, "white paint red", PaintByHand, SetPaintRed},
    {kPaintBlue, "white paint blue", PaintByHand, SetPaintBlue},
};

struct Seesaw {
  std::uint8_t kind;
  std::string_view name;
  std::string_view first;   ///< what direction 1 is called
  std::string_view second;  ///< what direction 2 is called
  Direction first_direction;
  const char* (*obstacle)(const State&);
  void (*run)(State&, Direction direction, int speed);
};

constexpr Seesaw kSeesaws[] = {
    {kZoomSeesaw, "zoom", "wide", "tele", Direction::kDown, ShootingObstacle, RunZoom},
    {kIrisSeesaw, "iris", "open", "close", Direction::kDown, IrisByHand, RunIris},
    {kMasterBlackSeesaw, "master black", "up", "down", Direction::kUp, ShootingObstacle,
     RunMasterBlack},
    {kFocusSeesaw, "focus", "far", "near", Direction::kUp, FocusByHand, RunFocus},
};

template <typename Row, std::size_t count>
const Row* FindKind(const Row (&rows)[count], std::uint8_t kind) {
  const auto* const row = std::find_if(std::begin(rows), std::end(rows),
                                       [kind](const Row& r) { return r.kind == kind; });
  return row != std::end(rows) ? row : nullptr;
}

Reply Operate(State& state, const Seesaw& seesaw, std::uint8_t direction, int speed) {
  const Direction second_direction =
      seesaw.first_direction == Direction::kUp ? Direction::kDown : Direction::kUp;
  seesaw.run(state,
             direction == 1   ? seesaw.first_direction
             : direction == 2 ? second_direction
                              : Direction::kStopped,
             speed);
  return ResultOnly(Result::kSuccess);
}

std::string Describe(const Seesaw& seesaw, std::uint8_t direction, int speed) {
  const std::string name = std::string(seesaw.name) + " seesaw ";
  if (direction != 1 && direction != 2) {
    return name + "stop";
  }
  return name + std::string(direction == 1 ? seesaw.first : seesaw.second) + ", speed " +
         std::to_string(speed);
}

int Position(const Bytes& payload) {
  return static_cast<std::int16_t>(payload[1] << 8 | payload[2]);
}

constexpr Refusal kUnknownControl = {"the camera has no such control", Result::kRequestedError};

std::string Unknown(const char* what, const Bytes& payload) {
  return std::string(what) + " of unknown kind " + std::to_string(payload[0]);
}

}  // namespace

Reply PressKey(Camera& camera, const Bytes& payload) {
  FindKey(payload[0], payload[1])->act(camera.state());
  return ResultOnly(Result::kSuccess);
}

Reply MoveSlider(Camera& camera, const Bytes& payload) {
  FindKind(kSliders, payload[0])->move(camera.state(), Position(payload));
  return ResultOnly(Result::kSuccess);
}

Reply MoveField(Camera& camera, const Bytes& payload) {
  SetPaintRed(camera.state(), payload[1] - kPaintScale);
  SetPaintBlue(camera.state(), payload[2] - kPaintScale);
  return ResultOnly(Result::kSuccess);
}

Reply OperateZoomSwitch(Camera& camera, const Bytes& payload) {
  return Operate(camera.state(), *FindKind(kSeesaws, kZoomSeesaw), payload[0], payload[1]);
}

Reply OperateSeesawSwitch(Camera& camera, const Bytes& payload) {
  return Operate(camera.state(), *FindKind(kSeesaws, payload[0]), payload[1], payload[2]);
}

Refusal RefuseKey(const State& state, const Bytes& payload) {
  const Key* const key = FindKey(payload[0], payload[1]);
  return key != nullptr ? Refusal{key->obstacle(state)} : kUnknownControl;
}

Refusal RefuseSlider(const State& state, const Bytes& payload) {
  const Slider* const slider = FindKind(kSliders, payload[0]);
  return slider != nullptr ? Refusal{slider->obstacle(state)} : kUnknownControl;
}

Refusal RefuseField(const State& state, const Bytes& payload) {
  return payload[0] == kPaintField ? Refusal{PaintByHand(state)} : kUnknownControl;
}

Refusal RefuseZoomSwitch(const State& state, const Bytes&) { return {ShootingObstacle(state)}; }

Refusal RefuseSeesaw(const State& state, const Bytes& payload) {
  const Seesaw* const seesaw = FindKind(kSeesaws, payload[0]);
  return seesaw != nullptr ? Refusal{seesaw->obstacle(state)} : kUnknownControl;
}

std::string DescribeKey(const Bytes& payload) {
  const Key* const key = FindKey(payload[0], payload[1]);
  return key != nullptr ? std::string(key->name)
                        : Unknown("key", payload) + ", code " + std::to_string(payload[1]);
}

std::string DescribeSlider(const Bytes& payload) {
  const Slider* const slider = FindKind(kSliders, payload[0]);
  return (slider != nullptr ? std::string(slider->name) : Unknown("slider", payload)) + " to " +
         std::to_string(Position(payload));
}

std::string DescribeField(const Bytes& payload) {
  return (payload[0] == kPaintField ? "white paint field" : Unknown("field", payload)) + " to " +
         std::to_string(payload[1]) + ", " + std::to_string(payload[2]);
}

std::string DescribeZoomSwitch(const Bytes& payload) {
  return Describe(*FindKind(kSeesaws, kZoomSeesaw), payload[0], payload[1]);
}

std::string DescribeSeesaw(const Bytes& payload) {
  const Seesaw* const seesaw = FindKind(kSeesaws, payload[0]);
  return seesaw != nullptr ? Describe(*seesaw, payload[1], payload[2]) : Unknown("seesaw", payload);
}

std::vector<EnableFlag> EnableFlags(const State& state, const SettingsFiles& settings) {
  std::vector<EnableFlag> flags;
  for (const Key& key : kKeys) {
    if (key.enable_flag != 0) {
      flags.push_back({key.enable_flag, key.obstacle(state) == nullptr});
    }
  }
  for (const GroupFlag& group : kGroupFlags) {
    flags.push_back({group.offset, group.obstacle(state) == nullptr});
  }
  for (const PresetFlag& preset : kPresetFlags) {
    flags.push_back({preset.offset,
                     ShootingObstacle(state) == nullptr && settings.PresetIsSet(preset.setting)});
  }
  return flags;
}

}  // namespace simulator
