// Searches below an element, in document order, by exact byte comparison.
// Each collection visits every node once; a node that the result list held
// before the call isn't appended again, and only those earlier entries need
// the identity test, since the walk meets each node only once.
#include <algorithm>
#include <unordered_set>

#include "html/class_names.h"
#include "html/html_element.h"
#include "html/tree_memory.h"
#include "html/tree_walk.h"

namespace qrl {

namespace {

std::string_view AttributeOrEmpty(const HtmlElement& element, std::string_view name) {
  const AttributeMap attributes = element.attributes();
  if (attributes.empty()) return {};
  const auto found = attributes.find(name);
  return found != attributes.end() ? std::string_view(found->second) : std::string_view();
}

class EarlierResults {
 public:
  explicit EarlierResults(const ElementList& results) {
    for (const ElementRef& entry : results) nodes_.insert(entry.get());
  }
  bool Holds(const HtmlElement& node) const { return !nodes_.empty() && nodes_.contains(&node); }

 private:
  std::unordered_set<const HtmlElement*> nodes_;
};

// Appends to `results` each descendant of `start` that `matches`. Every
// result shares in the one tree, so one reference to it serves them all.
template <typename Matches>
void CollectDescendants(const HtmlElement& start, ElementList& results, Matches&& matches) {
  const EarlierResults earlier(results);
  const ElementRef tree = start.SharedReference();
  WalkDescendants(start, [&](const HtmlElement& node) {
    if (matches(node) && !earlier.Holds(node)) results.emplace_back(tree, const_cast<HtmlElement*>(&node));
    return true;
  });
}

}  // namespace

// Most nodes have a handful of attributes, where a scan that compares sizes
// first beats a binary search.
AttributeMap::const_iterator AttributeMap::find(std::string_view name) const noexcept {
  constexpr std::uint32_t kScanLimit = 8;
  if (size_ <= kScanLimit) {
    for (const Attribute& entry : *this) {
      if (entry.first.size() == name.size() && std::string_view(entry.first) == name) return &entry;
    }
    return end();
  }
  const auto found = std::lower_bound(begin(), end(), name, [](const Attribute& entry, std::string_view key) {
    return std::string_view(entry.first) < key;
  });
  return found != end() && found->first == name ? found : end();
}

std::string HtmlElement::GetAttribute(std::string_view attributeName) const {
  return std::string(AttributeOrEmpty(*this, attributeName));
}

// A node without an id attribute matches the empty id.
ElementRef HtmlElement::GetElementById(std::string_view id) const {
  const HtmlElement* match = nullptr;
  WalkDescendants(*this, [&](const HtmlElement& node) {
    if (AttributeOrEmpty(node, "id") != id) return true;
    match = &node;
    return false;
  });
  return match ? match->SharedReference() : ElementRef();
}

ElementList HtmlElement::GetElementsByClassName(std::string_view classList) const {
  ElementList results;
  CollectByClass(classList, results);
  return results;
}

// An empty list of wanted names is borne by every node, text runs included.
void HtmlElement::CollectByClass(std::string_view classList, ElementList& results) const {
  const std::vector<std::string_view> wanted = SplitClassNameViews(classList);
  CollectDescendants(*this, results, [&wanted](const HtmlElement& node) {
    return BearsAllClassNames(AttributeOrEmpty(node, "class"), wanted);
  });
}

ElementList HtmlElement::GetElementsByTagName(std::string_view tagName) const {
  ElementList results;
  CollectByTag(tagName, results);
  return results;
}

void HtmlElement::CollectByTag(std::string_view tagName, ElementList& results) const {
  CollectDescendants(*this, results, [tagName](const HtmlElement& node) { return node.name() == tagName; });
}

ElementList HtmlElement::GetChildren() const {
  const ChildList children = this->children();
  ElementList results;
  results.reserve(children.size());
  const ElementRef tree = SharedReference();
  for (const HtmlElement* child : children) results.emplace_back(tree, const_cast<HtmlElement*>(child));
  return results;
}

// The root has no siblings; neither has a node that isn't among its
// parent's children.
ElementRef HtmlElement::GetNextSibling() const {
  if (!parent_) return {};
  const ChildList siblings = parent_->children();
  const std::size_t index = IndexAmongSiblings(*parent_);
  if (index + 1 >= siblings.size()) return {};
  return siblings[index + 1]->SharedReference();
}

ElementRef HtmlElement::GetPreviousSibling() const {
  if (!parent_) return {};
  const ChildList siblings = parent_->children();
  const std::size_t index = IndexAmongSiblings(*parent_);
  if (index == 0 || index >= siblings.size()) return {};
  return siblings[index - 1]->SharedReference();
}

}  // namespace qrl
