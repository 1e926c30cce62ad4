// A compact written form of a tree for the tests: root[div{id="a"}['x', br]].
// A text run is 'text'; an element is its name ("" when it has none), then
// its attributes in braces, its own text in parentheses and its children in
// brackets, each part only when it isn't empty.
#pragma once

#include <string>

#include "html/html_element.h"

namespace qrl::testing {

std::string TreeNotation(const HtmlElement& root);

}  // namespace qrl::testing
