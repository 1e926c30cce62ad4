#include "commands/element_table.h"

#include <algorithm>

namespace qrl {

DocumentRef RootDocument;
std::vector<ElementRef> ElementTable;

ElementHandle RegisterElement(const ElementRef& element) {
  ElementTable.push_back(element);
  return static_cast<ElementHandle>(ElementTable.size() - 1);
}

std::vector<ElementHandle> RegisterElements(const ElementList& elements) {
  std::vector<ElementHandle> handles;
  handles.reserve(elements.size());
  // Grow geometrically: an exact reserve per call would copy the table on
  // every small search.
  const std::size_t needed = ElementTable.size() + elements.size();
  if (needed > ElementTable.capacity())
    ElementTable.reserve(std::max(needed, 2 * ElementTable.capacity()));
  for (const auto& element : elements) handles.push_back(RegisterElement(element));
  return handles;
}

void ResetElementTable() {
  ElementTable.clear();
  ElementTable.emplace_back();
}

void CutElementTable() {
  ElementTable.resize(1);
}

ElementRef ElementOfHandle(ElementHandle handle) {
  if (handle < 1 || static_cast<std::size_t>(handle) >= ElementTable.size()) return {};
  return ElementTable[static_cast<std::size_t>(handle)];
}

ElementRef StartOfHandle(ElementHandle handle) {
  if (handle == RootHandle) return RootDocument ? RootDocument->root : ElementRef{};
  return ElementOfHandle(handle);
}

}  // namespace qrl
