// Finds the web control's loader, WebView2Loader.dll, and its entry point.
#pragma once

#include "browser/webview2/webview2_interfaces.h"

namespace qrl::webview2 {

struct LoaderEntry {
  CreateEnvironmentWithOptionsFn create = nullptr;
  HRESULT failure = S_OK;  // why `create` is missing
};

// Looks beside our own module first, then by name along the system's
// default search order. A loader once found stays loaded for the life of the
// process: the control's objects run its code. A loader that is missing is
// looked for again at the next call, so that one put in place later is seen.
LoaderEntry FindLoader();

}  // namespace qrl::webview2
