#include "browser/webkitgtk/page_bridge.h"

#include <cstdio>

#include "commands/unicode_text.h"

namespace qrl {

const char* BridgeScript() {
  return R"js((function () {
  if (window.chrome && window.chrome.webview) return;
  const channel = window.webkit.messageHandlers.qrlantern;
  const target = new EventTarget();
  const webview = {
    postMessage(message) { channel.postMessage(message); },
    addEventListener(type, listener, options) { target.addEventListener(type, listener, options); },
    removeEventListener(type, listener, options) { target.removeEventListener(type, listener, options); },
  };
  if (!window.chrome) window.chrome = {};
  Object.defineProperty(window.chrome, "webview", { value: webview });
  Object.defineProperty(window, "__qrlanternDeliver", {
    value(text) { target.dispatchEvent(new MessageEvent("message", { data: text })); },
  });
})();)js";
}

std::string ScriptStringLiteral(std::u16string_view text) {
  std::u16string escaped;
  escaped.reserve(text.size() + 2);
  escaped += u'"';
  for (const char16_t unit : text) {
    switch (unit) {
      case u'"': escaped += u"\\\""; break;
      case u'\\': escaped += u"\\\\"; break;
      case u'\n': escaped += u"\\n"; break;
      case u'\r': escaped += u"\\r"; break;
      default:
        // Other control characters, the two line separators that end a
        // JavaScript line, and lone surrogates go as \u escapes, so that the
        // page gets exactly the units that were sent.
        if (unit < 0x20 || unit == 0x2028 || unit == 0x2029 || (unit >= 0xD800 && unit <= 0xDFFF)) {
          char code[8];
          std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(unit));
          for (const char* c = code; *c; ++c) escaped += static_cast<char16_t>(*c);
        } else {
          escaped += unit;
        }
    }
  }
  escaped += u'"';
  return Utf16ToUtf8(escaped);
}

std::string DeliverMessageScript(std::u16string_view text) {
  return "window.__qrlanternDeliver && window.__qrlanternDeliver(" + ScriptStringLiteral(text) +
         ");";
}

}  // namespace qrl
