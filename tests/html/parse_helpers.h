// Helpers shared by the engine tests.
#pragma once

#include <string>
#include <string_view>

#include "html/html_parser.h"

namespace qrl::testing {

struct ParseOutcome {
  DocumentRef document;
  std::string warnings;  // what the parse wrote to the standard error stream
};

ParseOutcome ParseCapturingWarnings(std::string_view source);
DocumentRef ParseQuietly(std::string_view source);

// A compact written form of a tree: root[div{id="a"}['x', br]]. A text run is
// 'text'; an element is its name ("" when it has none), then its attributes in
// braces, its own text in parentheses and its children in brackets, each part
// only when it isn't empty.
std::string TreeNotation(const HtmlElement& root);

}  // namespace qrl::testing
