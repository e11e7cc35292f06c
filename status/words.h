// Words for state bytes that more than one command reports.
#pragma once

#include "core/word_table.h"

/// Studio tally states.
constexpr WordTable<3> kStudioTallyWords = {{"Off", "Program", "Preview"}, "Off"};
