#include "html/html_element.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>

#include "html/arena.h"
#include "html/attribute_reader.h"

namespace qrl {

namespace {

// How far ahead in memory the release of a tree asks for node memory: about
// thirty nodes, enough to cover the time a line takes to arrive.
constexpr std::uintptr_t kReleasePrefetchDistance = 4096;

// Only a hint: the address may lie beyond the arena, which a prefetch never
// faults on, so it is formed as a number rather than as a pointer.
void PrefetchAhead(const HtmlElement* node) {
  const std::uintptr_t ahead = reinterpret_cast<std::uintptr_t>(node) + kReleasePrefetchDistance;
  __builtin_prefetch(reinterpret_cast<const void*>(ahead));
}

}  // namespace

struct HtmlElement::OwnStorage {
  std::unique_ptr<char[]> raw;
  std::vector<Attribute> attributes;
  std::string text;
};

void HtmlElement::OwnStorageDeleter::operator()(OwnStorage* storage) const noexcept { delete storage; }

// A child that nothing else holds would die inside this destructor and destroy
// its own children in turn, one stack frame per level of the tree. Instead,
// the destructor walks the subtree itself. A branch that nothing else holds
// hands its children to the walk and dies with an empty list; its children
// array stays readable, since the arena lives as long as any of its nodes.
// Every other child is released as the walk passes it, and one that others
// still hold loses its parent link first. Each node's destruction so only
// ever meets leaves and branches that others still hold.
//
// The walk takes nodes in document order, which is their order in memory, so
// a large tree is released in one forward sweep. The processor is asked for
// the memory a few nodes ahead, as the walk cannot wait for every node it
// reaches through a pointer.
HtmlElement::~HtmlElement() {
  if (!children.empty()) ReleaseDescendants();
}

void HtmlElement::ReleaseDescendants() noexcept {
  struct Level {
    ElementRef* next;
    ElementRef* end;
  };
  std::vector<Level> levels;
  auto enter = [&levels](ChildList& list) {
    ElementRef* const items = list.MutableItems();
    levels.push_back({items, items + list.size()});
    list.ForgetTaken();
  };
  enter(children);
  while (!levels.empty()) {
    Level& level = levels.back();
    if (level.next == level.end) {
      levels.pop_back();
      continue;
    }
    ElementRef& child = *level.next++;
    if (level.next != level.end) __builtin_prefetch(level.next->get());
    if (!child) continue;
    PrefetchAhead(child.get());
    if (child.use_count() != 1) {
      child->LoseParent(child);
    } else if (!child->children.empty()) {
      // A finished level is left before its last child is entered, so that a
      // chain of only children takes one level of memory.
      if (level.next == level.end) levels.pop_back();
      enter(child->children);
    }
    child.reset();
  }
}

void HtmlElement::LoseParent(const ElementRef& self) noexcept {
  parent.node_ = nullptr;
  self_ = self;
}

ElementRef HtmlElement::SharedReference() const {
  const HtmlElement* above = parent.node_;
  if (!above) return self_.lock();
  const std::uint32_t index = IndexAmongSiblings(*above);
  return index < above->children.size() ? above->children[index] : ElementRef();
}

ElementRef ParentLink::lock() const { return node_ ? node_->SharedReference() : ElementRef(); }

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
