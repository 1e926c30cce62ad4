// Loading a script's own markup, and cutting the handle table back.
#include <string>

#include "commands/element_table.h"
#include "host/cdom.h"
#include "html/html_parser.h"

namespace qrl {

// The parser of wvParse; it keeps the root of its last parse alive until the
// next one, as every parser does.
HtmlParser DocumentParser;

HostWord CDOM::wvParse(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  const std::string markup = TextArg(args, 0);
  RootDocument = DocumentParser.Parse(markup.c_str(), static_cast<std::uint32_t>(markup.size()));
  ResetElementTable();
  return GiveInt(0);
}

HostWord CDOM::wvClear(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  CutElementTable();
  return GiveInt(0);
}

}  // namespace qrl
