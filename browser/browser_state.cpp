#include "browser/browser_state.h"

#include "browser/browser_platform.h"

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

void SetNotifyText(std::string_view text) {
  if (NotifyWindow != 0) ActivePlatform().SetWindowText(NotifyWindow, text);
}

}  // namespace qrl
