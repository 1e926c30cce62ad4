#include "browser/navigation_events.h"

#include "browser/browser_state.h"
#include "browser/page_capture.h"
#include "trace/trace_text.h"

namespace qrl {

// The component's events carry no address, so the trace asks the view for
// the one it shows; no one else does.
void OnNavigationStarting(WebView& sender) {
  Trace("nav", [&sender] {
    return "start url=" + TraceQuoted(sender.GetSource(), TraceAddressLimit);
  });
  SetNotifyText(ProgressNavigating);
}

void OnNavigationCompleted(WebView& sender) {
  Trace("nav", [&sender] {
    return "done url=" + TraceQuoted(sender.GetSource(), TraceAddressLimit);
  });
  RequestCapture(sender, CaptureCause::Navigation);
}

void OnHistoryChanged(WebView& sender) {
  CanGoBackFlag = sender.CanGoBack();
  CanGoForwardFlag = sender.CanGoForward();
}

}  // namespace qrl
