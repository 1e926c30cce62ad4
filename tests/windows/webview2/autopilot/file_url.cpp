#include "tests/windows/webview2/autopilot/file_url.h"

#include "tests/windows/webview2/autopilot/ascii_text.h"
#include "tests/windows/webview2/autopilot/utf8_text.h"

namespace qrl::autopilot {
namespace {

int HexDigit(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
  if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
  return -1;
}

// A percent sign without two hex digits after it stays as it is, as
// browsers leave it.
std::string PercentDecoded(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int high = text[i] == '%' && i + 2 < text.size() ? HexDigit(text[i + 1]) : -1;
    const int low = high >= 0 ? HexDigit(text[i + 2]) : -1;
    if (low < 0) {
      bytes += text[i];
      continue;
    }
    bytes += static_cast<char>(high * 16 + low);
    i += 2;
  }
  return bytes;
}

bool IsAsciiLetter(wchar_t unit) {
  return (unit >= L'a' && unit <= L'z') || (unit >= L'A' && unit <= L'Z');
}

// "/C:/..." is a drive path behind the slash that ends the URL's host part.
bool IsDrivePathAfterSlash(std::wstring_view path) {
  return path.size() >= 3 && path[0] == L'/' && IsAsciiLetter(path[1]) && path[2] == L':';
}

}  // namespace

std::optional<std::wstring> FilePathOfUrl(std::wstring_view url) {
  constexpr std::wstring_view Scheme = L"file://";
  if (!StartsWithNoCase(url, Scheme)) return std::nullopt;
  std::wstring_view rest = url.substr(Scheme.size());
  rest = rest.substr(0, rest.find_first_of(L"?#"));
  const std::size_t slash = rest.find(L'/');
  if (slash == std::wstring_view::npos) return std::nullopt;
  const std::wstring_view host = rest.substr(0, slash);
  if (!host.empty() && !EqualsNoCase(host, L"localhost")) return std::nullopt;
  std::wstring path = FromUtf8(PercentDecoded(ToUtf8(rest.substr(slash))));
  if (IsDrivePathAfterSlash(path)) path.erase(0, 1);
  return path;
}

}  // namespace qrl::autopilot
