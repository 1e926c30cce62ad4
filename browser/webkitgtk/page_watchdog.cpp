#include "browser/webkitgtk/page_watchdog.h"

#include <cstdio>

#include "trace/trace.h"

namespace qrl {

// The ping in flight; its answer may come after the watchdog or the process
// it went to is gone, so the answer holds it weakly.
struct PageWatchdog::Ping {
  bool outstanding = false;
  gint64 sentAt = 0;
};

namespace {

constexpr guint TickMs = 1000;
constexpr gint64 SilenceLimitUs = 5 * G_USEC_PER_SEC;

void OnPingAnswered(GObject* view, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<std::weak_ptr<PageWatchdog::Ping>> answered(
      static_cast<std::weak_ptr<PageWatchdog::Ping>*>(data));
  GError* error = nullptr;
  if (JSCValue* value = webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(view), result, &error))
    g_object_unref(value);
  g_clear_error(&error);
  if (const std::shared_ptr<PageWatchdog::Ping> ping = answered->lock()) ping->outstanding = false;
}

}  // namespace

PageWatchdog::PageWatchdog(WebKitWebView* view, std::function<bool()> waiting)
    : view_(view), waiting_(std::move(waiting)), ping_(std::make_shared<Ping>()) {}

PageWatchdog::~PageWatchdog() {
  if (tickSource_ != 0) g_source_remove(tickSource_);
}

void PageWatchdog::Watch() {
  if (tickSource_ != 0) return;
  tickSource_ = g_timeout_add(TickMs, Tick, this);
  Trace("watchdog", [] { return "watching"; });
}

void PageWatchdog::ProcessEnded() {
  // A new ping state: answers to the old one, if WebKit still gives them,
  // change nothing.
  ping_ = std::make_shared<Ping>();
}

void PageWatchdog::SendPing() {
  ping_->outstanding = true;
  ping_->sentAt = g_get_monotonic_time();
  static constexpr char Script[] = "0";
  webkit_web_view_evaluate_javascript(view_, Script, sizeof Script - 1, nullptr, nullptr, nullptr,
                                      OnPingAnswered, new std::weak_ptr<Ping>(ping_));
}

gboolean PageWatchdog::Tick(gpointer data) {
  auto* self = static_cast<PageWatchdog*>(data);
  if (!self->waiting_()) {
    self->tickSource_ = 0;
    self->ProcessEnded();
    Trace("watchdog", [] { return "stopped, nothing waits for the page"; });
    return G_SOURCE_REMOVE;
  }
  if (!self->ping_->outstanding) {
    self->SendPing();
  } else if (g_get_monotonic_time() - self->ping_->sentAt >= SilenceLimitUs) {
    std::fputs("qrlantern: a page stopped answering for 5 seconds; its process was ended\n",
               stderr);
    std::fflush(stderr);
    Trace("watchdog", [] { return "ended the page's process: no answer for 5 seconds"; });
    self->ProcessEnded();
    // WebKit reports the end through the view's web-process-terminated.
    webkit_web_view_terminate_web_process(self->view_);
  }
  return G_SOURCE_CONTINUE;
}

}  // namespace qrl
