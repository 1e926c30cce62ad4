// One node of a parsed document. Every kind of node (root, element, raw-text
// element, text run named "plain") is an HtmlElement; the tree never changes
// once the parser has returned it.
//
// Children are strong references and the parent a weak one, so any node can
// outlive its ancestors. Destroying a node never recurses along the depth of
// its subtree (see the destructor).
//
// A tree is read and released on one thread at a time: the parent link is
// kept without a reference count (see ParentLink).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "html/attribute_map.h"
#include "html/child_list.h"
#include "html/node_string.h"

namespace qrl {

class Arena;
using ElementList = std::vector<ElementRef>;

// The weak link from a node up to its parent, as a plain pointer: a parent
// that dies empties the links of the children that outlive it (see
// ReleaseDescendants), so a link names a living node or none. Linking a
// node so costs no atomic update of the parent's counts, which a tree of
// many small nodes would otherwise pay twice per node.
class ParentLink {
 public:
  // A reference of its own to the parent, or null when it is gone.
  ElementRef lock() const;
  bool expired() const noexcept { return node_ == nullptr; }
  const HtmlElement* get() const noexcept { return node_; }

 private:
  friend class HtmlElement;
  friend class HtmlParser;
  HtmlElement* node_ = nullptr;
};

// Nodes are reached only through ElementRef, so a node needs no reference to
// itself; leaving that out keeps nodes small and their release cheap.
class HtmlElement {
 public:
  // Provided rather than defaulted: the members initialize themselves, and a
  // defaulted constructor would have every new node zeroed first.
  HtmlElement() noexcept {}
  HtmlElement(const HtmlElement&) = delete;
  HtmlElement& operator=(const HtmlElement&) = delete;
  ~HtmlElement();

  // The fields that releasing a node reads come first, so that with the
  // reference counts in front of them they share one cache line.
  ParentLink parent;   // empty on the root
  ChildList children;  // document order, text runs included

 private:
  struct OwnStorage;
  struct OwnStorageDeleter {
    void operator()(OwnStorage* storage) const noexcept;
  };
  // What ParseAttributes keeps when it runs outside of a parse.
  std::unique_ptr<OwnStorage, OwnStorageDeleter> own_;

 public:
  NodeString name;          // tag name as written; "plain" on a text run; empty on the root
  NodeString text;          // text run, or raw content of script/noscript/style
  AttributeMap attributes;  // sorted by name in byte order; names keep their case

  // Reads the raw text of a start tag into `attributes` (which must still be
  // empty) and trims the spaces around `text`.
  void ParseAttributes(std::string_view raw);

  std::string GetText() const;
  void AppendText(std::string& out) const;
  void AppendMarkup(std::string& out) const;

  std::string GetAttribute(std::string_view attributeName) const;
  ElementRef GetElementById(std::string_view id) const;
  ElementList GetElementsByClassName(std::string_view classList) const;
  void CollectByClass(std::string_view classList, ElementList& results) const;
  ElementList GetElementsByTagName(std::string_view tagName) const;
  void CollectByTag(std::string_view tagName, ElementList& results) const;
  ElementRef GetNextSibling() const;
  ElementRef GetPreviousSibling() const;

 private:
  friend class HtmlParser;

  // The parser's form: `raw` lies in the tree's arena and is read in place
  // (its byte raw[size] must be writable too); the attributes go to the arena.
  // The parser trims raw text itself when it takes it.
  void ParseAttributes(char* raw, std::uint32_t size, Arena& arena, std::vector<Attribute>& scratch);
  friend class ParentLink;

  std::uint32_t IndexAmongSiblings(const HtmlElement& parentNode) const noexcept;
  // A new reference to this node: the one in its parent's children, or, on
  // a node without a parent, through its own weak reference.
  ElementRef SharedReference() const;
  // Called on a child that outlives its dying parent.
  void LoseParent(const ElementRef& self) noexcept;
  void ReleaseDescendants() noexcept;

  // Where this node stands in its parent's children; a hint that saves the
  // sibling operations a scan of the parent's children.
  std::uint32_t siblingIndex_ = 0;
  // Set on a node that has no parent to reach it through: the root, and a
  // node that outlived its parent.
  std::weak_ptr<HtmlElement> self_;
};

}  // namespace qrl
