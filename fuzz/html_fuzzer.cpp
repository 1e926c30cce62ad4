// Fuzzer of the HTML engine. The input is parsed, and then everything that
// reads the tree is compared with a plain rendering of its rules: the writers
// with recursive ones, the queries with a walk in document order, the
// attribute reader with a direct reading of its three states. Tree
// invariants are checked along the way; any difference aborts.
//
// Input layout: one byte with the lengths of the id (low nibble) and the
// class list (high nibble), one byte with the length of the tag name (low
// nibble) and a node choice (high nibble), then id, class list, tag name and
// the markup.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

#include "commands/text_utils.h"
#include "html/html_document.h"
#include "html/html_element.h"
#include "html/html_parser.h"

namespace {

using qrl::ElementList;
using qrl::ElementRef;
using qrl::HtmlElement;

void Require(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "html fuzzer: %s\n", what);
    std::abort();
  }
}

// The recursive renderings below follow the depth of the tree; deeper trees
// are only checked by the walks that need no recursion.
constexpr std::size_t kRecursionLimit = 2000;

bool IsRawTextName(std::string_view name) {
  return name == "script" || name == "noscript" || name == "style";
}

// Every node below `start`, in document order, without recursion.
std::vector<const HtmlElement*> NodesBelow(const HtmlElement& start, std::size_t* depth = nullptr) {
  std::vector<const HtmlElement*> order;
  std::vector<std::pair<const HtmlElement*, std::size_t>> pending;
  for (auto child = start.children.end(); child != start.children.begin();) {
    pending.emplace_back((--child)->get(), 1);
  }
  std::size_t deepest = 0;
  while (!pending.empty()) {
    const auto [node, level] = pending.back();
    pending.pop_back();
    order.push_back(node);
    deepest = std::max(deepest, level);
    for (auto child = node->children.end(); child != node->children.begin();) {
      pending.emplace_back((--child)->get(), level + 1);
    }
  }
  if (depth != nullptr) *depth = deepest;
  return order;
}

std::string_view AttributeOf(const HtmlElement& node, std::string_view name) {
  const auto found = node.attributes.find(name);
  return found == node.attributes.end() ? std::string_view() : std::string_view(found->second);
}

void CheckNode(const HtmlElement& node) {
  const std::string_view name(node.name);
  const std::string_view text(node.text);
  for (const ElementRef& child : node.children) {
    Require(child != nullptr, "empty child reference");
    Require(child->parent.lock().get() == &node, "child's parent is not the node that holds it");
  }
  Require(!IsRawTextName(name) || node.children.empty(), "raw-text element with children");
  Require(node.children.empty() || text.empty(), "element with both children and text");
  if (IsRawTextName(name)) {
    Require(text.empty() || (text.front() != ' ' && text.back() != ' '), "raw text not trimmed");
  } else if (name == "plain") {
    Require(text.find_first_of("\r\n\t") == std::string_view::npos, "line break or tab in a text run");
  } else {
    Require(text.empty(), "ordinary element holds text");
  }
  std::string_view previous;
  bool first = true;
  for (const auto& [attributeName, value] : node.attributes) {
    Require(first || previous < std::string_view(attributeName), "attributes out of byte order");
    previous = attributeName;
    first = false;
    Require(node.GetAttribute(attributeName) == std::string_view(value), "GetAttribute misses a value");
  }
}

void TextByRecursion(const HtmlElement& node, std::string& out) {
  static const std::set<std::string_view> skipped = {"head", "meta", "style", "script", "link"};
  static const std::set<std::string_view> lineBreaks = {"tr", "br", "div", "p",  "hr", "area", "h1",
                                                        "h2", "h3", "h4",  "h5", "h6", "h7"};
  const std::string_view name(node.name);
  if (skipped.count(name) != 0) return;
  if (name == "plain") {
    out.append(node.text);
    return;
  }
  for (std::size_t i = 0; i < node.children.size(); ++i) {
    TextByRecursion(*node.children[i], out);
    if (i + 1 == node.children.size()) break;
    const std::string_view next(node.children[i + 1]->name);
    if (next == "td") out.push_back('\t');
    if (lineBreaks.count(next) != 0) out.push_back('\n');
  }
}

void MarkupByRecursion(const HtmlElement& node, std::string& out) {
  const std::string_view name(node.name);
  if (name.empty()) {
    for (const ElementRef& child : node.children) MarkupByRecursion(*child, out);
    return;
  }
  if (name == "plain") {
    out.append(node.text);
    return;
  }
  out.append("<").append(name);
  for (const auto& [attributeName, value] : node.attributes) {
    out.append(" ").append(attributeName).append("=\"").append(value).append("\"");
  }
  out.append(">");
  if (node.children.empty()) out.append(node.text);
  for (const ElementRef& child : node.children) MarkupByRecursion(*child, out);
  out.append("</").append(name).append(">");
}

void CheckWriters(const HtmlElement& start) {
  std::string text;
  TextByRecursion(start, text);
  Require(start.GetText() == text, "GetText differs from the recursive rendering");
  std::string markup = "prefix";
  start.AppendMarkup(markup);
  std::string expected = "prefix";
  MarkupByRecursion(start, expected);
  Require(markup == expected, "AppendMarkup differs from the recursive rendering");
}

std::vector<const HtmlElement*> Pointers(const ElementList& list) {
  std::vector<const HtmlElement*> pointers;
  for (const ElementRef& element : list) pointers.push_back(element.get());
  return pointers;
}

bool HasAllClasses(const HtmlElement& node, const std::vector<std::string>& wanted) {
  const std::vector<std::string> have = qrl::SplitWords(AttributeOf(node, "class"));
  const std::set<std::string> haveSet(have.begin(), have.end());
  return std::all_of(wanted.begin(), wanted.end(),
                     [&](const std::string& name) { return haveSet.count(name) != 0; });
}

void CheckQueries(const HtmlElement& start, std::string_view id, std::string_view classList,
                  std::string_view tag) {
  const std::vector<const HtmlElement*> below = NodesBelow(start);

  const HtmlElement* firstWithId = nullptr;
  std::vector<const HtmlElement*> withTag;
  std::vector<const HtmlElement*> withClasses;
  const std::vector<std::string> wanted = qrl::SplitWords(classList);
  for (const HtmlElement* node : below) {
    if (firstWithId == nullptr && AttributeOf(*node, "id") == id) firstWithId = node;
    if (std::string_view(node->name) == tag) withTag.push_back(node);
    if (HasAllClasses(*node, wanted)) withClasses.push_back(node);
  }
  Require(start.GetElementById(id).get() == firstWithId, "GetElementById differs from the walk");
  Require(Pointers(start.GetElementsByTagName(tag)) == withTag, "GetElementsByTagName differs");
  Require(Pointers(start.GetElementsByClassName(classList)) == withClasses,
          "GetElementsByClassName differs");

  // A list that already holds elements gains only the others, in order.
  ElementList seeded = start.GetElementsByTagName(tag);
  start.CollectByTag(tag, seeded);
  Require(Pointers(seeded) == withTag, "CollectByTag added an element twice");
}

void CheckSiblings(const HtmlElement& node) {
  const ElementRef parent = node.parent.lock();
  const ElementRef next = node.GetNextSibling();
  const ElementRef previous = node.GetPreviousSibling();
  if (!parent) {
    Require(!next && !previous, "sibling of a node without parent");
    return;
  }
  const auto& children = parent->children;
  std::size_t index = 0;
  while (index < children.size() && children[index].get() != &node) ++index;
  Require(index < children.size(), "node missing from its parent's children");
  Require(next.get() == (index + 1 < children.size() ? children[index + 1].get() : nullptr),
          "GetNextSibling differs");
  Require(previous.get() == (index > 0 ? children[index - 1].get() : nullptr),
          "GetPreviousSibling differs");
}

std::map<std::string, std::string> AttributesByStates(std::string_view raw) {
  std::map<std::string, std::string> attributes;
  int state = 0;
  std::string name, value;
  char quote = ' ';
  bool quoted = false;
  const auto store = [&] {
    attributes[name] = value;
    name.clear();
    value.clear();
  };
  for (char byte : raw) {
    const bool lineSpace = byte == '\t' || byte == '\r' || byte == '\n';
    if (state == 0) {
      if (byte == ' ' && !name.empty()) {
        store();
      } else if (byte == '=') {
        state = 1;
      } else if (!lineSpace && byte != ' ' && byte != '"' && byte != '\'') {
        name.push_back(byte);
      }
    } else if (state == 1) {
      if (lineSpace || byte == ' ') {
        if (!name.empty()) store();
        state = 0;
      } else {
        quoted = byte == '"' || byte == '\'';
        quote = byte;
        if (!quoted) value.assign(1, byte);
        state = 2;
      }
    } else if (quoted ? byte == quote : lineSpace || byte == ' ') {
      store();
      state = 0;
    } else {
      value.push_back(byte);
    }
  }
  if (!name.empty()) store();
  return attributes;
}

void RequireAttributes(const HtmlElement& element, const std::map<std::string, std::string>& expected) {
  std::map<std::string, std::string> actual;
  for (const auto& [name, value] : element.attributes) {
    actual.emplace(std::string_view(name), std::string_view(value));
  }
  Require(actual == expected, "attributes differ from the three-state reading");
}

// The raw text once through the public reader and once through the parser,
// inside a self-closed tag (the raw text can't hold a ">" there).
void CheckAttributeReader(std::string_view raw) {
  const auto expected = AttributesByStates(raw);
  const auto element = std::make_shared<HtmlElement>();
  element->ParseAttributes(raw);
  RequireAttributes(*element, expected);

  std::string inTag;
  std::copy_if(raw.begin(), raw.end(), std::back_inserter(inTag), [](char byte) { return byte != '>'; });
  const std::string tag = "<a " + inTag + "/>";
  qrl::HtmlParser parser;
  const auto document = parser.Parse(tag.c_str(), static_cast<std::uint32_t>(tag.size()));
  Require(document->root->children.size() == 1, "a self-closed tag made no element");
  RequireAttributes(*document->root->children[0], AttributesByStates(inTag));
}

// Swallows the engine's warning lines, which broken markup produces by the
// thousand; sanitizer reports and the checks above don't use std::cerr.
class DiscardingBuffer : public std::streambuf {
 protected:
  int_type overflow(int_type byte) override { return traits_type::not_eof(byte); }
  std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  static DiscardingBuffer discarded;
  std::cerr.rdbuf(&discarded);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input(reinterpret_cast<const char*>(data), size);
  if (input.size() < 2) return 0;
  const std::size_t idLength = static_cast<unsigned char>(input[0]) & 0x0F;
  const std::size_t classLength = static_cast<unsigned char>(input[0]) >> 4;
  const std::size_t tagLength = static_cast<unsigned char>(input[1]) & 0x0F;
  const std::size_t choice = static_cast<unsigned char>(input[1]) >> 4;
  input.remove_prefix(2);
  const auto take = [&input](std::size_t length) {
    const std::string_view part = input.substr(0, length);
    input.remove_prefix(part.size());
    return part;
  };
  const std::string_view id = take(idLength);
  const std::string_view classList = take(classLength);
  const std::string_view tag = take(tagLength);
  const std::string markup(input);  // its buffer ends in the NUL the parser needs

  qrl::HtmlParser parser;
  const qrl::DocumentRef document = parser.Parse(markup.c_str(), static_cast<std::uint32_t>(markup.size()));
  Require(document && document->root, "Parse gave no root");
  Require(parser.root == document->root, "the parser keeps another root");
  const HtmlElement& root = *document->root;
  Require(std::string_view(root.name).empty() && !root.parent.lock(), "root has a name or a parent");

  std::size_t depth = 0;
  const std::vector<const HtmlElement*> nodes = NodesBelow(root, &depth);
  CheckNode(root);
  for (const HtmlElement* node : nodes) CheckNode(*node);

  CheckQueries(root, id, classList, tag);
  if (depth < kRecursionLimit) CheckWriters(root);
  CheckSiblings(root);
  if (!nodes.empty()) {
    const HtmlElement& chosen = *nodes[choice * nodes.size() / 16];
    CheckQueries(chosen, id, classList, tag);
    if (depth < kRecursionLimit) CheckWriters(chosen);
    const std::size_t step = nodes.size() / 64 + 1;
    for (std::size_t i = 0; i < nodes.size(); i += step) CheckSiblings(*nodes[i]);
  }

  CheckAttributeReader(markup);
  return 0;
}
