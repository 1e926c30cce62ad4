// The handles a script holds: integers that index one process-wide table of
// element references. 0 names the root of the current document, -1 no
// element, n >= 1 entry n of the table. Issuing only appends; nothing is
// looked up, so one node may have many handles. A load or wvClear cuts the
// table back and every handle but 0 goes stale.
#pragma once

#include <cstdint>
#include <vector>

#include "html/html_document.h"
#include "html/html_element.h"

namespace qrl {

using ElementHandle = std::int32_t;

inline constexpr ElementHandle RootHandle = 0;
inline constexpr ElementHandle NoElement = -1;

extern DocumentRef RootDocument;
extern std::vector<ElementRef> ElementTable;

// Appends the reference; gives the new entry's index.
ElementHandle RegisterElement(const ElementRef& element);

// Appends every element in list order; the handles come out consecutive.
std::vector<ElementHandle> RegisterElements(const ElementList& elements);

// Releases every entry from first to last and leaves one empty entry 0.
void ResetElementTable();

// Cuts the table to its entry 0 (made if missing), releasing in order.
void CutElementTable();

// The element of a handle from 1 up. Anything else, and any value beyond the
// table, gives an empty reference: a command then acts as it does for -1.
ElementRef ElementOfHandle(ElementHandle handle);

// As ElementOfHandle, but 0 gives the current root (empty before any load),
// for the commands that work on the whole document through handle 0.
ElementRef StartOfHandle(ElementHandle handle);

}  // namespace qrl
