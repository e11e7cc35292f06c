#include "simulator/status_image.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <string_view>
#include <system_error>

#include "simulator/controls.h"
#include "simulator/exposure.h"
#include "simulator/letters.h"
#include "simulator/network.h"
#include "simulator/upload.h"
#include "simulator/values.h"

namespace simulator {
namespace {

constexpr char kImagePath[] = "/var/run/camera_memory";
constexpr off_t kAreaAddress = 0x21e80000;
constexpr off_t kBlockAddress = 0x21e9d400;

/// A text of at most `width` bytes; the rest of its field stays NUL.
void PutText(StatusBlock& block, std::size_t offset, std::size_t width, std::string_view text) {
  const std::string_view kept = text.substr(0, width);
  std::copy(kept.begin(), kept.end(), block.begin() + static_cast<std::ptrdiff_t>(offset));
}

/// Big-endian.
void PutI16(StatusBlock& block, std::size_t offset, int number) {
  block[offset] = static_cast<std::uint8_t>(number >> 8);
  block[offset + 1] = static_cast<std::uint8_t>(number);
}

template <typename Value>
std::uint8_t Byte(Value value) {
  return static_cast<std::uint8_t>(value);
}

void PutIdentity(StatusBlock& block, const State& state) {
  block[46] = Byte(state.ntp.status);
  PutText(block, 228, 9, state.serial);
  block[516] = Byte(state.model);
  block[517] = Byte(state.destination);
}

void PutTally(StatusBlock& block, const Tally& tally) { block[53] = Byte(tally.studio); }

std::uint8_t FocusCode(const State& state) {
  switch (state.focus.mode) {
    case FocusMode::kAuto:
      return state.face_detection ? 0 : 1;
    case FocusMode::kOnePush:
      return 2;
    case FocusMode::kManual:
      break;
  }
  return state.face_detection ? 4 : 3;
}

std::uint8_t IrisCode(const State& state) {
  if (!IrisIsAutomatic(state)) {
    return 0;
  }
  return state.ae.lock ? 2 : 1;
}

std::uint8_t GainCode(const State& state) {
  if (GainIsAutomatic(state)) {
    return state.ae.lock ? 4 : 3;
  }
  return state.gain.mode == GainMode::kLolux ? 5 : Byte(state.gain.mode);
}

std::uint8_t ShutterCode(const State& state) {
  if (ShutterIsAutomatic(state)) {
    return state.ae.lock ? 3 : 2;
  }
  switch (state.shutter.mode) {
    case ShutterMode::kOff:
      return 0;
    case ShutterMode::kStep:
      return 4;
    case ShutterMode::kVariable:
      return 5;
    case ShutterMode::kUnknown:
      return 255;
    case ShutterMode::kManual:
    case ShutterMode::kEei:
      break;
  }
  return 1;
}

std::uint8_t WhiteCode(const State& state) {
  if (WhiteIsAutomatic(state)) {
    return state.ae.lock ? 4 : 3;
  }
  return Byte(state.white_balance.mode);
}

std::uint8_t AeCode(const State& state) {
  if (!AeIsOn(state)) {
    return 0;
  }
  return state.face_detection ? 2 : 1;
}

void PutExposure(StatusBlock& block, const State& state) {
  block[52] = FocusCode(state);
  PutText(block, 54, 8, FocusLetter(state));
  block[62] = state.full_auto ? 1 : 0;
  block[63] = IrisCode(state);
  PutText(block, 64, 5, IrisLetter(state));
  block[70] = GainCode(state);
  PutText(block, 71, 5, GainLetter(state));
  PutText(block, 76, 4, DecibelText(state.gain.db[0]));
  PutText(block, 80, 4, DecibelText(state.gain.db[1]));
  PutText(block, 84, 4, DecibelText(state.gain.db[2]));
  block[88] = ShutterCode(state);
  PutText(block, 90, 8, ShutterLetter(state));
  block[410] = AeCode(state);
  PutText(block, 412, 4, AeLetter(state));
  PutText(block, 486, 5, SignedText(state.master_black.level));
  PutText(block, 491, 5, SignedText(state.detail.level));
}

void PutWhiteBalance(StatusBlock& block, const State& state) {
  const WhiteBalance& white = state.white_balance;
  block[98] = WhiteCode(state);
  PutText(block, 100, 9, WhiteLetter(state));
  PutI16(block, 382, kPaintScale);
  PutI16(block, 384, kPaintScale);
  PutI16(block, 386, white.paint_red);
  PutI16(block, 388, white.paint_blue);
  PutText(block, 390, 10, "R: " + SignedText(white.paint_red));
  PutText(block, 400, 10, "B: " + SignedText(white.paint_blue));
  PutText(block, 620, 10, KelvinText(white.preset_kelvin));
  PutText(block, 630, 10, KelvinText(white.a_kelvin));
  PutText(block, 640, 10, KelvinText(white.b_kelvin));
}

void PutDisplay(StatusBlock& block, const Display& display) {
  block[110] = display.on ? 0 : 1;
  block[416] = display.mix_sdi ? 1 : 0;
  block[417] = display.mix_hdmi ? 1 : 0;
  block[418] = display.mix_video ? 1 : 0;
}

void PutUserLabels(StatusBlock& block, const State& state) {
  constexpr std::array<std::size_t, 12> kOffsets = {238, 258, 278, 298, 318, 338,
                                                    358, 520, 540, 560, 580, 600};
  for (std::size_t i = 0; i < kOffsets.size(); ++i) {
    PutText(block, kOffsets[i], 20, state.user[i].label);
  }
}

void PutEnableFlags(StatusBlock& block, const Camera& camera) {
  block[115] = camera.state().pages.camera_control ? 1 : 0;
  for (const EnableFlag& flag : EnableFlags(camera.state(), camera.settings())) {
    block[flag.offset] = flag.enabled ? 1 : 0;
  }
}

void PutCloud(StatusBlock& block, const Cloud& cloud) {
  block[504] = Byte(cloud.login.step);
  block[505] = Byte(cloud.event_list.step);
  block[506] = Byte(cloud.stream_info.step);
  block[507] = Byte(cloud.error);
}

/// Big-endian.
void PutNumber(StatusBlock& block, std::size_t offset, std::size_t width, std::int64_t number) {
  for (std::size_t i = width; i > 0; --i) {
    block[offset + i - 1] = static_cast<std::uint8_t>(number);
    number >>= 8;
  }
}

/// Hexadecimal digits as bytes.
void PutKey(StatusBlock& block, std::size_t offset, const std::string& digits) {
  for (std::size_t i = 0; i + 2 <= digits.size(); i += 2) {
    block[offset + i / 2] =
        static_cast<std::uint8_t>(std::strtoul(digits.substr(i, 2).c_str(), nullptr, 16));
  }
}

void PutUpload(StatusBlock& block, const Upload& upload) {
  block[420] = Byte(upload.phase);
  block[421] = Byte(upload.second_job);
  block[422] = Byte(UploadPercent(upload));
  block[423] = Byte(upload.error);
  block[424] = Byte(upload.server);
  PutNumber(block, 444, 4, UploadRemainingTime(upload).count());
  PutNumber(block, 448, 2, static_cast<std::int64_t>(upload.files.size()));
  PutNumber(block, 450, 2, CurrentFile(upload));
  if (upload.phase == UploadPhase::kTrust) {
    const FtpServer& server = upload.servers[static_cast<std::size_t>(upload.server)];
    block[452] = Byte(server.key_type);
    PutKey(block, 453, server.key);
  } else {
    PutText(block, 452, 30, UploadMessage(upload));
  }
}

}  // namespace

StatusBlock MakeStatusBlock(const Camera& camera) {
  const State& state = camera.state();
  StatusBlock block = {};
  PutIdentity(block, state);
  block[19] = IfbIsActive(state) ? 1 : 0;
  PutTally(block, state.tally);
  PutExposure(block, state);
  PutWhiteBalance(block, state);
  PutDisplay(block, state.display);
  PutUserLabels(block, state);
  PutEnableFlags(block, camera);
  PutUpload(block, state.upload);
  PutCloud(block, state.cloud);
  return block;
}

StatusImage::StatusImage(const Camera& camera)
    : file_(open(kImagePath, O_RDWR | O_CREAT | O_CLOEXEC, 0644)),
      written_(MakeStatusBlock(camera)) {
  Write(written_);
}

void StatusImage::Update(const Camera& camera) {
  const StatusBlock block = MakeStatusBlock(camera);
  if (block != written_) {
    Write(block);
    written_ = block;
  }
}

void StatusImage::Write(const StatusBlock& block) const {
  constexpr off_t kOffset = kBlockAddress - kAreaAddress;
  if (pwrite(file_.Get(), block.data(), block.size(), kOffset) !=
      static_cast<ssize_t>(block.size())) {
    throw std::system_error(errno, std::generic_category(), kImagePath);
  }
}

}  // namespace simulator
