#include "browser/navigation_events.h"

#include "browser/browser_state.h"
#include "browser/page_capture.h"

namespace qrl {

void OnNavigationStarting(WebView&) { SetNotifyText(ProgressNavigating); }

void OnNavigationCompleted(WebView& sender) { RequestCapture(sender, CaptureCause::Navigation); }

void OnHistoryChanged(WebView& sender) {
  CanGoBackFlag = sender.CanGoBack();
  CanGoForwardFlag = sender.CanGoForward();
}

}  // namespace qrl
