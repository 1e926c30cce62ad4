#include "tests/html/tree_notation.h"

#include <vector>

namespace qrl::testing {

namespace {

void AppendNodeHead(const HtmlElement& node, std::string& out) {
  if (node.name == "plain") {
    out.append("'").append(node.text).append("'");
    return;
  }
  out.append(node.name.empty() ? std::string_view("\"\"") : std::string_view(node.name));
  if (!node.attributes.empty()) {
    out.push_back('{');
    const char* separator = "";
    for (const auto& [name, value] : node.attributes) {
      out.append(separator).append(name).append("=\"").append(value).append("\"");
      separator = " ";
    }
    out.push_back('}');
  }
  if (!node.text.empty()) out.append("(").append(node.text).append(")");
}

}  // namespace

// Written without recursion, so that it also serves for very deep trees.
std::string TreeNotation(const HtmlElement& root) {
  struct Level {
    const HtmlElement* node;
    std::size_t next;
  };
  std::string out = "root";
  std::vector<Level> levels;
  if (!root.children.empty()) {
    out.push_back('[');
    levels.push_back({&root, 0});
  }
  while (!levels.empty()) {
    Level& level = levels.back();
    if (level.next == level.node->children.size()) {
      out.push_back(']');
      levels.pop_back();
      continue;
    }
    if (level.next > 0) out.append(", ");
    const HtmlElement& child = *level.node->children[level.next++];
    AppendNodeHead(child, out);
    if (child.name != "plain" && !child.children.empty()) {
      out.push_back('[');
      levels.push_back({&child, 0});
    }
  }
  return out;
}

}  // namespace qrl::testing
