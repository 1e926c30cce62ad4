// wvNavigate and wvNavigateStr: they issue the request and return; the page
// shows up later through the navigation events.
#include <string>

#include "browser/browser_state.h"
#include "browser/url_rule.h"
#include "host/cdom.h"

namespace qrl {

HostWord CDOM::wvNavigate(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  const std::u16string url = NormalizeUrl(WideArg(args, 0));
  if (BrowserView) {
    SetNotifyText(ProgressNavigating);
    BrowserView->Navigate(url);
  }
  return GiveInt(0);
}

// Unlike wvNavigate, the "Nav" comes after the browser call here.
HostWord CDOM::wvNavigateStr(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  const std::u16string markup = WideArg(args, 0);
  if (markup.empty()) return GiveInt(-1);
  if (BrowserView) {
    BrowserView->NavigateToString(markup);
    SetNotifyText(ProgressNavigating);
  }
  return GiveInt(0);
}

}  // namespace qrl
