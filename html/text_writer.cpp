// The visible text of a subtree: text runs as they stand, a TAB before a table
// cell and a line feed before a block that follows a sibling, and nothing of
// the head, styles and scripts.
#include <string>
#include <vector>

#include "html/html_element.h"

namespace qrl {

namespace {

bool IsHiddenFromText(std::string_view name) {
  return name == "head" || name == "meta" || name == "style" || name == "script" || name == "link";
}

// The separator that a child puts between its previous sibling and itself.
char SeparatorBefore(std::string_view name) {
  switch (name.size()) {
    case 1:
      return name[0] == 'p' ? '\n' : '\0';
    case 2:
      if (name == "td") return '\t';
      if (name == "tr" || name == "br" || name == "hr") return '\n';
      // Seven heading names, h1 to h7.
      return name[0] == 'h' && name[1] >= '1' && name[1] <= '7' ? '\n' : '\0';
    case 3:
      return name == "div" ? '\n' : '\0';
    case 4:
      return name == "area" ? '\n' : '\0';
    default:
      return '\0';
  }
}

}  // namespace

std::string HtmlElement::GetText() const {
  std::string out;
  AppendText(out);
  return out;
}

void HtmlElement::AppendText(std::string& out) const {
  struct Level {
    const HtmlElement* node;
    std::size_t next;  // index of the child to write next
  };
  std::vector<Level> levels;
  auto enter = [&](const HtmlElement& node) {
    if (IsHiddenFromText(node.name())) return;
    if (node.name() == "plain") {
      out.append(node.text());
      return;
    }
    if (!node.children().empty()) levels.push_back({&node, 0});
  };

  enter(*this);
  while (!levels.empty()) {
    Level& level = levels.back();
    if (level.next == level.node->children().size()) {
      levels.pop_back();
      continue;
    }
    const HtmlElement& child = *level.node->children()[level.next];
    if (level.next > 0) {
      if (const char separator = SeparatorBefore(child.name())) out.push_back(separator);
    }
    ++level.next;
    enter(child);
  }
}

}  // namespace qrl
