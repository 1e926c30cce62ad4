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
  HtmlElement* const* From(std::uint32_t index) const noexcept { return nodes_.data() + index; }

  void Push(HtmlElement* node) { nodes_.push_back(node); }
  void TruncateTo(std::uint32_t size) noexcept { nodes_.resize(size); }

 private:
  std::vector<HtmlElement*> nodes_;
};

}  // namespace qrl
