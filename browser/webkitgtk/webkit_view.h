// The view of the WebKitGTK component: one WebKitWebView with the page
// bridge, the settings switches, and the bookkeeping that gives every
// navigation exactly one completion.
//
// WebKit reports a navigation by load-changed (started, finished; a failed
// load finishes too), but some requests end without any signal: a load that
// is stopped or replaced before it starts, a move within the same document,
// a history step inside pages loaded from strings. The view therefore counts
// the requests it was given that have not started yet; once WebKit is idle
// again (or a stop has dropped them), each of them is reported as a
// navigation that began and ended at once.
//
// A page whose process stops answering is ended by the watchdog (see
// page_watchdog.h). A process that ends for any reason (that, a kill, a
// crash) fails the scripts it still owed, and the last navigation request,
// if one was under way, is issued again in a new process, so that it still
// ends with its one completion. A request that loses its process a second
// time is one that hangs every process it gets: a blank page stands in for
// it.
#pragma once

#include <webkit2/webkit2.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "browser/browser_component.h"
#include "browser/webkitgtk/page_watchdog.h"

namespace qrl {

// What the settings switch beyond WebKit's own settings.
struct ViewSwitches {
  bool webMessages = false;
  bool scriptDialogs = true;
  bool contextMenus = true;
};

struct PendingScripts;

class WebKitView final : public WebView {
 public:
  explicit WebKitView(WebKitWebContext* context);
  ~WebKitView() override;
  WebKitView(const WebKitView&) = delete;
  WebKitView& operator=(const WebKitView&) = delete;

  GtkWidget* widget() const { return GTK_WIDGET(view_); }

  std::shared_ptr<WebSettings> GetSettings() override;
  ResultCode Navigate(std::u16string_view url) override;
  ResultCode NavigateToString(std::u16string_view markup) override;
  ResultCode AddNavigationStarting(ViewEventHandler handler) override;
  ResultCode AddNavigationCompleted(ViewEventHandler handler) override;
  ResultCode AddHistoryChanged(ViewEventHandler handler) override;
  ResultCode AddWebMessageReceived(WebMessageHandler handler) override;
  ResultCode AddScriptToExecuteOnDocumentCreated(std::u16string_view script) override;
  ResultCode ExecuteScript(std::u16string_view script, ScriptCompletion completion) override;
  // Reads a string answer straight as UTF-8, without its JSON form.
  ResultCode ExecuteMarkupScript(std::u16string_view script, MarkupCompletion completion) override;
  std::u16string GetSource() override;
  bool CanGoBack() override;
  bool CanGoForward() override;
  ResultCode GoBack() override;
  ResultCode GoForward() override;
  ResultCode Stop() override;
  ResultCode Reload() override;
  ResultCode OpenDevToolsWindow() override;
  ResultCode PostWebMessageAsString(std::optional<std::u16string_view> text) override;

 private:
  static void OnLoadChanged(WebKitWebView* view, WebKitLoadEvent event, gpointer self);
  static gboolean OnLoadFailed(WebKitWebView* view, WebKitLoadEvent event, gchar* uri,
                               GError* error, gpointer self);
  static void OnLoadingChanged(GObject* view, GParamSpec* property, gpointer self);
  static void OnHistoryListChanged(WebKitBackForwardList* list, WebKitBackForwardListItem* added,
                                   gpointer removed, gpointer self);
  static void OnScriptMessage(WebKitUserContentManager* manager, WebKitJavascriptResult* message,
                              gpointer self);
  static gboolean OnContextMenu(WebKitWebView* view, WebKitContextMenu* menu, GdkEvent* event,
                                WebKitHitTestResult* hit, gpointer self);
  static gboolean OnScriptDialog(WebKitWebView* view, WebKitScriptDialog* dialog, gpointer self);
  static gboolean OnPrint(WebKitWebView* view, WebKitPrintOperation* operation, gpointer self);
  static gboolean SettleDroppedRequests(gpointer self);
  static void OnWebProcessTerminated(WebKitWebView* view, WebKitWebProcessTerminationReason reason,
                                     gpointer self);

  // Counts a navigation request, remembers how to issue it again, issues it.
  void Issue(std::function<void()> request);
  // `completion` gets the value, or null when the script failed.
  void RunScript(const std::string& script, std::function<void(JSCValue*)> completion);
  // Whether a navigation or a script waits for the page's process.
  bool Waiting() const;
  void ScheduleSettle(bool afterStop);
  void Raise(const std::vector<ViewEventHandler>& handlers);

  WebKitWebView* view_ = nullptr;
  WebKitUserContentManager* content_ = nullptr;
  std::shared_ptr<ViewSwitches> switches_ = std::make_shared<ViewSwitches>();
  int requestsNotStarted_ = 0;
  bool loadRunning_ = false;
  bool settleAfterStop_ = false;
  guint settleSource_ = 0;
  std::function<void()> lastRequest_;
  bool lastRequestReissued_ = false;
  std::shared_ptr<PendingScripts> scripts_;
  std::unique_ptr<PageWatchdog> watchdog_;
  std::vector<ViewEventHandler> starting_;
  std::vector<ViewEventHandler> completed_;
  std::vector<ViewEventHandler> history_;
  std::vector<WebMessageHandler> messages_;
};

}  // namespace qrl
