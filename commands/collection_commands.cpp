// Commands that find elements below a start element and give them as
// handles. Every element found is registered before any filter looks at it,
// so what a filter drops still has its entry in the table.
#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "commands/element_table.h"
#include "commands/text_utils.h"
#include "host/cdom.h"

namespace qrl {

HostWord CDOM::wvGetElementById(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  const ElementRef start = StartOfHandle(IntArg(args, 0));
  if (!start) return GiveInt(NoElement);
  const ElementRef found = start->GetElementById(TextArg(args, 1));
  if (!found) return GiveInt(NoElement);
  return GiveInt(RegisterElement(found));
}

HostWord CDOM::wvGetElementsByTagName(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  const ElementRef start = StartOfHandle(IntArg(args, 0));
  if (!start) return GiveEmptyArray();
  return GiveHandleArray(RegisterElements(start->GetElementsByTagName(TextArg(args, 1))));
}

// Optional arguments: tag filter (exact), count (0 = all, 1 = one handle as
// an integer), start (counted from 1; 0 counts as 1 for a single handle).
// Count and start apply to what the tag filter left.
HostWord CDOM::wvGetElementsByClass(HostWord, HostWord, HostWord, HostValue* args,
                                    HostWord argCount) {
  const std::string classList = TextArg(args, 1);
  const std::string tagFilter = argCount >= 3 ? TextArg(args, 2) : std::string();
  const std::int64_t count = argCount >= 4 ? IntArg(args, 3) : 0;
  std::int64_t index = (argCount >= 5 ? IntArg(args, 4) : 1) - std::int64_t{1};

  const ElementRef start = StartOfHandle(IntArg(args, 0));
  if (!start) return GiveEmptyArray();
  const ElementList found = start->GetElementsByClassName(classList);
  std::vector<ElementHandle> handles = RegisterElements(found);

  if (!tagFilter.empty()) {
    std::vector<ElementHandle> kept;
    for (std::size_t i = 0; i < found.size(); ++i)
      if (std::string_view(found[i]->name()) == tagFilter) kept.push_back(handles[i]);
    handles = std::move(kept);
  }
  const auto size = static_cast<std::int64_t>(handles.size());
  if (count == 1) {
    if (index == -1) index = 0;
    return GiveInt(index >= 0 && index < size ? handles[static_cast<std::size_t>(index)]
                                              : NoElement);
  }
  if (handles.empty() || index < 0 || index >= size) return GiveEmptyArray();
  const std::int64_t wanted = count == 0 ? size : std::max<std::int64_t>(count, 0);
  const std::int64_t stop = std::min(size, index + wanted);
  return GiveHandleArray(std::vector<ElementHandle>(handles.begin() + index, handles.begin() + stop));
}

// Only direct children, text runs included; the tag filter ignores ASCII case.
HostWord CDOM::wvGetChildren(HostWord, HostWord, HostWord, HostValue* args, HostWord argCount) {
  const std::string filter = argCount >= 2 ? ToLower(TextArg(args, 1)) : std::string();
  const ElementRef element = ElementOfHandle(IntArg(args, 0));
  if (!element) return GiveInt(NoElement);
  const ElementList children = element->GetChildren();
  std::vector<ElementHandle> handles = RegisterElements(children);
  if (!filter.empty()) {
    std::vector<ElementHandle> kept;
    for (std::size_t i = 0; i < children.size(); ++i)
      if (ToLower(std::string_view(children[i]->name())) == filter) kept.push_back(handles[i]);
    handles = std::move(kept);
  }
  return GiveHandleArray(std::move(handles));
}

}  // namespace qrl
