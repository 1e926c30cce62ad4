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

// Parses `source` with a fresh parser, capturing the warnings.
ParseOutcome ParseCapturingWarnings(std::string_view source);

// Parses `source` with a parser that lives as long as the program (the
// document keeps the tree alive on its own).
DocumentRef ParseQuietly(std::string_view source);

}  // namespace qrl::testing
