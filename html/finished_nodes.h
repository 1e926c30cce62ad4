// Finished nodes that wait for their parent to be complete: a stack that
// only grows at its top and is cut back when a parent adopts its children.
#pragma once

#include <cstdint>
#include <vector>

#include "html/html_element.h"

namespace qrl {

class FinishedNodes {
 public:
  std::uint32_t size() const noexcept { return static_cast<std::uint32_t>(nodes_.size()); }
  ElementRef& operator[](std::uint32_t index) noexcept { return nodes_[index]; }

  void Push(ElementRef node) { nodes_.push_back(std::move(node)); }

  // Releases the nodes from `size` on that haven't been taken already.
  void TruncateTo(std::uint32_t size) noexcept {
    nodes_.erase(nodes_.begin() + size, nodes_.end());
  }

 private:
  std::vector<ElementRef> nodes_;
};

}  // namespace qrl
