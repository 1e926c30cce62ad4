#include "tests/windows/webview2/autopilot/autopilot_view.h"

#include <algorithm>
#include <utility>

#include "tests/windows/webview2/autopilot/navigation_result.h"
#include "tests/windows/webview2/autopilot/page_loader.h"
#include "tests/windows/webview2/autopilot/script_answer.h"
#include "tests/windows/webview2/autopilot/work_queue.h"

namespace qrl::autopilot {
namespace {

using Microsoft::WRL::ComPtr;

// A string for the caller, who frees it with CoTaskMemFree.
LPWSTR HandOut(const std::wstring& text) {
  auto* copy = static_cast<LPWSTR>(CoTaskMemAlloc((text.size() + 1) * sizeof(wchar_t)));
  if (copy) std::copy(text.c_str(), text.c_str() + text.size() + 1, copy);
  return copy;
}

HRESULT GiveFlag(BOOL* flag, bool value) {
  if (!flag) return E_POINTER;
  *flag = value ? TRUE : FALSE;
  return S_OK;
}

}  // namespace

HRESULT AutopilotView::get_Settings(webview2::ICoreWebView2Settings** settings) {
  if (!settings) return E_POINTER;
  *settings = settings_.Get();
  (*settings)->AddRef();
  return S_OK;
}

// The address of the page on show; during a load it is still the old one.
HRESULT AutopilotView::get_Source(LPWSTR* uri) {
  if (!uri) return E_POINTER;
  *uri = HandOut(source_);
  return *uri ? S_OK : E_OUTOFMEMORY;
}

HRESULT AutopilotView::Navigate(LPCWSTR uri) {
  if (!uri) return E_INVALIDARG;
  return Begin({0, {uri, std::nullopt}, HistoryStep::Add, 0});
}

HRESULT AutopilotView::NavigateToString(LPCWSTR htmlContent) {
  if (!htmlContent) return E_INVALIDARG;
  return Begin({0, {L"about:blank", std::wstring(htmlContent)}, HistoryStep::Add, 0});
}

// No page runs scripts here: the script is taken and never runs, so the
// module's own (which posts each document's URL) never posts.
HRESULT AutopilotView::AddScriptToExecuteOnDocumentCreated(LPCWSTR javaScript, IUnknown*) {
  return javaScript ? S_OK : E_INVALIDARG;
}

// The answer is made when it is given, so it reads the document on show
// then, as a script that runs late does in a browser.
HRESULT AutopilotView::ExecuteScript(
    LPCWSTR javaScript, webview2::ICoreWebView2ExecuteScriptCompletedHandler* handler) {
  if (!javaScript) return E_INVALIDARG;
  const ComPtr<AutopilotView> self(this);
  const ComPtr<webview2::ICoreWebView2ExecuteScriptCompletedHandler> completion(handler);
  PostWork([self, completion, script = std::wstring(javaScript)] {
    const std::wstring answer = AnswerScript(script, self->document_);
    if (completion) completion->Invoke(S_OK, answer.c_str());
  });
  return S_OK;
}

HRESULT AutopilotView::Reload() {
  const HistoryEntry* current = history_.Current();
  return Begin({0, current ? *current : HistoryEntry{source_, std::nullopt}, HistoryStep::Stay, 0});
}

// Nothing in a page listens, so a message goes nowhere.
HRESULT AutopilotView::PostWebMessageAsString(LPCWSTR webMessageAsString) {
  return webMessageAsString ? S_OK : E_INVALIDARG;
}

HRESULT AutopilotView::get_CanGoBack(BOOL* canGoBack) {
  return GiveFlag(canGoBack, history_.Neighbour(-1).has_value());
}

HRESULT AutopilotView::get_CanGoForward(BOOL* canGoForward) {
  return GiveFlag(canGoForward, history_.Neighbour(+1).has_value());
}

HRESULT AutopilotView::GoBack() { return GoTo(history_.Neighbour(-1)); }
HRESULT AutopilotView::GoForward() { return GoTo(history_.Neighbour(+1)); }

HRESULT AutopilotView::Stop() {
  cancelledUpTo_ = lastNavigation_;
  return S_OK;
}

// With nowhere to go a browser does nothing, and raises nothing.
HRESULT AutopilotView::GoTo(std::optional<std::size_t> index) {
  if (!index) return S_OK;
  return Begin({0, history_.At(*index), HistoryStep::MoveTo, *index});
}

// A new request overtakes every one still under way, as a browser drops a
// load for the next.
HRESULT AutopilotView::Begin(Navigation navigation) {
  navigation.id = ++lastNavigation_;
  cancelledUpTo_ = navigation.id - 1;
  const ComPtr<AutopilotView> self(this);
  PostWork([self, navigation] { self->Start(navigation); });
  return S_OK;
}

// Raised for an overtaken navigation too: its completion must have a start.
void AutopilotView::Start(const Navigation& navigation) {
  starting_.Raise(static_cast<webview2::ICoreWebView2*>(this), static_cast<IUnknown*>(nullptr));
  const ComPtr<AutopilotView> self(this);
  PostWorkAfterLoadTime([self, navigation] { self->Finish(navigation); });
}

void AutopilotView::Finish(const Navigation& navigation) {
  if (navigation.id <= cancelledUpTo_) {
    RaiseCompleted(navigation, false, WebErrorStatus::OperationCanceled);
    return;
  }
  const LoadedPage page =
      navigation.entry.markup
          ? LoadedPage{*navigation.entry.markup, true, WebErrorStatus::Unknown}
          : LoadUrl(navigation.entry.url);
  source_ = navigation.entry.url;
  document_ = page.markup;
  if (MoveHistory(navigation))
    historyChanged_.Raise(static_cast<webview2::ICoreWebView2*>(this),
                          static_cast<IUnknown*>(nullptr));
  RaiseCompleted(navigation, page.succeeded, page.errorStatus);
}

// A page that failed to load stays in the history, with its error page, as
// in a browser.
bool AutopilotView::MoveHistory(const Navigation& navigation) {
  switch (navigation.step) {
    case HistoryStep::Add:
      history_.Add(navigation.entry);
      return true;
    case HistoryStep::MoveTo:
      history_.MoveTo(navigation.index);
      return true;
    case HistoryStep::Stay:
      return false;
  }
  return false;
}

void AutopilotView::RaiseCompleted(const Navigation& navigation, bool success,
                                   std::int32_t status) {
  const ComPtr<NavigationResult> result(new NavigationResult(success, status, navigation.id));
  completed_.Raise(static_cast<webview2::ICoreWebView2*>(this),
                   static_cast<IUnknown*>(result.Get()));
}

}  // namespace qrl::autopilot
