#include "browser/url_rule.h"

#include <array>

#include "commands/text_utils.h"

namespace qrl {
namespace {

bool HasDriveColon(std::u16string_view url) {
  // An empty or one-character text has no second character and so no drive;
  // it goes on to the scheme test like any other short text.
  if (url.size() < 3) return false;
  const std::u16string_view afterLetter = url.substr(1, 2);
  return afterLetter == u":\\" || afterLetter == u":/";
}

bool HasKnownScheme(std::u16string_view url) {
  static constexpr std::array<std::u16string_view, 3> schemes = {u"http://", u"https://",
                                                                 u"file://"};
  const std::u16string lower = ToLower(url);
  for (const auto scheme : schemes)
    if (std::u16string_view(lower).starts_with(scheme)) return true;
  return false;
}

}  // namespace

std::u16string NormalizeUrl(std::u16string_view url) {
  std::u16string normalized(url);
  if (HasDriveColon(normalized)) normalized.insert(0, u"file:///");
  if (!HasKnownScheme(normalized)) normalized.insert(0, u"https://");
  return ReplaceAll(normalized, u"\\", u"/");
}

}  // namespace qrl
