// Markup of a subtree in this engine's normal form: attributes in byte order
// with double quotes and unescaped values, every element with its end tag,
// raw text only where an element has no children.
#include <string>
#include <vector>

#include "html/html_element.h"

namespace qrl {

namespace {

void AppendStartTag(const HtmlElement& node, std::string& out) {
  out.push_back('<');
  out.append(node.name());
  for (const auto& [name, value] : node.attributes()) {
    out.push_back(' ');
    out.append(name);
    out.append("=\"");
    out.append(value);
    out.push_back('"');
  }
  out.push_back('>');
}

void AppendEndTag(const HtmlElement& node, std::string& out) {
  out.append("</");
  out.append(node.name());
  out.push_back('>');
}

}  // namespace

void HtmlElement::AppendMarkup(std::string& out) const {
  struct Level {
    const HtmlElement* node;
    std::size_t next;  // index of the child to write next
  };
  std::vector<Level> levels;
  // A node without a name (the root, or a tag that had none) writes only its children.
  auto enter = [&](const HtmlElement& node) {
    if (node.name().empty()) {
      if (!node.children().empty()) levels.push_back({&node, 0});
      return;
    }
    if (node.name() == "plain") {
      out.append(node.text());
      return;
    }
    AppendStartTag(node, out);
    if (!node.children().empty()) {
      levels.push_back({&node, 0});
      return;
    }
    out.append(node.text());
    AppendEndTag(node, out);
  };

  enter(*this);
  while (!levels.empty()) {
    Level& level = levels.back();
    if (level.next < level.node->children().size()) {
      const HtmlElement& child = *level.node->children()[level.next++];
      enter(child);
      continue;
    }
    if (!level.node->name().empty()) AppendEndTag(*level.node, out);
    levels.pop_back();
  }
}

}  // namespace qrl
