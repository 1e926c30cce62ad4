#include "tests/windows/webview2/autopilot/script_answer.h"

#include <cwctype>

#include "tests/windows/webview2/autopilot/ascii_text.h"

namespace qrl::autopilot {
namespace {

constexpr std::wstring_view MarkupScript = L"document.documentElement.outerHTML";

std::wstring_view WithoutBlanksAndSemicolon(std::wstring_view script) {
  while (!script.empty() && std::iswspace(script.front())) script.remove_prefix(1);
  while (!script.empty() && (std::iswspace(script.back()) || script.back() == L';'))
    script.remove_suffix(1);
  return script;
}

// "<html" as a whole tag name: "<htmlx" is another element.
std::size_t FindHtmlStartTag(std::wstring_view document) {
  constexpr std::wstring_view Open = L"<html";
  for (std::size_t at = FindNoCase(document, Open); at != std::wstring_view::npos;
       at = FindNoCase(document, Open, at + 1)) {
    const std::size_t next = at + Open.size();
    if (next == document.size() || document[next] == L'>' || document[next] == L'/' ||
        std::iswspace(document[next]))
      return at;
  }
  return std::wstring_view::npos;
}

std::wstring DocumentElementMarkup(std::wstring_view document) {
  const std::size_t start = FindHtmlStartTag(document);
  if (start == std::wstring_view::npos)
    return L"<html><head></head><body>" + std::wstring(document) + L"</body></html>";
  constexpr std::wstring_view Close = L"</html>";
  const std::size_t close = FindLastNoCase(document, Close);
  const std::size_t end =
      close == std::wstring_view::npos || close < start ? document.size() : close + Close.size();
  return std::wstring(document.substr(start, end - start));
}

// As JSON.stringify writes a string: the short escapes where JSON has them,
// \u00XX for the other control characters, every other unit as it is.
std::wstring JsonString(std::wstring_view text) {
  constexpr wchar_t Hex[] = L"0123456789abcdef";
  std::wstring json;
  json.reserve(text.size() + text.size() / 16 + 2);
  json += L'"';
  for (const wchar_t unit : text) {
    switch (unit) {
      case L'"': json += L"\\\""; break;
      case L'\\': json += L"\\\\"; break;
      case L'\b': json += L"\\b"; break;
      case L'\f': json += L"\\f"; break;
      case L'\n': json += L"\\n"; break;
      case L'\r': json += L"\\r"; break;
      case L'\t': json += L"\\t"; break;
      default:
        if (unit < 0x20) {
          json += L"\\u00";
          json += Hex[unit >> 4];
          json += Hex[unit & 0xF];
        } else {
          json += unit;
        }
    }
  }
  json += L'"';
  return json;
}

}  // namespace

std::wstring AnswerScript(std::wstring_view script, std::wstring_view document) {
  if (WithoutBlanksAndSemicolon(script) != MarkupScript) return L"null";
  return JsonString(DocumentElementMarkup(document));
}

}  // namespace qrl::autopilot
