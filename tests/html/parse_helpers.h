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

}  // namespace qrl::testing
