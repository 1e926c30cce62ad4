// Helpers shared by the engine tests.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "html/html_parser.h"

namespace qrl::testing {

struct ParseOutcome {
  DocumentRef document;
  std::string warnings;  // what the parse wrote to the standard error stream
};

inline ParseOutcome ParseCapturingWarnings(std::string_view source) {
  const std::string input(source);
  HtmlParser parser;
  ::testing::internal::CaptureStderr();
  DocumentRef document = parser.Parse(input.c_str(), static_cast<std::uint32_t>(input.size()));
  return {document, ::testing::internal::GetCapturedStderr()};
}

inline DocumentRef ParseQuietly(std::string_view source) { return ParseCapturingWarnings(source).document; }

inline std::string MarkupOf(const HtmlElement& node) {
  std::string markup;
  node.AppendMarkup(markup);
  return markup;
}

// A compact written form of a small tree: root[div{id="a"}['x', br]]. A text
// run is 'text'; an element is its name ("" when it has none), then its
// attributes in braces, its own text in parentheses and its children in
// brackets, each part only when it isn't empty.
inline std::string TreeNotation(const HtmlElement& node, std::string_view shownName = "root") {
  if (node.name == "plain") return "'" + std::string(node.text) + "'";
  std::string out(shownName.empty() ? std::string_view("\"\"") : shownName);
  const char* separator = "{";
  for (const auto& [name, value] : node.attributes) {
    out.append(separator).append(name).append("=\"").append(value).append("\"");
    separator = " ";
  }
  if (!node.attributes.empty()) out.push_back('}');
  if (!node.text.empty()) out.append("(").append(node.text).append(")");
  separator = "[";
  for (const ElementRef& child : node.children) {
    out.append(separator).append(TreeNotation(*child, child->name));
    separator = ", ";
  }
  if (!node.children.empty()) out.push_back(']');
  return out;
}

}  // namespace qrl::testing
