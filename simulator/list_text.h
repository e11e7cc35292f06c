// Lists in texts for people: "a, b, c".
#pragma once

#include <string>
#include <string_view>

namespace simulator {

/// Adds an item to the end of a list.
inline void AddToList(std::string& list, std::string_view item) {
  list.append(list.empty() ? "" : ", ").append(item);
}

}  // namespace simulator
