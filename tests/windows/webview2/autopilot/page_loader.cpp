#include "tests/windows/webview2/autopilot/page_loader.h"

#include <cstdio>
#include <optional>
#include <utility>

#include "tests/windows/webview2/autopilot/ascii_text.h"
#include "tests/windows/webview2/autopilot/file_url.h"
#include "tests/windows/webview2/autopilot/utf8_text.h"

namespace qrl::autopilot {
namespace {

constexpr std::wstring_view BlankPage = L"<html><head></head><body></body></html>";
constexpr std::string_view Utf8Bom = "\xEF\xBB\xBF";

std::optional<std::string> ReadBytes(const std::wstring& path) {
  std::FILE* file = _wfopen(path.c_str(), L"rb");
  if (!file) return std::nullopt;
  std::string bytes;
  char buffer[16384];
  std::size_t count = 0;
  while ((count = std::fread(buffer, 1, sizeof buffer, file)) > 0) bytes.append(buffer, count);
  const bool failed = std::ferror(file) != 0;
  std::fclose(file);
  if (failed) return std::nullopt;
  return bytes;
}

// Wine takes "/a/b" on the current drive, which is the one that maps the
// Unix root when lantern starts from a Unix folder; Z: is that drive in a
// new wine prefix, for a run that starts anywhere else.
std::optional<std::string> ReadFileOfPath(const std::wstring& path) {
  if (std::optional<std::string> bytes = ReadBytes(path)) return bytes;
  if (!path.starts_with(L'/')) return std::nullopt;
  return ReadBytes(L"Z:" + path);
}

std::wstring EscapedHtml(std::wstring_view text) {
  std::wstring escaped;
  for (const wchar_t unit : text) {
    switch (unit) {
      case L'&': escaped += L"&amp;"; break;
      case L'<': escaped += L"&lt;"; break;
      case L'>': escaped += L"&gt;"; break;
      case L'"': escaped += L"&quot;"; break;
      default: escaped += unit;
    }
  }
  return escaped;
}

LoadedPage ErrorPage(std::wstring_view url, std::int32_t status) {
  std::wstring markup = L"<html><head><title>Page not loaded</title></head><body>";
  markup += L"<h1>This page could not be loaded</h1><p>" + EscapedHtml(url) + L"</p>";
  markup += L"</body></html>";
  return {std::move(markup), false, status};
}

}  // namespace

LoadedPage LoadUrl(std::wstring_view url) {
  if (EqualsNoCase(url, L"about:blank"))
    return {std::wstring(BlankPage), true, WebErrorStatus::Unknown};
  const std::optional<std::wstring> path = FilePathOfUrl(url);
  if (!path) return ErrorPage(url, WebErrorStatus::CannotConnect);
  const std::optional<std::string> bytes = ReadFileOfPath(*path);
  if (!bytes) return ErrorPage(url, WebErrorStatus::ConnectionAborted);
  std::string_view text = *bytes;
  if (text.starts_with(Utf8Bom)) text.remove_prefix(Utf8Bom.size());
  return {FromUtf8(text), true, WebErrorStatus::Unknown};
}

}  // namespace qrl::autopilot
