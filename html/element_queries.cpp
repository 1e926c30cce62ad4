// Searches below an element, in document order, by exact byte comparison.
// Each collection visits every node once; a node that the result list held
// before the call isn't appended again, and only those earlier entries need
// the identity test, since the walk meets each node only once.
#include <algorithm>
#include <unordered_set>

#include "html/class_names.h"
#include "html/html_element.h"
#include "html/tree_walk.h"

namespace qrl {

namespace {

std::string_view AttributeOrEmpty(const HtmlElement& element, std::string_view name) {
  const auto found = element.attributes.find(name);
  return found != element.attributes.end() ? std::string_view(found->second) : std::string_view();
}

class EarlierResults {
 public:
  explicit EarlierResults(const ElementList& results) {
    for (const ElementRef& entry : results) nodes_.insert(entry.get());
  }
  bool Holds(const ElementRef& node) const { return !nodes_.empty() && nodes_.contains(node.get()); }

 private:
  std::unordered_set<const HtmlElement*> nodes_;
};

// Appends to `results` each descendant of `start` that `matches`.
template <typename Matches>
void CollectDescendants(const HtmlElement& start, ElementList& results, Matches&& matches) {
  const EarlierResults earlier(results);
  WalkDescendants(start, [&](const ElementRef& node) {
    if (matches(*node) && !earlier.Holds(node)) results.push_back(node);
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
  ElementRef match;
  WalkDescendants(*this, [&](const ElementRef& node) {
    if (AttributeOrEmpty(*node, "id") != id) return true;
    match = node;
    return false;
  });
  return match;
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
  CollectDescendants(*this, results, [tagName](const HtmlElement& node) { return node.name == tagName; });
}

// A node that has no parent (the root, or one that outlived it) has no
// siblings; neither has a node that isn't among its parent's children.
ElementRef HtmlElement::GetNextSibling() const {
  const HtmlElement* parentNode = parent.get();
  if (!parentNode) return {};
  const std::size_t index = IndexAmongSiblings(*parentNode);
  if (index + 1 >= parentNode->children.size()) return {};
  return parentNode->children[index + 1];
}

ElementRef HtmlElement::GetPreviousSibling() const {
  const HtmlElement* parentNode = parent.get();
  if (!parentNode) return {};
  const std::size_t index = IndexAmongSiblings(*parentNode);
  if (index == 0 || index >= parentNode->children.size()) return {};
  return parentNode->children[index - 1];
}

}  // namespace qrl
