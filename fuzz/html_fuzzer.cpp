// Fuzzer of the HTML engine. Any input must parse without a fault, and the
// tree that comes out is read against plain models of the rules: the queries
// against a walk in document order, the attribute reader against a direct
// reading of its three states. Any difference aborts.
//
// Input layout: one byte with the lengths of the id (low nibble) and the
// class list (high nibble), one byte with the length of the tag name (low
// nibble) and a node choice (high nibble), then id, class list, tag name and
// the markup.
#include <algorithm>
#include <cstdint>
#include <iostream>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "commands/text_utils.h"
#include "fuzz/fuzz_input.h"
#include "html/html_document.h"
#include "html/html_element.h"
#include "html/html_parser.h"

namespace {

using qrl::ElementList;
using qrl::HtmlElement;
using qrl::fuzz::Require;

// Every node below `start`, in document order, without recursion (the trees
// can be as deep as the input is long).
ElementList NodesBelow(const HtmlElement& start) {
  ElementList order, pending = start.GetChildren();
  std::reverse(pending.begin(), pending.end());
  while (!pending.empty()) {
    order.push_back(std::move(pending.back()));
    pending.pop_back();
    const ElementList children = order.back()->GetChildren();
    pending.insert(pending.end(), children.rbegin(), children.rend());
  }
  return order;
}

void CheckQueries(const HtmlElement& start, std::string_view id, std::string_view classList, std::string_view tag) {
  qrl::ElementRef firstWithId;
  ElementList withTag, withClasses;
  const std::vector<std::string> wanted = qrl::SplitWords(classList);
  for (const qrl::ElementRef& node : NodesBelow(start)) {
    if (!firstWithId && node->GetAttribute("id") == id) firstWithId = node;
    if (std::string_view(node->name()) == tag) withTag.push_back(node);
    const std::vector<std::string> have = qrl::SplitWords(node->GetAttribute("class"));
    if (std::all_of(wanted.begin(), wanted.end(), [&](const std::string& name) {
          return std::find(have.begin(), have.end(), name) != have.end();
        })) {
      withClasses.push_back(node);
    }
  }
  Require(start.GetElementById(id) == firstWithId, "GetElementById differs from the walk");
  Require(start.GetElementsByTagName(tag) == withTag, "GetElementsByTagName differs");
  Require(start.GetElementsByClassName(classList) == withClasses, "GetElementsByClassName differs");
}

// Each child's neighbours are the entries beside it in its parent's list, and
// its parent is the node whose list holds it.
void CheckFamilies(const ElementList& nodes) {
  for (const qrl::ElementRef& node : nodes) {
    const ElementList children = node->GetChildren();
    for (std::size_t i = 0; i < children.size(); ++i) {
      Require(children[i]->GetParent() == node, "a child's parent is not the node that lists it");
      const qrl::ElementRef previous = i > 0 ? children[i - 1] : nullptr;
      const qrl::ElementRef next = i + 1 < children.size() ? children[i + 1] : nullptr;
      Require(children[i]->GetPreviousSibling() == previous, "GetPreviousSibling differs from the list");
      Require(children[i]->GetNextSibling() == next, "GetNextSibling differs from the list");
    }
  }
}

using Pairs = std::vector<std::pair<std::string, std::string>>;

// State 0 reads a name, 1 follows an "=", 2 reads a value. The map keeps the
// last value of a name, in byte order.
Pairs AttributesByStates(std::string_view raw) {
  std::map<std::string, std::string> attributes;
  int state = 0;
  std::string name, value;
  char quote = ' ';
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
        quote = byte == '"' || byte == '\'' ? byte : ' ';  // an unquoted value ends at a space
        if (quote == ' ') value.assign(1, byte);
        state = 2;
      }
    } else if (quote != ' ' ? byte == quote : lineSpace || byte == ' ') {
      store();
      state = 0;
    } else {
      value.push_back(byte);
    }
  }
  if (!name.empty()) store();
  return Pairs(attributes.begin(), attributes.end());
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // Broken markup writes its warning lines by the thousand; the checks above
  // and the sanitizers don't write through std::cerr.
  std::cerr.setstate(std::ios::badbit);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  std::string_view rest(reinterpret_cast<const char*>(data) + 2, size - 2);
  const std::string_view id = qrl::fuzz::TakeFront(rest, data[0] & 0x0F);
  const std::string_view classList = qrl::fuzz::TakeFront(rest, data[0] >> 4);
  const std::string_view tag = qrl::fuzz::TakeFront(rest, data[1] & 0x0F);
  const std::string markup(rest);  // its buffer ends in the NUL the parser needs

  qrl::HtmlParser parser;
  const qrl::DocumentRef document = parser.Parse(markup.c_str(), static_cast<std::uint32_t>(markup.size()));
  // Queries from the root, and from one node the input chooses.
  const ElementList nodes = NodesBelow(*document->root);
  CheckQueries(*document->root, id, classList, tag);
  CheckFamilies(nodes);
  if (!nodes.empty()) CheckQueries(*nodes[(data[1] >> 4) * nodes.size() / 16], id, classList, tag);

  // The whole markup as the raw text of one tag.
  const qrl::ElementRef element = HtmlElement::FromStartTag(markup);
  Pairs read;
  for (const auto& [name, value] : element->attributes()) read.emplace_back(name, value);
  Require(read == AttributesByStates(markup), "attributes differ from the three-state reading or their order");
  return 0;
}
