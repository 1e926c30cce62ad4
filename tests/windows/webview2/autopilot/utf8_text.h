// UTF-8 to the system's wide text and back, by the system's own converter:
// a byte that is not UTF-8 becomes U+FFFD, as a browser shows it.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace qrl::autopilot {

inline std::wstring FromUtf8(std::string_view bytes) {
  if (bytes.empty()) return {};
  const int size = static_cast<int>(bytes.size());
  const int units = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, nullptr, 0);
  std::wstring text(static_cast<std::size_t>(units), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, text.data(), units);
  return text;
}

inline std::string ToUtf8(std::wstring_view text) {
  if (text.empty()) return {};
  const int size = static_cast<int>(text.size());
  const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), size, bytes.data(), length, nullptr, nullptr);
  return bytes;
}

}  // namespace qrl::autopilot
