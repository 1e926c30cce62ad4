// Comparisons of wide text that ignore the case of ASCII letters only, which
// is all that URL schemes, host names and tag names need here.
#pragma once

#include <cstddef>
#include <string_view>

namespace qrl::autopilot {

inline wchar_t LowerAscii(wchar_t unit) {
  return unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit - L'A' + L'a') : unit;
}

// `lower` is written in lower case.
inline bool StartsWithNoCase(std::wstring_view text, std::wstring_view lower) {
  if (text.size() < lower.size()) return false;
  for (std::size_t i = 0; i < lower.size(); ++i)
    if (LowerAscii(text[i]) != lower[i]) return false;
  return true;
}

inline bool EqualsNoCase(std::wstring_view text, std::wstring_view lower) {
  return text.size() == lower.size() && StartsWithNoCase(text, lower);
}

inline std::size_t FindNoCase(std::wstring_view text, std::wstring_view lower,
                              std::size_t from = 0) {
  for (std::size_t at = from; at + lower.size() <= text.size(); ++at)
    if (StartsWithNoCase(text.substr(at), lower)) return at;
  return std::wstring_view::npos;
}

inline std::size_t FindLastNoCase(std::wstring_view text, std::wstring_view lower) {
  if (text.size() < lower.size()) return std::wstring_view::npos;
  for (std::size_t at = text.size() - lower.size() + 1; at-- > 0;)
    if (StartsWithNoCase(text.substr(at), lower)) return at;
  return std::wstring_view::npos;
}

}  // namespace qrl::autopilot
