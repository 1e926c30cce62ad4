// What ExecuteScript answers on the autopilot control, which runs no
// JavaScript: the page-markup script gets the document's markup, every other
// script gets null.
#pragma once

#include <string>
#include <string_view>

namespace qrl::autopilot {

// The answer as JSON. For "document.documentElement.outerHTML;" (with or
// without the semicolon, and blanks around it) it is a JSON string of the
// document from its <html> start tag to the end of its </html>, so a doctype
// or a comment before it is left out as outerHTML leaves it out. A document
// without <html> is put inside <html><head></head><body>...</body></html>,
// which stands in for the elements that a browser adds. The markup is
// otherwise the document's text as written: nothing is parsed, so entities
// and tags stay as they were.
std::wstring AnswerScript(std::wstring_view script, std::wstring_view document);

}  // namespace qrl::autopilot
