// The view of the autopilot control: navigation with a browser's history,
// its events, and the answers to scripts (see autopilot_loader.cpp for what
// the control can and can't do).
//
// A navigation goes in three steps, each out of the message loop: the
// request (a method call) posts its start; the start raises
// NavigationStarting and waits the load time; the finish loads the page,
// makes it the document, moves the history (raising HistoryChanged) and
// raises NavigationCompleted. A navigation that a newer request or Stop
// overtakes before its finish completes as cancelled and changes nothing:
// every navigation still ends in exactly one NavigationCompleted.
#pragma once

#include <windows.h>
#include <wrl/client.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "browser/webview2/com_object.h"
#include "browser/webview2/webview2_interfaces.h"
#include "tests/windows/webview2/autopilot/autopilot_settings.h"
#include "tests/windows/webview2/autopilot/browsing_history.h"
#include "tests/windows/webview2/autopilot/com_methods.h"
#include "tests/windows/webview2/autopilot/event_list.h"

namespace qrl::autopilot {

class AutopilotView final
    : public webview2::ComObject<webview2::ICoreWebView2, webview2::IID_ICoreWebView2> {
 public:
  HRESULT STDMETHODCALLTYPE get_Settings(webview2::ICoreWebView2Settings** settings) override;
  HRESULT STDMETHODCALLTYPE get_Source(LPWSTR* uri) override;
  HRESULT STDMETHODCALLTYPE Navigate(LPCWSTR uri) override;
  HRESULT STDMETHODCALLTYPE NavigateToString(LPCWSTR htmlContent) override;
  QRL_AUTOPILOT_EVENT(NavigationStarting, webview2::ICoreWebView2NavigationStartingEventHandler,
                      starting_)
  QRL_AUTOPILOT_NO_EVENT(ContentLoading, IUnknown)
  QRL_AUTOPILOT_NO_EVENT(SourceChanged, IUnknown)
  QRL_AUTOPILOT_EVENT(HistoryChanged, webview2::ICoreWebView2HistoryChangedEventHandler,
                      historyChanged_)
  QRL_AUTOPILOT_EVENT(NavigationCompleted, webview2::ICoreWebView2NavigationCompletedEventHandler,
                      completed_)
  QRL_AUTOPILOT_NO_EVENT(FrameNavigationStarting,
                         webview2::ICoreWebView2NavigationStartingEventHandler)
  QRL_AUTOPILOT_NO_EVENT(FrameNavigationCompleted,
                         webview2::ICoreWebView2NavigationCompletedEventHandler)
  QRL_AUTOPILOT_NO_EVENT(ScriptDialogOpening, IUnknown)
  QRL_AUTOPILOT_NO_EVENT(PermissionRequested, IUnknown)
  QRL_AUTOPILOT_NO_EVENT(ProcessFailed, IUnknown)
  HRESULT STDMETHODCALLTYPE AddScriptToExecuteOnDocumentCreated(LPCWSTR javaScript,
                                                                IUnknown* handler) override;
  QRL_AUTOPILOT_UNSUPPORTED(RemoveScriptToExecuteOnDocumentCreated, LPCWSTR)
  HRESULT STDMETHODCALLTYPE ExecuteScript(
      LPCWSTR javaScript, webview2::ICoreWebView2ExecuteScriptCompletedHandler* handler) override;
  QRL_AUTOPILOT_UNSUPPORTED(CapturePreview, webview2::COREWEBVIEW2_CAPTURE_PREVIEW_IMAGE_FORMAT,
                            IStream*, IUnknown*)
  HRESULT STDMETHODCALLTYPE Reload() override;
  QRL_AUTOPILOT_UNSUPPORTED(PostWebMessageAsJson, LPCWSTR)
  HRESULT STDMETHODCALLTYPE PostWebMessageAsString(LPCWSTR webMessageAsString) override;
  QRL_AUTOPILOT_EVENT(WebMessageReceived, webview2::ICoreWebView2WebMessageReceivedEventHandler,
                      messages_)
  QRL_AUTOPILOT_UNSUPPORTED(CallDevToolsProtocolMethod, LPCWSTR, LPCWSTR, IUnknown*)
  QRL_AUTOPILOT_UNSUPPORTED(get_BrowserProcessId, UINT32*)
  HRESULT STDMETHODCALLTYPE get_CanGoBack(BOOL* canGoBack) override;
  HRESULT STDMETHODCALLTYPE get_CanGoForward(BOOL* canGoForward) override;
  HRESULT STDMETHODCALLTYPE GoBack() override;
  HRESULT STDMETHODCALLTYPE GoForward() override;
  QRL_AUTOPILOT_UNSUPPORTED(GetDevToolsProtocolEventReceiver, LPCWSTR, IUnknown**)
  HRESULT STDMETHODCALLTYPE Stop() override;
  QRL_AUTOPILOT_NO_EVENT(NewWindowRequested, IUnknown)
  QRL_AUTOPILOT_NO_EVENT(DocumentTitleChanged, IUnknown)
  QRL_AUTOPILOT_UNSUPPORTED(get_DocumentTitle, LPWSTR*)
  QRL_AUTOPILOT_UNSUPPORTED(AddHostObjectToScript, LPCWSTR, VARIANT*)
  QRL_AUTOPILOT_UNSUPPORTED(RemoveHostObjectFromScript, LPCWSTR)
  // There are no tools to open, and the module waits for nothing from them.
  HRESULT STDMETHODCALLTYPE OpenDevToolsWindow() override { return S_OK; }

 private:
  enum class HistoryStep { Add, MoveTo, Stay };

  struct Navigation {
    std::uint64_t id = 0;
    HistoryEntry entry;
    HistoryStep step = HistoryStep::Add;
    std::size_t index = 0;  // where MoveTo goes
  };

  HRESULT Begin(Navigation navigation);
  HRESULT GoTo(std::optional<std::size_t> index);
  void Start(const Navigation& navigation);
  void Finish(const Navigation& navigation);
  bool MoveHistory(const Navigation& navigation);
  void RaiseCompleted(const Navigation& navigation, bool success, std::int32_t status);

  Microsoft::WRL::ComPtr<AutopilotSettings> settings_{new AutopilotSettings};
  std::wstring source_ = L"about:blank";
  std::wstring document_ = L"<html><head></head><body></body></html>";
  BrowsingHistory history_;
  std::uint64_t lastNavigation_ = 0;
  // Every navigation up to this id that has not finished completes as
  // cancelled.
  std::uint64_t cancelledUpTo_ = 0;
  EventList<webview2::ICoreWebView2NavigationStartingEventHandler> starting_;
  EventList<webview2::ICoreWebView2NavigationCompletedEventHandler> completed_;
  EventList<webview2::ICoreWebView2HistoryChangedEventHandler> historyChanged_;
  // Kept for the module, never raised: no page here posts messages.
  EventList<webview2::ICoreWebView2WebMessageReceivedEventHandler> messages_;
};

}  // namespace qrl::autopilot
