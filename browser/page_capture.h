// How the page on show becomes the current document: its markup is asked
// for by a script, and the answer replaces the document and the handle table.
#pragma once

#include <string>
#include <string_view>

#include "browser/browser_component.h"

namespace qrl {

// The script whose value is the markup of the page.
inline constexpr std::u16string_view PageMarkupScript = u"document.documentElement.outerHTML;";
// Installed on every new document: it posts the document's URL to the host.
inline constexpr std::u16string_view PostUrlScript =
    u"window.chrome.webview.postMessage(window.document.URL);";

// Who asked for the markup. Only a refresh reports a failed script.
enum class CaptureCause { Navigation, Refresh };

// The answer of PageMarkupScript. A failed script changes nothing. Otherwise
// the JSON string is unescaped, loses its quotes, is parsed as UTF-8 into a
// new document that replaces the current one (see CapturedMarkup), the
// handle table is reset and "NavComplete" goes to the notify window.
//
// A capture that arrives while another one runs on this thread (the notify
// window's owner may run a message loop while it takes the text) waits and
// runs after it, in arrival order, so that nothing locks against itself.
void CapturePage(CaptureCause cause, ResultCode errorCode, std::u16string_view resultJson);
// The same with the answer already turned into the bytes to parse.
void CaptureMarkup(CaptureCause cause, ResultCode errorCode, std::string markup);

// Asks `view` for its markup (ExecuteMarkupScript), with a capture as the
// completion.
void RequestCapture(WebView& view, CaptureCause cause);

// Sends a message that the page posted straight back to it.
void EchoWebMessage(WebView& sender, const WebMessageArgs& message);

}  // namespace qrl
