// Document-order walks over a subtree without recursion: the walk keeps one
// range of siblings per level, so its memory follows the depth, not the size.
#pragma once

#include <vector>

#include "html/html_element.h"

namespace qrl {

// Visits the descendants of `start` (not `start` itself), a node before its
// children and a child with all its descendants before its next sibling.
// `visit` takes a `const HtmlElement&` and returns false to stop the walk.
template <typename Visit>
void WalkDescendants(const HtmlElement& start, Visit&& visit) {
  struct Level {
    ChildList::const_iterator next;
    ChildList::const_iterator end;
  };
  std::vector<Level> levels;
  const ChildList top = start.children();
  if (!top.empty()) levels.push_back({top.begin(), top.end()});
  while (!levels.empty()) {
    Level& level = levels.back();
    if (level.next == level.end) {
      levels.pop_back();
      continue;
    }
    const HtmlElement& node = **level.next++;
    if (!visit(node)) return;
    const ChildList children = node.children();
    if (!children.empty()) levels.push_back({children.begin(), children.end()});
  }
}

}  // namespace qrl
