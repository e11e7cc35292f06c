// What the camera can stream now: picks the row of the capability tables for its model, its
// recording format and its return audio.
#pragma once

#include "streaming/capability_tables.h"

// Each function reads the camera status block once. Only the models RV130 and RV140 can stream; all
// other models get a row of zeros.

/// The resolutions that go with the current recording format; none for a format outside 0 to 11.
const ResolutionFlags& SelectableResolutions();

/// The frame rates that a resolution offers under the current recording format; none for a format
/// outside 0 to 11.
/// @param resolution  index of `resolution_table`
/// @return null for an index outside of that table
const FramerateFlags* GetSelectableFramerateTable(int resolution);

/// The bit rates that a streaming type offers for a resolution and a frame rate; fewer while return
/// audio is active.
/// @param type        index of `streaming_type_zixi_separate_table`
/// @param resolution  index of `resolution_table`
/// @param framerate   index of `framerate_table`; any other number counts as 30p or 25p
/// @return null for a type or a resolution outside of its table
const BitrateFlags* GetSelectableBitrateTable(int type, int resolution, int framerate);
