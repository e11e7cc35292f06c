#pragma once

#include <cstddef>
#include <random>
#include <string>

#include "harness/status_block.h"

namespace harness {

// Cameras in any state. The same seed gives the same states on every machine.

using Random = std::mt19937;

/// A number in a range, including both ends.
int Number(Random& random, int lowest, int highest);

std::string RandomBytes(Random& random, std::size_t size);

/// A text that a camera shows: printable, without quotes and backslashes; some end early with a
/// NUL.
std::string RandomText(Random& random, std::size_t size);

/// A status block of random bytes, with texts where the camera holds texts. In every fourth one an
/// upload asks whether to trust a key.
StatusBlock RandomBlock(Random& random);

/// A reply to the clip list's request: usually complete, sometimes truncated or with a wrong count.
/// `clips` receives the number of clips that the handler must report.
std::string RandomClipReply(Random& random, int& clips);

}  // namespace harness
