#include "browser/webkitgtk/webkit_view.h"

#include <cstdint>
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "browser/captured_markup.h"
#include "browser/webkitgtk/page_bridge.h"
#include "commands/unicode_text.h"
#include "trace/trace_text.h"

namespace qrl {

// The scripts that the page's process has not answered yet, each waiting
// for its value (null for a failure). WebKit answers none of them once the
// process is gone, so the view fails them itself then; an answer that still
// comes later finds nobody waiting.
struct PendingScripts {
  using ValueCompletion = std::function<void(JSCValue* value)>;
  std::uint64_t nextTicket = 0;
  std::map<std::uint64_t, ValueCompletion> waiting;

  void FailAll() {
    std::map<std::uint64_t, ValueCompletion> failed;
    failed.swap(waiting);
    for (auto& [ticket, completion] : failed) completion(nullptr);
  }
};

namespace {

struct ScriptTicket {
  std::weak_ptr<PendingScripts> scripts;
  std::uint64_t ticket;
};

class WebKitSettingsObject final : public WebSettings {
 public:
  WebKitSettingsObject(WebKitSettings* settings, std::shared_ptr<ViewSwitches> switches)
      : settings_(WEBKIT_SETTINGS(g_object_ref(settings))), switches_(std::move(switches)) {}
  ~WebKitSettingsObject() override { g_object_unref(settings_); }
  WebKitSettingsObject(const WebKitSettingsObject&) = delete;
  WebKitSettingsObject& operator=(const WebKitSettingsObject&) = delete;

  // The page's own scripts; scripts that the host runs are not affected.
  ResultCode SetScriptEnabled(bool enabled) override {
    webkit_settings_set_enable_javascript_markup(settings_, enabled);
    return ResultOk;
  }
  ResultCode SetDefaultScriptDialogsEnabled(bool enabled) override {
    switches_->scriptDialogs = enabled;
    return ResultOk;
  }
  ResultCode SetWebMessageEnabled(bool enabled) override {
    switches_->webMessages = enabled;
    return ResultOk;
  }
  ResultCode SetDefaultContextMenusEnabled(bool enabled) override {
    switches_->contextMenus = enabled;
    return ResultOk;
  }

 private:
  WebKitSettings* settings_;
  std::shared_ptr<ViewSwitches> switches_;
};

class StringMessage final : public WebMessageArgs {
 public:
  explicit StringMessage(std::optional<std::u16string> text) : text_(std::move(text)) {}
  std::optional<std::u16string> TryGetWebMessageAsString() const override { return text_; }

 private:
  std::optional<std::u16string> text_;
};

// A value that has no JSON form (undefined, a function) answers "null".
std::u16string ValueAsJson(JSCValue* value) {
  gchar* json = jsc_value_to_json(value, 0);
  if (!json) {
    if (JSCContext* context = jsc_value_get_context(value)) jsc_context_clear_exception(context);
    return u"null";
  }
  std::u16string text = Utf8ToUtf16(json);
  g_free(json);
  return text;
}

// The completion waiting for this answer, taken out of the pending ones;
// nothing when the script was failed already.
// The markup that a capture parses, read from a string value as UTF-8; any
// other value, and a text that the JSON form must decide, go through it.
std::string MarkupOfValue(JSCValue* value) {
  if (jsc_value_is_string(value)) {
    GBytes* bytes = jsc_value_to_string_as_bytes(value);
    gsize size = 0;
    const auto* data = static_cast<const char*>(g_bytes_get_data(bytes, &size));
    std::optional<std::string> markup = CapturedMarkupFromUtf8(std::string_view(data, size));
    g_bytes_unref(bytes);
    if (markup) return std::move(*markup);
  }
  return CapturedMarkup(ValueAsJson(value));
}

std::optional<PendingScripts::ValueCompletion> TakeCompletion(const ScriptTicket& ticket) {
  const std::shared_ptr<PendingScripts> scripts = ticket.scripts.lock();
  if (!scripts) return std::nullopt;
  const auto found = scripts->waiting.find(ticket.ticket);
  if (found == scripts->waiting.end()) return std::nullopt;
  PendingScripts::ValueCompletion completion = std::move(found->second);
  scripts->waiting.erase(found);
  return completion;
}

// A script that throws, or that cannot run, is a failure of the request.
void OnScriptFinished(GObject* source, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<ScriptTicket> ticket(static_cast<ScriptTicket*>(data));
  GError* error = nullptr;
  JSCValue* value =
      webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(source), result, &error);
  g_clear_error(&error);
  if (const std::optional<PendingScripts::ValueCompletion> completion = TakeCompletion(*ticket))
    (*completion)(value);
  if (value) g_object_unref(value);
}

const char* TerminationText(WebKitWebProcessTerminationReason reason) {
  switch (reason) {
    case WEBKIT_WEB_PROCESS_CRASHED:
      return "crashed";
    case WEBKIT_WEB_PROCESS_EXCEEDED_MEMORY_LIMIT:
      return "out of memory";
    default:
      return "ended on request";
  }
}

// A GObject held for as long as a request may be issued again.
std::shared_ptr<WebKitBackForwardListItem> HoldItem(WebKitBackForwardListItem* item) {
  return std::shared_ptr<WebKitBackForwardListItem>(
      WEBKIT_BACK_FORWARD_LIST_ITEM(g_object_ref(item)), [](auto* held) { g_object_unref(held); });
}

}  // namespace

WebKitView::WebKitView(WebKitWebContext* context) : scripts_(std::make_shared<PendingScripts>()) {
  content_ = webkit_user_content_manager_new();
  webkit_user_content_manager_register_script_message_handler(content_, BridgeHandlerName);
  WebKitUserScript* bridge =
      webkit_user_script_new(BridgeScript(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
                             WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, nullptr, nullptr);
  webkit_user_content_manager_add_script(content_, bridge);
  webkit_user_script_unref(bridge);

  view_ = WEBKIT_WEB_VIEW(g_object_new(WEBKIT_TYPE_WEB_VIEW, "web-context", context,
                                       "user-content-manager", content_, nullptr));
  g_object_ref_sink(view_);
  watchdog_ = std::make_unique<PageWatchdog>(view_, [this] { return Waiting(); });
  // The inspector is what OpenDevToolsWindow shows.
  webkit_settings_set_enable_developer_extras(webkit_web_view_get_settings(view_), TRUE);

  g_signal_connect(view_, "load-changed", G_CALLBACK(OnLoadChanged), this);
  g_signal_connect(view_, "load-failed", G_CALLBACK(OnLoadFailed), this);
  g_signal_connect(view_, "notify::is-loading", G_CALLBACK(OnLoadingChanged), this);
  g_signal_connect(view_, "context-menu", G_CALLBACK(OnContextMenu), this);
  g_signal_connect(view_, "script-dialog", G_CALLBACK(OnScriptDialog), this);
  g_signal_connect(view_, "print", G_CALLBACK(OnPrint), this);
  g_signal_connect(view_, "web-process-terminated", G_CALLBACK(OnWebProcessTerminated), this);
  g_signal_connect(webkit_web_view_get_back_forward_list(view_), "changed",
                   G_CALLBACK(OnHistoryListChanged), this);
  const std::string messageSignal = std::string("script-message-received::") + BridgeHandlerName;
  g_signal_connect(content_, messageSignal.c_str(), G_CALLBACK(OnScriptMessage), this);
}

WebKitView::~WebKitView() {
  if (settleSource_ != 0) g_source_remove(settleSource_);
  watchdog_.reset();
  g_signal_handlers_disconnect_by_data(webkit_web_view_get_back_forward_list(view_), this);
  g_signal_handlers_disconnect_by_data(content_, this);
  g_signal_handlers_disconnect_by_data(view_, this);
  gtk_widget_destroy(GTK_WIDGET(view_));
  g_object_unref(view_);
  g_object_unref(content_);
}

std::shared_ptr<WebSettings> WebKitView::GetSettings() {
  return std::make_shared<WebKitSettingsObject>(webkit_web_view_get_settings(view_), switches_);
}

void WebKitView::Issue(std::function<void()> request) {
  ++requestsNotStarted_;
  lastRequest_ = std::move(request);
  lastRequestReissued_ = false;
  lastRequest_();
  watchdog_->Watch();
}

void WebKitView::RunScript(const std::string& script, std::function<void(JSCValue*)> completion) {
  const std::uint64_t ticket = scripts_->nextTicket++;
  scripts_->waiting.emplace(ticket, std::move(completion));
  webkit_web_view_evaluate_javascript(view_, script.c_str(), static_cast<gssize>(script.size()),
                                      nullptr, nullptr, nullptr, OnScriptFinished,
                                      new ScriptTicket{scripts_, ticket});
  watchdog_->Watch();
}

bool WebKitView::Waiting() const {
  return loadRunning_ || requestsNotStarted_ > 0 || !scripts_->waiting.empty();
}

ResultCode WebKitView::Navigate(std::u16string_view url) {
  Issue([view = view_, uri = Utf16ToUtf8(url)] { webkit_web_view_load_uri(view, uri.c_str()); });
  return ResultOk;
}

ResultCode WebKitView::NavigateToString(std::u16string_view markup) {
  Issue([view = view_, html = Utf16ToUtf8(markup)] {
    webkit_web_view_load_html(view, html.c_str(), nullptr);
  });
  return ResultOk;
}

ResultCode WebKitView::AddNavigationStarting(ViewEventHandler handler) {
  starting_.push_back(std::move(handler));
  return ResultOk;
}

ResultCode WebKitView::AddNavigationCompleted(ViewEventHandler handler) {
  completed_.push_back(std::move(handler));
  return ResultOk;
}

ResultCode WebKitView::AddHistoryChanged(ViewEventHandler handler) {
  history_.push_back(std::move(handler));
  return ResultOk;
}

ResultCode WebKitView::AddWebMessageReceived(WebMessageHandler handler) {
  messages_.push_back(std::move(handler));
  return ResultOk;
}

ResultCode WebKitView::AddScriptToExecuteOnDocumentCreated(std::u16string_view script) {
  WebKitUserScript* userScript =
      webkit_user_script_new(Utf16ToUtf8(script).c_str(), WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
                             WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, nullptr, nullptr);
  webkit_user_content_manager_add_script(content_, userScript);
  webkit_user_script_unref(userScript);
  return ResultOk;
}

ResultCode WebKitView::ExecuteScript(std::u16string_view script, ScriptCompletion completion) {
  RunScript(Utf16ToUtf8(script), [completion = std::move(completion)](JSCValue* value) {
    if (!value) {
      completion(ResultFailed, u"");
      return;
    }
    completion(ResultOk, ValueAsJson(value));
  });
  return ResultOk;
}

ResultCode WebKitView::ExecuteMarkupScript(std::u16string_view script,
                                           MarkupCompletion completion) {
  RunScript(Utf16ToUtf8(script), [completion = std::move(completion)](JSCValue* value) {
    if (!value) {
      completion(ResultFailed, std::string());
      return;
    }
    completion(ResultOk, MarkupOfValue(value));
  });
  return ResultOk;
}

std::u16string WebKitView::GetSource() {
  const gchar* uri = webkit_web_view_get_uri(view_);
  return uri ? Utf8ToUtf16(uri) : std::u16string();
}

bool WebKitView::CanGoBack() { return webkit_web_view_can_go_back(view_); }

bool WebKitView::CanGoForward() { return webkit_web_view_can_go_forward(view_); }

// With nowhere to go WebKit does nothing at all, so no navigation is owed.
// Issued again, a history step goes to the page it first aimed at, not one
// step further.
ResultCode WebKitView::GoBack() {
  WebKitBackForwardList* history = webkit_web_view_get_back_forward_list(view_);
  WebKitBackForwardListItem* target = webkit_back_forward_list_get_back_item(history);
  if (!target) return ResultOk;
  Issue([view = view_, item = HoldItem(target)] {
    webkit_web_view_go_to_back_forward_list_item(view, item.get());
  });
  return ResultOk;
}

ResultCode WebKitView::GoForward() {
  WebKitBackForwardList* history = webkit_web_view_get_back_forward_list(view_);
  WebKitBackForwardListItem* target = webkit_back_forward_list_get_forward_item(history);
  if (!target) return ResultOk;
  Issue([view = view_, item = HoldItem(target)] {
    webkit_web_view_go_to_back_forward_list_item(view, item.get());
  });
  return ResultOk;
}

// A load that has not started yet is dropped without a signal.
ResultCode WebKitView::Stop() {
  webkit_web_view_stop_loading(view_);
  if (!loadRunning_ && requestsNotStarted_ > 0) ScheduleSettle(true);
  return ResultOk;
}

ResultCode WebKitView::Reload() {
  Issue([view = view_] { webkit_web_view_reload(view); });
  return ResultOk;
}

ResultCode WebKitView::OpenDevToolsWindow() {
  webkit_web_inspector_show(webkit_web_view_get_inspector(view_));
  return ResultOk;
}

ResultCode WebKitView::PostWebMessageAsString(std::optional<std::u16string_view> text) {
  if (!text) return ResultInvalidArgument;
  if (!switches_->webMessages) return ResultOk;
  RunScript(DeliverMessageScript(*text), [](JSCValue*) {});
  return ResultOk;
}

void WebKitView::Raise(const std::vector<ViewEventHandler>& handlers) {
  // A handler may subscribe more while it runs.
  const std::vector<ViewEventHandler> current = handlers;
  for (const auto& handler : current) handler(*this);
}

void WebKitView::OnLoadChanged(WebKitWebView*, WebKitLoadEvent event, gpointer data) {
  auto* self = static_cast<WebKitView*>(data);
  if (event == WEBKIT_LOAD_STARTED) {
    self->loadRunning_ = true;
    if (self->requestsNotStarted_ > 0) --self->requestsNotStarted_;
    self->Raise(self->starting_);
  } else if (event == WEBKIT_LOAD_FINISHED) {
    self->loadRunning_ = false;
    self->Raise(self->completed_);
    self->ScheduleSettle(false);
  }
}

// WebKit would load an error page as a second navigation; the failed load
// ends with its own completion over the document that is then on show. The
// completion can't tell a failed load from another, so the trace says it here.
gboolean WebKitView::OnLoadFailed(WebKitWebView*, WebKitLoadEvent, gchar* uri, GError* error,
                                  gpointer) {
  Trace("nav", [uri, error] {
    return "failed url=" + TraceQuoted(uri ? uri : "", TraceAddressLimit) +
           " error=" + TraceQuoted(error && error->message ? error->message : "");
  });
  return TRUE;
}

void WebKitView::OnLoadingChanged(GObject*, GParamSpec*, gpointer data) {
  auto* self = static_cast<WebKitView*>(data);
  if (!webkit_web_view_is_loading(self->view_)) self->ScheduleSettle(false);
}

void WebKitView::ScheduleSettle(bool afterStop) {
  settleAfterStop_ = settleAfterStop_ || afterStop;
  if (settleSource_ == 0) settleSource_ = g_idle_add(SettleDroppedRequests, this);
}

gboolean WebKitView::SettleDroppedRequests(gpointer data) {
  auto* self = static_cast<WebKitView*>(data);
  self->settleSource_ = 0;
  const bool afterStop = std::exchange(self->settleAfterStop_, false);
  // A stopped request leaves WebKit "loading" for good, so only a stop may
  // settle while it says so.
  if (self->loadRunning_ || (!afterStop && webkit_web_view_is_loading(self->view_)))
    return G_SOURCE_REMOVE;
  while (self->requestsNotStarted_ > 0) {
    --self->requestsNotStarted_;
    self->Raise(self->starting_);
    self->Raise(self->completed_);
  }
  return G_SOURCE_REMOVE;
}

// Ended by the view, killed or crashed: the scripts that waited for the
// process fail, and the navigation that was under way goes on in a new
// process. A load that had started is owed its completion still, so it
// counts again as a request that has not started; the request issued anew
// starts one of them and finishes it, and the rest settle as dropped.
void WebKitView::OnWebProcessTerminated(WebKitWebView*, WebKitWebProcessTerminationReason reason,
                                        gpointer data) {
  auto* self = static_cast<WebKitView*>(data);
  Trace("page", [reason] { return std::string("process ended: ") + TerminationText(reason); });
  self->watchdog_->ProcessEnded();
  if (self->loadRunning_) ++self->requestsNotStarted_;
  self->loadRunning_ = false;
  self->scripts_->FailAll();
  if (self->requestsNotStarted_ == 0 || !self->lastRequest_) return;
  if (self->lastRequestReissued_) {
    self->lastRequest_ = [view = self->view_] { webkit_web_view_load_uri(view, "about:blank"); };
  }
  self->lastRequestReissued_ = true;
  self->lastRequest_();
  self->watchdog_->Watch();
}

void WebKitView::OnHistoryListChanged(WebKitBackForwardList*, WebKitBackForwardListItem*,
                                      gpointer, gpointer data) {
  auto* self = static_cast<WebKitView*>(data);
  self->Raise(self->history_);
}

void WebKitView::OnScriptMessage(WebKitUserContentManager*, WebKitJavascriptResult* message,
                                 gpointer data) {
  auto* self = static_cast<WebKitView*>(data);
  if (!self->switches_->webMessages) return;
  JSCValue* value = webkit_javascript_result_get_js_value(message);
  std::optional<std::u16string> text;
  if (value && jsc_value_is_string(value)) {
    gchar* utf8 = jsc_value_to_string(value);
    text = Utf8ToUtf16(utf8);
    g_free(utf8);
  }
  const StringMessage args(std::move(text));
  const std::vector<WebMessageHandler> current = self->messages_;
  for (const auto& handler : current) handler(*self, args);
}

gboolean WebKitView::OnContextMenu(WebKitWebView*, WebKitContextMenu*, GdkEvent*,
                                   WebKitHitTestResult*, gpointer data) {
  return !static_cast<WebKitView*>(data)->switches_->contextMenus;
}

// Refused dialogs are closed at once with their default answer.
gboolean WebKitView::OnScriptDialog(WebKitWebView*, WebKitScriptDialog*, gpointer data) {
  return !static_cast<WebKitView*>(data)->switches_->scriptDialogs;
}

// A page that asks to be printed (some print on load) would get a modal
// print dialog that stops the host's loop until someone answers it; a
// scripted browser refuses the request instead.
gboolean WebKitView::OnPrint(WebKitWebView*, WebKitPrintOperation*, gpointer) { return TRUE; }

}  // namespace qrl
