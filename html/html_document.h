#pragma once

#include <memory>

#include "html/html_element.h"

namespace qrl {

// Holder of one parsed tree.
class HtmlDocument {
 public:
  ElementRef root;  // never empty in a document that HtmlParser::Parse returned
};

using DocumentRef = std::shared_ptr<HtmlDocument>;

}  // namespace qrl
