// What the browser's navigation events do. They are subscribed once per
// creation chain and stay for the life of the view.
#pragma once

#include "browser/browser_component.h"

namespace qrl {

// "Nav": a navigation has begun. No navigation is ever cancelled.
void OnNavigationStarting(WebView& sender);
// The page is there (or the navigation failed): its markup is captured.
void OnNavigationCompleted(WebView& sender);
// The history moved: both flags are read again.
void OnHistoryChanged(WebView& sender);

}  // namespace qrl
