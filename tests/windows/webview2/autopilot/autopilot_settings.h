// The view's settings on the autopilot control: kept and handed back, each
// on by default as the runtime's are. They change nothing, since no page
// runs scripts or shows dialogs or menus here.
#pragma once

#include <windows.h>

#include "browser/webview2/com_object.h"
#include "browser/webview2/webview2_interfaces.h"
#include "tests/windows/webview2/autopilot/com_methods.h"

namespace qrl::autopilot {

class AutopilotSettings final
    : public webview2::ComObject<webview2::ICoreWebView2Settings,
                                 webview2::IID_ICoreWebView2Settings> {
 public:
  QRL_AUTOPILOT_PROPERTY(IsScriptEnabled, BOOL, scriptEnabled_)
  QRL_AUTOPILOT_PROPERTY(IsWebMessageEnabled, BOOL, webMessageEnabled_)
  QRL_AUTOPILOT_PROPERTY(AreDefaultScriptDialogsEnabled, BOOL, scriptDialogsEnabled_)
  QRL_AUTOPILOT_PROPERTY(IsStatusBarEnabled, BOOL, statusBarEnabled_)
  QRL_AUTOPILOT_PROPERTY(AreDevToolsEnabled, BOOL, devToolsEnabled_)
  QRL_AUTOPILOT_PROPERTY(AreDefaultContextMenusEnabled, BOOL, contextMenusEnabled_)

 private:
  BOOL scriptEnabled_ = TRUE;
  BOOL webMessageEnabled_ = TRUE;
  BOOL scriptDialogsEnabled_ = TRUE;
  BOOL statusBarEnabled_ = TRUE;
  BOOL devToolsEnabled_ = TRUE;
  BOOL contextMenusEnabled_ = TRUE;
};

}  // namespace qrl::autopilot
