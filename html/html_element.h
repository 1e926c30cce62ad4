// One node of a parsed document. Every kind of node (root, element, raw-text
// element, text run named "plain") is an HtmlElement; the tree never changes
// once the parser has returned it.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qrl {

class HtmlElement;
using ElementRef = std::shared_ptr<HtmlElement>;
using ElementList = std::vector<ElementRef>;
using AttributeMap = std::map<std::string, std::string, std::less<>>;

class HtmlElement : public std::enable_shared_from_this<HtmlElement> {
 public:
  std::string name;              // tag name as written; "plain" on a text run; empty on the root
  std::string text;              // text run, or raw content of script/noscript/style
  AttributeMap attributes;       // byte-ordered; names keep their case
  std::weak_ptr<HtmlElement> parent;  // empty on the root
  ElementList children;          // document order, text runs included

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
};

}  // namespace qrl
