#include "simulator/status_image.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <string_view>
#include <system_error>

namespace simulator {
namespace {

constexpr char kImagePath[] = "/var/run/camera_memory";
constexpr off_t kAreaAddress = 0x21e80000;
constexpr off_t kBlockAddress = 0x21e9d400;

constexpr std::uint8_t kModelRv130 = 3;
constexpr std::uint8_t kDestinationUs = 1;
constexpr std::uint8_t kNtpSynchronised = 2;

/// Texts of the modes in which a value is shown; the last one serves every higher mode, too.
constexpr std::string_view kIrisTexts[] = {"F2.8", "F4.0"};
constexpr std::string_view kGainTexts[] = {"0dB", "9dB", "18dB", "6dB", "6dB", "30dB"};
constexpr std::string_view kShutterTexts[] = {"OFF", "1/100", "EEI", "EEI", "1/250", "1/60.2"};
constexpr std::string_view kWhiteBalanceTexts[] = {"3200K", "4300K", "5600K", "FAW"};

template <std::size_t count>
std::string_view ModeText(const std::string_view (&texts)[count], std::size_t mode) {
  return texts[std::min(mode, count - 1)];
}

/// A text of at most `width` bytes; the rest of its field stays NUL.
void PutText(StatusBlock& block, std::size_t offset, std::size_t width, std::string_view text) {
  const std::string_view kept = text.substr(0, width);
  std::copy(kept.begin(), kept.end(), block.begin() + static_cast<std::ptrdiff_t>(offset));
}

/// Big-endian.
void PutI16(StatusBlock& block, std::size_t offset, std::int16_t number) {
  block[offset] = static_cast<std::uint8_t>(number >> 8);
  block[offset + 1] = static_cast<std::uint8_t>(number);
}

void PutIdentity(StatusBlock& block) {
  block[516] = kModelRv130;
  block[517] = kDestinationUs;
  PutText(block, 228, 9, "13250042");
  block[46] = kNtpSynchronised;
}

void PutExposure(StatusBlock& block, const Controls& controls) {
  block[62] = controls.full_auto;
  block[63] = controls.iris_mode;
  PutText(block, 64, 5, ModeText(kIrisTexts, controls.iris_mode));
  block[70] = controls.gain_mode;
  PutText(block, 71, 5, ModeText(kGainTexts, controls.gain_mode));
  PutText(block, 76, 4, "0dB");
  PutText(block, 80, 4, "9dB");
  PutText(block, 84, 4, "18dB");
  block[88] = controls.shutter_mode;
  PutText(block, 90, 8, ModeText(kShutterTexts, controls.shutter_mode));
  block[410] = 0;  // AE off
  PutText(block, 412, 4, "0");
  PutText(block, 486, 5, "0");
  PutText(block, 491, 5, "0");
}

void PutWhiteBalance(StatusBlock& block, const Controls& controls) {
  block[98] = controls.white_balance_mode;
  PutText(block, 100, 9, ModeText(kWhiteBalanceTexts, controls.white_balance_mode));
  PutText(block, 620, 10, "3200K");
  PutText(block, 630, 10, "4300K");
  PutText(block, 640, 10, "5600K");
  constexpr std::uint8_t kPaintScale = 32;
  block[383] = kPaintScale;
  block[385] = kPaintScale;
  PutI16(block, 386, controls.paint_red);
  PutI16(block, 388, controls.paint_blue);
  PutText(block, 390, 10, "R: " + std::to_string(controls.paint_red));
  PutText(block, 400, 10, "B: " + std::to_string(controls.paint_blue));
}

void PutUserButtons(StatusBlock& block) {
  struct Label {
    std::size_t offset;
    std::string_view text;
  };
  constexpr Label kLabels[] = {
      {238, "Focus Assist"},  {258, "Zebra"},      {278, "Marker"},      {298, "Stabiliser"},
      {318, "Black Stretch"}, {338, "Rec Review"}, {358, "Clip Review"}, {520, "Load Picture"},
      {540, "Spot Meter"},    {560, "Colour Bar"}, {580, "None"},        {600, "Return Video"},
  };
  for (const Label& label : kLabels) {
    PutText(block, label.offset, 20, label.text);
  }
}

void PutEnableFlags(StatusBlock& block) {
  block[115] = 1;  // the camera control page
  std::fill(block.begin() + 120, block.begin() + 128, std::uint8_t{1});
  std::fill(block.begin() + 130, block.begin() + 222, std::uint8_t{1});
}

void PutCloud(StatusBlock& block, const CloudClient& cloud) {
  block[504] = static_cast<std::uint8_t>(cloud.LoginState());
  block[505] = static_cast<std::uint8_t>(cloud.EventsState());
  block[506] = static_cast<std::uint8_t>(cloud.StreamInfoState());
  block[507] = static_cast<std::uint8_t>(cloud.Error());
}

void PutNumber(StatusBlock& block, std::size_t offset, std::size_t width, std::size_t number) {
  for (std::size_t i = width; i > 0; --i) {
    block[offset + i - 1] = static_cast<std::uint8_t>(number);
    number >>= 8;
  }
}

void PutUpload(StatusBlock& block, const Upload& upload) {
  block[420] = static_cast<std::uint8_t>(upload.phase());
  block[422] = static_cast<std::uint8_t>(upload.Percent());
  block[424] = static_cast<std::uint8_t>(upload.server());
  PutNumber(block, 444, 4, static_cast<std::size_t>(upload.RemainingTime().count()));
  PutNumber(block, 448, 2, upload.TotalFiles());
  PutNumber(block, 450, 2, upload.CurrentFile());
  if (upload.phase() == Upload::Phase::kTrust) {
    constexpr std::uint8_t kKeyOf20Bytes = 1;
    const auto key = upload.ServerKey();
    block[452] = kKeyOf20Bytes;
    std::copy(key.begin(), key.end(), block.begin() + 453);
  } else {
    PutText(block, 452, 30, upload.Message());
  }
}

}  // namespace

StatusBlock MakeStatusBlock(const Camera& camera) {
  const Controls& controls = camera.controls();
  StatusBlock block = {};
  PutIdentity(block);
  block[19] = controls.ifb_active;
  block[52] = controls.focus_mode;
  block[53] = controls.studio_tally;
  PutText(block, 54, 8, "2.5m");
  PutExposure(block, controls);
  PutWhiteBalance(block, controls);
  block[110] = controls.display_hidden;
  PutUpload(block, camera.upload());
  block[416] = 1;  // the characters are mixed into the SDI output alone
  PutUserButtons(block);
  PutEnableFlags(block);
  PutCloud(block, camera.cloud());
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
