// Ends a page's process that has stopped answering while the view waits for
// it: a script that loops for ever, on load or later, would otherwise hold
// every navigation and capture after it.
//
// While the view waits, the watchdog sends the page a trivial script every
// second; a process that leaves one unanswered for 5 seconds is ended, with
// a line on standard error. A page that nobody waits for is left alone.
#pragma once

#include <webkit2/webkit2.h>

#include <functional>
#include <memory>

namespace qrl {

class PageWatchdog {
 public:
  // `waiting` tells whether a navigation or a script waits for the page.
  PageWatchdog(WebKitWebView* view, std::function<bool()> waiting);
  ~PageWatchdog();
  PageWatchdog(const PageWatchdog&) = delete;
  PageWatchdog& operator=(const PageWatchdog&) = delete;

  // The view has begun to wait; watching goes on until it no longer does.
  void Watch();
  // The page's process has ended: an unanswered ping is nobody's now.
  void ProcessEnded();

  struct Ping;

 private:
  static gboolean Tick(gpointer self);
  void SendPing();

  WebKitWebView* view_;
  std::function<bool()> waiting_;
  guint tickSource_ = 0;
  std::shared_ptr<Ping> ping_;
};

}  // namespace qrl
