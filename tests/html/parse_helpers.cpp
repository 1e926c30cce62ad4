#include "tests/html/parse_helpers.h"

#include <gtest/gtest.h>

#include <vector>

namespace qrl::testing {

ParseOutcome ParseCapturingWarnings(std::string_view source) {
  const std::string input(source);
  HtmlParser parser;
  ::testing::internal::CaptureStderr();
  DocumentRef document = parser.Parse(input.c_str(), static_cast<std::uint32_t>(input.size()));
  return {document, ::testing::internal::GetCapturedStderr()};
}

DocumentRef ParseQuietly(std::string_view source) { return ParseCapturingWarnings(source).document; }

namespace {

void AppendNodeHead(const HtmlElement& node, std::string& out) {
  if (node.name == "plain") {
    out.append("'").append(node.text).append("'");
    return;
  }
  out.append(node.name.empty() ? std::string_view("\"\"") : std::string_view(node.name));
  if (!node.attributes.empty()) {
    const char* separator = "{";
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
  std::string out = "root";
  std::vector<std::pair<const HtmlElement*, std::size_t>> levels;
  if (!root.children.empty()) {
    out.push_back('[');
    levels.emplace_back(&root, 0);
  }
  while (!levels.empty()) {
    auto& [node, next] = levels.back();
    if (next == node->children.size()) {
      out.push_back(']');
      levels.pop_back();
      continue;
    }
    if (next > 0) out.append(", ");
    const HtmlElement& child = *node->children[next++];
    AppendNodeHead(child, out);
    if (child.name != "plain" && !child.children.empty()) {
      out.push_back('[');
      levels.emplace_back(&child, 0);
    }
  }
  return out;
}

}  // namespace qrl::testing
