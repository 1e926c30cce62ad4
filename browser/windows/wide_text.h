// Texts between our UTF-16 strings and the system's wide strings, which on
// Windows hold the same 16-bit units.
#pragma once

#include <windows.h>

#include <cwchar>
#include <string>
#include <string_view>

namespace qrl {

inline std::wstring ToWide(std::u16string_view text) {
  return std::wstring(text.begin(), text.end());
}

inline std::u16string FromWide(const wchar_t* text) {
  if (!text) return {};
  return std::u16string(text, text + std::wcslen(text));
}

// Copies a string that a COM method handed out and frees it as COM asks:
// with CoTaskMemFree.
inline std::u16string TakeComString(LPWSTR text) {
  std::u16string copy = FromWide(text);
  CoTaskMemFree(text);
  return copy;
}

}  // namespace qrl
