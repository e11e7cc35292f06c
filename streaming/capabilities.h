// What the camera can stream now: selects rows of the capability tables by the camera's model, its
// recording format and its return audio.
#pragma once

#include "streaming/capability_tables.h"

// Each function reads the camera status block once. Only the models RV130 and RV140 can stream; for
// all others the row is all zeros.

/// The resolutions for the current recording format; none if the format is not 0 to 11.
const ResolutionFlags& SelectableResolutions();

/// The frame rates for a resolution and the current recording format; none if the format is not 0
/// to 11.
/// @param resolution  index of `resolution_table`
/// @return null for an index that is not in that table
const FramerateFlags* GetSelectableFramerateTable(int resolution);

/// The bit rates for a streaming type, a resolution and a frame rate; fewer while return audio is
/// active.
/// @param type        index of `streaming_type_zixi_separate_table`
/// @param resolution  index of `resolution_table`
/// @param framerate   index of `framerate_table`; any other number counts as 30p or 25p
/// @return null for a type or a resolution that is not in its table
const BitrateFlags* GetSelectableBitrateTable(int type, int resolution, int framerate);
