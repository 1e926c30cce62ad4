// The state that every browser command and handler shares. There is one
// browser per process; all of it is read and written on the host's thread.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "browser/browser_component.h"

namespace qrl {

extern WindowHandle HostWindow;       // parent of the view; its client area gives the bounds
extern std::u16string StartUrl;       // first navigation; after wvHome the last home
extern WindowHandle NotifyWindow;     // receives the progress texts; 0 = none
extern std::u16string BrowserFolder;  // handed to the loader as the browser's folder
extern std::string ScriptEventName;   // the script's name that hears "Creation"
extern std::shared_ptr<WebController> BrowserController;
extern std::shared_ptr<WebView> BrowserView;  // null until a creation chain has ended
extern std::int32_t CanGoBackFlag;
extern std::int32_t CanGoForwardFlag;
extern std::mutex PageLock;  // held while a captured page replaces the old one

inline constexpr std::string_view ProgressNavigating = "Nav";
inline constexpr std::string_view ProgressComplete = "NavComplete";

// Sets the text of NotifyWindow, when there is one, and returns once it is set.
void SetNotifyText(std::string_view text);

}  // namespace qrl
