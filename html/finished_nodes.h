// Finished nodes that wait for their parent to be complete: a stack whose
// slots stay allocated from one parse to the next, so that a push is a move
// into a free slot.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "html/html_element.h"

namespace qrl {

class FinishedNodes {
 public:
  std::uint32_t size() const noexcept { return size_; }
  ElementRef& operator[](std::uint32_t index) noexcept { return slots_[index]; }

  void Push(ElementRef node) {
    if (size_ == slots_.size()) slots_.resize(std::max<std::size_t>(256, slots_.size() * 2));
    slots_[size_++] = std::move(node);
  }

  // Releases the nodes from `size` on that haven't been taken already.
  void TruncateTo(std::uint32_t size) noexcept {
    while (size_ > size) slots_[--size_].reset();
  }

 private:
  std::vector<ElementRef> slots_;
  std::uint32_t size_ = 0;
};

}  // namespace qrl
