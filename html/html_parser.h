#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "html/html_document.h"

namespace qrl {

// Turns bytes into a document and never fails. The input must be followed by
// one readable NUL byte (a std::string's buffer is).
class HtmlParser {
 public:
  HtmlParser();

  DocumentRef Parse(const char* input, std::uint32_t length);

  std::set<std::string, std::less<>> voidElements;
  ElementRef root;  // root of the last Parse; empty before the first
};

}  // namespace qrl
