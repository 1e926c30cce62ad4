// The browser commands as they answer in a process with no live browser:
// each gives its usual result and does nothing else.
#include "host/cdom.h"

namespace qrl {

HostWord CDOM::wvCreate(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  return GiveInt(0);
}

HostWord CDOM::wvRefreshDOM(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  return GiveInt(0);
}

HostWord CDOM::wvStop(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  return GiveInt(1);
}

// Nowhere to go without a browser.
HostWord CDOM::wvBack(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  return GiveInt(-1);
}

HostWord CDOM::wvForward(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  return GiveInt(-1);
}

HostWord CDOM::wvHome(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  return GiveInt(1);
}

HostWord CDOM::wvReload(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  return GiveInt(1);
}

HostWord CDOM::wvURL(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  static const char16_t noAddress[] = u"";
  return GiveWideText(noAddress);
}

HostWord CDOM::wvOpenDev(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  return GiveInt(1);
}

HostWord CDOM::wvStatusBar(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  return GiveInt(1);
}

HostWord CDOM::wvContextMenu(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  return GiveInt(1);
}

HostWord CDOM::wvNavigate(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  return GiveInt(0);
}

HostWord CDOM::wvNavigateStr(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  return GiveInt(WideArg(args, 0).empty() ? -1 : 0);
}

HostWord CDOM::wvExecuteScript(HostWord, HostWord, HostWord, HostValue*, HostWord) {
  return GiveInt(1);
}

}  // namespace qrl
