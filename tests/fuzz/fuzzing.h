// What the fuzzers share.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/os_memory.h"
#include "fuzz/scenario.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

/// Reports a finding and ends the fuzzer unless the condition is true.
void Require(bool condition);

inline std::string Text(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// The values of all lines of one kind, in order.
std::vector<std::string> Values(const std::vector<scenario::Line>& lines, scenario::Kind kind);

/// The camera, its daemons and its client as the lines describe them.
World WorldOf(const std::vector<scenario::Line>& lines);

}  // namespace fuzz
