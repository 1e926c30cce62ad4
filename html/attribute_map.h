// The attributes of a node, sorted by name in unsigned byte order with one
// entry per name: a view of the block that the node's tree keeps, filled once
// and then only read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "html/node_string.h"

namespace qrl {

using Attribute = std::pair<NodeString, NodeString>;  // name, value

class AttributeMap {
 public:
  using value_type = Attribute;
  using size_type = std::size_t;
  using const_iterator = const Attribute*;
  using iterator = const_iterator;

  constexpr AttributeMap() noexcept = default;
  constexpr AttributeMap(const Attribute* items, std::uint32_t size) noexcept : items_(items), size_(size) {}

  const_iterator begin() const noexcept { return items_; }
  const_iterator end() const noexcept { return items_ + size_; }
  size_type size() const noexcept { return size_; }
  bool empty() const noexcept { return size_ == 0; }

  const_iterator find(std::string_view name) const noexcept;
  bool contains(std::string_view name) const noexcept { return find(name) != end(); }

 private:
  const Attribute* items_ = nullptr;
  std::uint32_t size_ = 0;
};

}  // namespace qrl
