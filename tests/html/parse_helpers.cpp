#include "tests/html/parse_helpers.h"

#include <gtest/gtest.h>

namespace qrl::testing {

ParseOutcome ParseCapturingWarnings(std::string_view source) {
  const std::string input(source);
  HtmlParser parser;
  ::testing::internal::CaptureStderr();
  DocumentRef document = parser.Parse(input.c_str(), static_cast<std::uint32_t>(input.size()));
  return {document, ::testing::internal::GetCapturedStderr()};
}

DocumentRef ParseQuietly(std::string_view source) { return ParseCapturingWarnings(source).document; }

}  // namespace qrl::testing
