#include "streaming/capabilities.h"

#include "core/dlog.h"
#include "core/text.h"
#include "status/camera_status_block.h"
#include "streaming/streaming_settings.h"

namespace {

using camera_status::CameraStatusBlock;

constexpr std::uint8_t kModelRv130 = 3;
constexpr std::uint8_t kModelRv140 = 4;

bool CanStream(std::uint8_t model) { return model == kModelRv130 || model == kModelRv140; }

/// Rows of `resolution_table`.
enum ResolutionIndex { k1920x1080, k1440x1080, k1280x720, k720x480, k720x576, k480x270, k640x360 };

bool IsIndex(int index, std::size_t rows) {
  return index >= 0 && static_cast<std::size_t>(index) < rows;
}

/// Reads the current recording format, which is 255 while the camera has none.
/// @return false if nothing can be streamed with this format or by this model
bool ReadRecordingFormat(std::int32_t& format) {
  const CameraStatusBlock block;
  if (!CanStream(block[camera_status::kModel])) {
    return false;
  }
  _STREAMING_SETTING setting;
  ReadStreamingSetting(&setting);
  format = ParseInt32(setting.rfresolution);
  return IsIndex(format, kRecordingFormats);
}

/// By resolution.
constexpr const FramerateTable* kFramerateTables[kResolutionRows] = {
    &resolution_1920x1080_framerate_table_vb52r, &resolution_zero_framerate_table_vb52r,
    &resolution_1280x720_framerate_table_vb52r,  &resolution_720x480_framerate_table_vb52r,
    &resolution_720x576_framerate_table_vb52r,   &resolution_zero_framerate_table_vb52r,
    &resolution_640x360_framerate_table_vb52r,
};

/// Rows of `framerate_table`.
enum FramerateIndex { k60p, k50p, k60i, k50i, k30pOr25p };

/// The bit rates for a range of frame rates.
struct BitrateChoice {
  std::uint8_t first;  ///< `FramerateIndex`
  std::uint8_t last;
  std::uint8_t resolution;  ///< `ResolutionIndex`
  const BitrateTable* normal;
  const BitrateTable* ifb;  ///< while return audio is active
};

constexpr BitrateChoice kBitrateChoices[] = {
    {k60p, k50p, k1280x720, &resolution_1280x720_60p50p_table_vb52r,
     &resolution_1280x720_60p50p_table_vb52r_ifb},
    {k60p, k50p, k640x360, &resolution_640x360_60p50p_table_vb52r,
     &resolution_640x360_60p50p_table_vb52r_ifb},
    {k30pOr25p, k30pOr25p, k1280x720, &resolution_1280x720_30p25p_table_vb52r,
     &resolution_1280x720_30p25p_table_vb52r_ifb},
    {k30pOr25p, k30pOr25p, k640x360, &resolution_640x360_30p25p_table_vb52r,
     &resolution_640x360_30p25p_table_vb52r_ifb},
    {k60i, k50i, k1920x1080, &resolution_1920x1080_60i50i_table_vb52r,
     &resolution_1920x1080_60i50i_table_vb52r_ifb},
    {k60i, k60i, k720x480, &resolution_720x480_60i_576_50i_table_vb52r,
     &resolution_720x480_60i_576_50i_table_vb52r_ifb},
    {k50i, k50i, k720x576, &resolution_720x480_60i_576_50i_table_vb52r,
     &resolution_720x480_60i_576_50i_table_vb52r_ifb},
};

const BitrateTable& ChooseBitrateTable(int framerate, int resolution, bool ifb_active) {
  for (const BitrateChoice& choice : kBitrateChoices) {
    if (choice.resolution == resolution && choice.first <= framerate && framerate <= choice.last) {
      return ifb_active ? *choice.ifb : *choice.normal;
    }
  }
  return resolution_zero_table;
}

}  // namespace

const ResolutionFlags& SelectableResolutions() {
  static constexpr ResolutionFlags kNone = {};
  std::int32_t format = 0;
  return ReadRecordingFormat(format) ? available_resolution_table_vb52r.rows[format] : kNone;
}

const FramerateFlags* GetSelectableFramerateTable(int resolution) {
  if (!IsIndex(resolution, kResolutionRows)) {
    return nullptr;
  }
  std::int32_t format = 0;
  if (!ReadRecordingFormat(format)) {
    return &resolution_zero_framerate_table_vb52r.rows[0];
  }
  return &kFramerateTables[resolution]->rows[format];
}

const BitrateFlags* GetSelectableBitrateTable(int type, int resolution, int framerate) {
  if (!IsIndex(type, kStreamingTypeRows) || !IsIndex(resolution, kResolutionRows)) {
    return nullptr;
  }
  const CameraStatusBlock block;
  const std::uint8_t model = block[camera_status::kModel];
  if (!CanStream(model)) {
    return &resolution_zero_table.rows[type];
  }
  if (framerate < k60p || framerate > k50i) {
    framerate = k30pOr25p;
  }
  const bool progressive_high = framerate == k60p || framerate == k50p;
  const bool interlaced = framerate == k60i || framerate == k50i;
  DLOG(2, "##### GetSelectableBitrateTable model:%d 5p6p:%d 5i6i:%d [resolution:%d type:%d]", model,
       progressive_high ? 1 : 0, interlaced ? 1 : 0, resolution, type);
  const bool ifb_active = block[camera_status::kIfbActive] != 0;
  return &ChooseBitrateTable(framerate, resolution, ifb_active).rows[type];
}
