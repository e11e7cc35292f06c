// An array that grows as elements are added.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <type_traits>

#include "core/memory.h"

/// Keeps plain elements on the heap, in the order in which they were added. Memory grows with
/// their number (see `Reallocate`).
template <typename Element>
class GrowingArray {
  static_assert(std::is_trivially_copyable_v<Element> && std::is_trivially_destructible_v<Element>);

 public:
  GrowingArray() = default;
  GrowingArray(const GrowingArray&) = delete;
  GrowingArray& operator=(const GrowingArray&) = delete;
  ~GrowingArray() { std::free(elements_); }

  void Add(const Element& element) {
    if (count_ == capacity_) {
      Grow();
    }
    elements_[count_++] = element;
  }

  [[nodiscard]] std::size_t Count() const { return count_; }
  [[nodiscard]] const Element* begin() const { return elements_; }
  [[nodiscard]] const Element* end() const { return elements_ + count_; }

 private:
  void Grow() {
    constexpr std::size_t kFirstCapacity = 16;
    const std::size_t capacity = capacity_ > 0 ? capacity_ * 2 : kFirstCapacity;
    elements_ = static_cast<Element*>(Reallocate(elements_, capacity * sizeof(Element)));
    capacity_ = capacity;
  }

  Element* elements_ = nullptr;
  std::size_t count_ = 0;
  std::size_t capacity_ = 0;
};
