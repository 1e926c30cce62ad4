#include "html/class_names.h"

#include <algorithm>

namespace qrl {

namespace {

// Whether `name` (not empty, without spaces) stands in `list` between spaces
// or the ends of the list.
bool BearsClassName(std::string_view list, std::string_view name) {
  for (std::size_t at = list.find(name); at != std::string_view::npos; at = list.find(name, at + 1)) {
    const std::size_t end = at + name.size();
    const bool startsName = at == 0 || list[at - 1] == ' ';
    const bool endsName = end == list.size() || list[end] == ' ';
    if (startsName && endsName) return true;
  }
  return false;
}

}  // namespace

std::vector<std::string_view> SplitClassNameViews(std::string_view classList) {
  std::vector<std::string_view> names;
  std::size_t at = 0;
  while (true) {
    at = classList.find_first_not_of(' ', at);
    if (at == std::string_view::npos) break;
    const std::size_t end = std::min(classList.find(' ', at), classList.size());
    names.push_back(classList.substr(at, end - at));
    at = end;
  }
  std::sort(names.begin(), names.end());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  return names;
}

std::set<std::string, std::less<>> SplitClassNames(std::string_view classList) {
  const std::vector<std::string_view> names = SplitClassNameViews(classList);
  return std::set<std::string, std::less<>>(names.begin(), names.end());
}

bool BearsAllClassNames(std::string_view have, const std::vector<std::string_view>& wanted) {
  return std::all_of(wanted.begin(), wanted.end(),
                     [have](std::string_view name) { return BearsClassName(have, name); });
}

}  // namespace qrl
