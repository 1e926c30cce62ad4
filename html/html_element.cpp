#include "html/html_element.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "html/arena.h"
#include "html/attribute_reader.h"

namespace qrl {

struct HtmlElement::OwnStorage {
  std::unique_ptr<char[]> raw;
  std::vector<Attribute> attributes;
  std::string text;
};

void HtmlElement::OwnStorageDeleter::operator()(OwnStorage* storage) const noexcept { delete storage; }

// A child that nothing else holds would die inside this destructor and destroy
// its own children in turn, one stack frame per level of the tree. Instead,
// every such branch below this node is moved to a worklist and emptied there
// before it dies, so each node's destruction only ever meets leaves and
// branches that others still hold. Branches are taken in document order,
// which is the order of the nodes in memory.
HtmlElement::~HtmlElement() {
  if (children.empty()) return;
  ElementList doomed;
  auto takeUnsharedBranches = [&doomed](HtmlElement& node) {
    ElementRef* const items = node.children.MutableItems();
    for (std::size_t i = node.children.size(); i-- > 0;) {
      ElementRef& child = items[i];
      if (child && !child->children.empty() && child.use_count() == 1) doomed.push_back(std::move(child));
    }
  };
  takeUnsharedBranches(*this);
  while (!doomed.empty()) {
    ElementRef branch = std::move(doomed.back());
    doomed.pop_back();
    takeUnsharedBranches(*branch);
  }
}

void HtmlElement::ParseAttributes(std::string_view raw) {
  std::unique_ptr<OwnStorage, OwnStorageDeleter> storage(new OwnStorage());
  const auto size = static_cast<std::uint32_t>(raw.size());
  storage->raw = std::make_unique<char[]>(size + std::size_t{1});
  std::memcpy(storage->raw.get(), raw.data(), size);
  storage->attributes.resize(MostAttributesIn(size));
  storage->attributes.resize(ReadAttributes(storage->raw.get(), size, storage->attributes.data()));
  attributes.Adopt(storage->attributes.data(), static_cast<std::uint32_t>(storage->attributes.size()));

  std::string_view trimmed = text;
  trimmed.remove_prefix(std::min(trimmed.find_first_not_of(' '), trimmed.size()));
  trimmed.remove_suffix(trimmed.size() - (trimmed.find_last_not_of(' ') + 1));
  // The text may live in the storage that is about to be replaced; it is
  // copied before that goes.
  storage->text.assign(trimmed);
  text = NodeString(storage->text.c_str(), static_cast<std::uint32_t>(storage->text.size()));
  own_ = std::move(storage);
}

void HtmlElement::ParseAttributes(char* raw, std::uint32_t size, Arena& arena,
                                  std::vector<Attribute>& scratch) {
  if (size == 0) return;
  if (scratch.size() < MostAttributesIn(size)) scratch.resize(MostAttributesIn(size));
  const std::uint32_t count = ReadAttributes(raw, size, scratch.data());
  if (count == 0) return;
  Attribute* items = arena.AllocateArray<Attribute>(count);
  std::uninitialized_copy(scratch.data(), scratch.data() + count, items);
  attributes.Adopt(items, count);
}

std::uint32_t HtmlElement::IndexAmongSiblings(const HtmlElement& parentNode) const noexcept {
  const ChildList& siblings = parentNode.children;
  if (siblingIndex_ < siblings.size() && siblings[siblingIndex_].get() == this) return siblingIndex_;
  const auto found = std::find_if(siblings.begin(), siblings.end(),
                                  [this](const ElementRef& sibling) { return sibling.get() == this; });
  return static_cast<std::uint32_t>(found - siblings.begin());
}

}  // namespace qrl
