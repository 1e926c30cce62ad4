// The small commands on the live browser. Each is one or two calls on the
// view and a result given at once; what a command starts shows later through
// the navigation events.
//
// Before a creation chain has ended (or after one failed, or in a build
// without a browser) there is no view: each command then gives its usual
// result and does nothing else; wvURL gives an empty text, wvBack and
// wvForward -1.
#include <memory>
#include <string>

#include "browser/browser_state.h"
#include "host/cdom.h"

namespace qrl {
namespace {

// The text that wvURL gives stays readable until the next wvURL.
std::u16string LastSource;

}  // namespace

HostWord CDOM::wvStop(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  if (BrowserView) BrowserView->Stop();
  return GiveInt(1);
}

// Both history commands ask the browser anew; the flags that the history
// event left are only written, never trusted.
HostWord CDOM::wvBack(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  if (!BrowserView) return GiveInt(-1);
  CanGoBackFlag = BrowserView->CanGoBack();
  if (!CanGoBackFlag) return GiveInt(-1);
  BrowserView->GoBack();
  return GiveInt(1);
}

HostWord CDOM::wvForward(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  if (!BrowserView) return GiveInt(-1);
  CanGoForwardFlag = BrowserView->CanGoForward();
  if (!CanGoForwardFlag) return GiveInt(-1);
  BrowserView->GoForward();
  return GiveInt(1);
}

// The home is whatever URL the script gives, unchanged by the URL rule; it
// becomes the new StartUrl. Without the argument the current StartUrl is the
// home.
HostWord CDOM::wvHome(HostWord, HostWord, HostWord, HostValue* args, HostWord argCount) {
  if (!BrowserView) return GiveInt(1);
  if (argCount >= 1) StartUrl = WideArg(args, 0);
  BrowserView->Navigate(StartUrl);
  return GiveInt(1);
}

HostWord CDOM::wvReload(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  if (BrowserView) BrowserView->Reload();
  return GiveInt(1);
}

// The browser's current source, not StartUrl: it follows links and history.
HostWord CDOM::wvURL(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  LastSource = BrowserView ? BrowserView->GetSource() : std::u16string();
  return GiveWideText(LastSource.c_str());
}

HostWord CDOM::wvOpenDev(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  if (BrowserView) BrowserView->OpenDevToolsWindow();
  return GiveInt(1);
}

// The settings are obtained and nothing is changed: the browser has no status
// bar to switch, and the argument has never had an effect.
HostWord CDOM::wvStatusBar(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  if (BrowserView) BrowserView->GetSettings();
  return GiveInt(1);
}

HostWord CDOM::wvContextMenu(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  const bool enabled = IntArg(args, 0) != 0;
  if (BrowserView) {
    if (const std::shared_ptr<WebSettings> settings = BrowserView->GetSettings())
      settings->SetDefaultContextMenusEnabled(enabled);
  }
  return GiveInt(1);
}

}  // namespace qrl
