// An array that grows as elements are added.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <type_traits>

#include "core/fatal.h"

/// Keeps plain elements on the heap, in the order in which they were added. Memory grows with
/// their number; when there is none left the request ends (see `Fatal`).
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
    auto* const grown = static_cast<Element*>(std::realloc(elements_, capacity * sizeof(Element)));
    if (grown == nullptr) {
      Fatal("out of memory");
    }
    elements_ = grown;
    capacity_ = capacity;
  }

  Element* elements_ = nullptr;
  std::size_t count_ = 0;
  std::size_t capacity_ = 0;
};
