// The children of a node, in document order: a view of the array that the
// parser fills once, when the node is complete, in the tree's memory.
#pragma once

#include <cstddef>
#include <cstdint>

namespace qrl {

class HtmlElement;

class ChildList {
 public:
  using value_type = const HtmlElement*;
  using size_type = std::size_t;
  using const_iterator = const HtmlElement* const*;
  using iterator = const_iterator;

  constexpr ChildList() noexcept = default;
  constexpr ChildList(const HtmlElement* const* items, std::uint32_t size) noexcept : items_(items), size_(size) {}

  const_iterator begin() const noexcept { return items_; }
  const_iterator end() const noexcept { return items_ + size_; }
  size_type size() const noexcept { return size_; }
  bool empty() const noexcept { return size_ == 0; }
  const HtmlElement* operator[](size_type index) const noexcept { return items_[index]; }
  const HtmlElement* front() const noexcept { return items_[0]; }
  const HtmlElement* back() const noexcept { return items_[size_ - 1]; }

 private:
  const HtmlElement* const* items_ = nullptr;
  std::uint32_t size_ = 0;
};

}  // namespace qrl
