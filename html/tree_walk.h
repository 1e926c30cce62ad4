// Document-order walks over a subtree without recursion: the walk keeps one
// range of siblings per level, so its memory follows the depth, not the size.
#pragma once

#include <vector>

#include "html/html_element.h"

namespace qrl {

// Visits the descendants of `start` (not `start` itself), a node before its
// children and a child with all its descendants before its next sibling.
// `visit` returns false to stop the walk.
template <typename Visit>
void WalkDescendants(const HtmlElement& start, Visit&& visit) {
  struct Level {
    const ElementRef* next;
    const ElementRef* end;
  };
  std::vector<Level> levels;
  if (!start.children.empty()) levels.push_back({start.children.begin(), start.children.end()});
  while (!levels.empty()) {
    Level& level = levels.back();
    if (level.next == level.end) {
      levels.pop_back();
      continue;
    }
    const ElementRef& node = *level.next++;
    if (!visit(node)) return;
    if (!node->children.empty()) levels.push_back({node->children.begin(), node->children.end()});
  }
}

}  // namespace qrl
