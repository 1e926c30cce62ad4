// Links by address or text, images by source, any element by an attribute:
// one search by value, four ways of reading the arguments.
#include <string>

#include "commands/element_table.h"
#include "commands/text_utils.h"
#include "commands/value_pattern.h"
#include "host/cdom.h"

namespace qrl {
namespace {

// The star flag is on unless the optional third argument is 0.
ValueSearch LinkSearch(const char* tagName, const char* attributeName, bool byText,
                       const HostValue* args, HostWord argCount) {
  const bool starFlag = argCount == 3 ? IntArg(args, 2) != 0 : true;
  return {tagName, attributeName, byText, ValuePattern::Make(TextArg(args, 1), starFlag)};
}

}  // namespace

HostWord CDOM::SelectByValue(const ValueSearch& search, ElementHandle handle) {
  const ElementRef start = StartOfHandle(handle);
  if (!start) return GiveEmptyArray();
  const ElementList found = start->GetElementsByTagName(search.tagName);
  const std::vector<ElementHandle> handles = RegisterElements(found);
  std::vector<ElementHandle> selected;
  for (std::size_t i = 0; i < found.size(); ++i) {
    const std::string value = search.byText ? found[i]->GetText()
                                            : found[i]->GetAttribute(search.attributeName);
    if (search.pattern.Selects(TrimText(value, TrimSide::Both))) selected.push_back(handles[i]);
  }
  if (selected.empty()) return GiveEmptyArray();
  return GiveHandleArray(std::move(selected));
}

HostWord CDOM::wvGetLinksByHREF(HostWord, HostWord, HostWord, HostValue* args, HostWord argCount) {
  return SelectByValue(LinkSearch("a", "href", false, args, argCount), IntArg(args, 0));
}

HostWord CDOM::wvGetLinksByText(HostWord, HostWord, HostWord, HostValue* args, HostWord argCount) {
  return SelectByValue(LinkSearch("a", "", true, args, argCount), IntArg(args, 0));
}

HostWord CDOM::wvGetImagesBySrc(HostWord, HostWord, HostWord, HostValue* args, HostWord argCount) {
  return SelectByValue(LinkSearch("img", "src", false, args, argCount), IntArg(args, 0));
}

// Here the pattern is optional, and an empty one asks nothing of the value:
// every element of the tag is selected, with the attribute or without.
HostWord CDOM::wvGetElementsByAttribute(HostWord, HostWord, HostWord, HostValue* args,
                                        HostWord argCount) {
  const std::string pattern = argCount == 4 || argCount == 5 ? TextArg(args, 3) : std::string();
  const bool starFlag = argCount == 5 ? IntArg(args, 4) != 0 : true;
  ValueSearch search{TextArg(args, 1), TextArg(args, 2), false,
                     ValuePattern::Make(pattern, starFlag)};
  if (search.pattern.literal.empty()) {
    search.pattern.starMode = false;
    search.pattern.emptySelectsAll = true;
  }
  return SelectByValue(search, IntArg(args, 0));
}

}  // namespace qrl
