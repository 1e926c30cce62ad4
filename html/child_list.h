// The children of a node: a fixed array of shared references that the parser
// fills once, when the node is complete. The array lives in the tree's arena;
// the list only ends the lifetimes of its references.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace qrl {

class HtmlElement;
using ElementRef = std::shared_ptr<HtmlElement>;

class ChildList {
 public:
  using value_type = ElementRef;
  using size_type = std::size_t;
  using const_iterator = const ElementRef*;
  using iterator = const_iterator;

  ChildList() noexcept = default;
  ChildList(const ChildList&) = delete;
  ChildList& operator=(const ChildList&) = delete;
  ~ChildList() {
    for (std::uint32_t i = 0; i < size_; ++i) items_[i].~ElementRef();
  }

  const_iterator begin() const noexcept { return items_; }
  const_iterator end() const noexcept { return items_ + size_; }
  size_type size() const noexcept { return size_; }
  bool empty() const noexcept { return size_ == 0; }
  const ElementRef& operator[](size_type index) const noexcept { return items_[index]; }
  const ElementRef& front() const noexcept { return items_[0]; }
  const ElementRef& back() const noexcept { return items_[size_ - 1]; }

 private:
  friend class HtmlElement;
  friend class HtmlParser;

  // Takes over `size` references constructed in place at `items`.
  void Adopt(ElementRef* items, std::uint32_t size) noexcept {
    items_ = items;
    size_ = size;
  }
  ElementRef* MutableItems() noexcept { return items_; }
  // Hands the references over to whoever took MutableItems(), who then ends
  // their lifetimes; the array itself stays in the arena.
  void ForgetTaken() noexcept { size_ = 0; }

  ElementRef* items_ = nullptr;
  std::uint32_t size_ = 0;
};

}  // namespace qrl
