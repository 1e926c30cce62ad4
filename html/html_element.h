// One node of a parsed document. Every kind of node (root, element, raw-text
// element, text run named "plain") is an HtmlElement; the tree never changes
// once the parser has returned it.
//
// Nodes live in the memory of their tree (TreeMemory) and are reached from
// outside through ElementRef, a shared reference that holds the whole tree:
// a node stays valid, with its parent, its children and its strings, as long
// as any reference into its tree is held. Releasing a tree visits none of
// its nodes.
//
// A node is kept small, since a large page has hundreds of thousands: four
// words and two sizes. A node holds either a text or children, never both
// (a text run and the content of script, noscript and style have no
// children; an ordinary element's text is empty), so the two share a field.
#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "html/attribute_map.h"
#include "html/child_list.h"
#include "html/node_string.h"

namespace qrl {

class TreeMemory;
class HtmlElement;
using ElementRef = std::shared_ptr<HtmlElement>;
using ElementList = std::vector<ElementRef>;

class HtmlElement {
 public:
  HtmlElement(const HtmlElement&) = delete;
  HtmlElement& operator=(const HtmlElement&) = delete;

  // A detached element with the attributes read from the raw text of a start
  // tag and `text` trimmed of its spaces, as a parse would leave them.
  static ElementRef FromStartTag(std::string_view raw, std::string_view text = {});

  // The enclosing element; null on the root.
  const HtmlElement* parent() const noexcept { return parent_; }
  ElementRef GetParent() const;
  // Document order, text runs included.
  ChildList children() const noexcept {
    return HoldsText() ? ChildList() : ChildList(static_cast<const HtmlElement* const*>(payload_), payloadSize_);
  }
  // The tag name as written; "plain" on a text run; empty on the root.
  NodeString name() const noexcept { return NodeString(name_, nameSize_); }
  // A text run, or the raw content of script, noscript or style.
  NodeString text() const noexcept {
    return HoldsText() ? NodeString(static_cast<const char*>(payload_), payloadSize_) : NodeString();
  }
  // Sorted by name in byte order; names keep their case.
  AttributeMap attributes() const noexcept {
    const std::uintptr_t block = attributes_ & ~kHoldsText;
    if (block == 0) return AttributeMap();
    std::uint32_t count;
    std::memcpy(&count, reinterpret_cast<const void*>(block), sizeof count);
    return AttributeMap(reinterpret_cast<const Attribute*>(block + kAttributeBlockHeader), count);
  }

  // A reference to this node that keeps its tree alive.
  ElementRef SharedReference() const;

  std::string GetText() const;
  void AppendText(std::string& out) const;
  void AppendMarkup(std::string& out) const;

  std::string GetAttribute(std::string_view attributeName) const;
  ElementRef GetElementById(std::string_view id) const;
  ElementList GetElementsByClassName(std::string_view classList) const;
  void CollectByClass(std::string_view classList, ElementList& results) const;
  ElementList GetElementsByTagName(std::string_view tagName) const;
  void CollectByTag(std::string_view tagName, ElementList& results) const;
  ElementList GetChildren() const;
  ElementRef GetNextSibling() const;
  ElementRef GetPreviousSibling() const;

 private:
  friend class HtmlParser;
  friend class TreeMemory;

  // The bit of attributes_ that says payload_ is a text; attribute blocks
  // are aligned to at least four bytes, so their addresses leave it free.
  static constexpr std::uintptr_t kHoldsText = 1;
  // An attribute block: the number of attributes, then the attributes.
  static constexpr std::size_t kAttributeBlockHeader =
      sizeof(std::uint32_t) > alignof(Attribute) ? sizeof(std::uint32_t) : alignof(Attribute);

  // Provided rather than defaulted: the members initialize themselves, and a
  // defaulted constructor would have every new node zeroed first.
  HtmlElement() noexcept {}

  bool HoldsText() const noexcept { return (attributes_ & kHoldsText) != 0; }
  void SetName(NodeString name) noexcept {
    name_ = name.data();
    nameSize_ = static_cast<std::uint32_t>(name.size());
  }
  // Only on a node without children; an empty text leaves the node as it is.
  void SetText(NodeString text) noexcept;
  void SetChildren(HtmlElement* const* items, std::uint32_t count) noexcept {
    payload_ = items;
    payloadSize_ = count;
  }
  // Reads the raw text of a start tag, which lies in the tree's memory and
  // is read in place (its byte raw[size] must be writable too), into an
  // attribute block of the tree.
  void ParseAttributes(char* raw, std::uint32_t size, TreeMemory& memory, std::vector<Attribute>& scratch);

  // Where this node stands in its parent's children, or the number of those
  // children when it isn't among them.
  std::uint32_t IndexAmongSiblings(const HtmlElement& parentNode) const noexcept;

  HtmlElement* parent_ = nullptr;
  const char* name_ = "";
  const void* payload_ = nullptr;  // the text's bytes, or the array of children
  std::uintptr_t attributes_ = 0;  // address of the attribute block, and kHoldsText
  std::uint32_t nameSize_ = 0;
  std::uint32_t payloadSize_ = 0;  // bytes of the text, or number of children
};

}  // namespace qrl
