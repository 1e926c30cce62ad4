#include "browser/browser_state.h"

#include "browser/browser_platform.h"
#include "trace/trace_text.h"

namespace qrl {

// The controller is defined before the view so that, at unload, the view goes
// first.
std::shared_ptr<WebController> BrowserController;
std::shared_ptr<WebView> BrowserView;

WindowHandle HostWindow = 0;
std::u16string StartUrl;
WindowHandle NotifyWindow = 0;
std::u16string BrowserFolder;
std::string ScriptEventName;
std::int32_t CanGoBackFlag = 0;
std::int32_t CanGoForwardFlag = 0;
std::mutex PageLock;

// Traced before it is set: the window's owner may run a message loop while
// it takes the text, and what happens then belongs after this line. A text
// for window 0 went nowhere, which is worth seeing when a script waits for it.
void SetNotifyText(std::string_view text) {
  Trace("notify", [text] {
    return "window=" + std::to_string(NotifyWindow) + " text=" + TraceQuoted(text);
  });
  if (NotifyWindow != 0) ActivePlatform().SetWindowText(NotifyWindow, text);
}

}  // namespace qrl
