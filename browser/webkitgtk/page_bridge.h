// The page side of web messages. Pages talk to the host through
// window.chrome.webview: postMessage(value) sends, and a "message" event on
// the same object receives, with the text in event.data. A script installed
// at the start of every document provides that object over a script message
// handler.
#pragma once

#include <string>
#include <string_view>

namespace qrl {

// The name under window.webkit.messageHandlers.
inline constexpr const char* BridgeHandlerName = "qrlantern";

// The script that provides window.chrome.webview.
const char* BridgeScript();

// A script that raises the "message" event with `text` as its data.
std::string DeliverMessageScript(std::u16string_view text);

// `text` as a JavaScript string literal, in double quotes, in UTF-8.
std::string ScriptStringLiteral(std::u16string_view text);

}  // namespace qrl
