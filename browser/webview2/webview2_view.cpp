#include "browser/webview2/webview2_view.h"

#include <string>
#include <utility>

#include "browser/webview2/com_delegate.h"
#include "browser/windows/wide_text.h"

namespace qrl::webview2 {
namespace {

using Microsoft::WRL::ComPtr;

using NavigationStartingDelegate =
    Delegate<ICoreWebView2NavigationStartingEventHandler,
             IID_ICoreWebView2NavigationStartingEventHandler, ICoreWebView2*, IUnknown*>;
using NavigationCompletedDelegate =
    Delegate<ICoreWebView2NavigationCompletedEventHandler,
             IID_ICoreWebView2NavigationCompletedEventHandler, ICoreWebView2*, IUnknown*>;
using HistoryChangedDelegate =
    Delegate<ICoreWebView2HistoryChangedEventHandler, IID_ICoreWebView2HistoryChangedEventHandler,
             ICoreWebView2*, IUnknown*>;
using WebMessageDelegate =
    Delegate<ICoreWebView2WebMessageReceivedEventHandler,
             IID_ICoreWebView2WebMessageReceivedEventHandler, ICoreWebView2*,
             ICoreWebView2WebMessageReceivedEventArgs*>;
using ScriptCompletedDelegate =
    Delegate<ICoreWebView2ExecuteScriptCompletedHandler,
             IID_ICoreWebView2ExecuteScriptCompletedHandler, HRESULT, LPCWSTR>;

BOOL AsBool(bool flag) { return flag ? TRUE : FALSE; }

class WebView2Settings final : public WebSettings {
 public:
  explicit WebView2Settings(ComPtr<ICoreWebView2Settings> settings)
      : settings_(std::move(settings)) {}

  ResultCode SetScriptEnabled(bool enabled) override {
    return settings_->put_IsScriptEnabled(AsBool(enabled));
  }
  ResultCode SetDefaultScriptDialogsEnabled(bool enabled) override {
    return settings_->put_AreDefaultScriptDialogsEnabled(AsBool(enabled));
  }
  ResultCode SetWebMessageEnabled(bool enabled) override {
    return settings_->put_IsWebMessageEnabled(AsBool(enabled));
  }
  ResultCode SetDefaultContextMenusEnabled(bool enabled) override {
    return settings_->put_AreDefaultContextMenusEnabled(AsBool(enabled));
  }

 private:
  ComPtr<ICoreWebView2Settings> settings_;
};

// The arguments of one web message, for the time of its handler. The text
// that the control hands out is kept until then and freed afterwards, so the
// echo is made while it is still the control's own.
class WebView2MessageArgs final : public WebMessageArgs {
 public:
  explicit WebView2MessageArgs(ICoreWebView2WebMessageReceivedEventArgs* args) : args_(args) {}
  ~WebView2MessageArgs() override { CoTaskMemFree(text_); }
  WebView2MessageArgs(const WebView2MessageArgs&) = delete;
  WebView2MessageArgs& operator=(const WebView2MessageArgs&) = delete;

  std::optional<std::u16string> TryGetWebMessageAsString() const override {
    if (!asked_) {
      asked_ = true;
      if (!args_ || FAILED(args_->TryGetWebMessageAsString(&text_))) {
        CoTaskMemFree(std::exchange(text_, nullptr));
      }
    }
    if (!text_) return std::nullopt;
    return FromWide(text_);
  }

 private:
  ICoreWebView2WebMessageReceivedEventArgs* args_;
  mutable bool asked_ = false;
  mutable LPWSTR text_ = nullptr;
};

// An event handler sees the view that raised the event, held for the time
// of the call only: a handler that held it would keep the view alive from
// inside the view.
HRESULT RunViewEvent(const ViewEventHandler& handler, ICoreWebView2* sender) {
  if (sender) {
    WebView2View view(sender);
    handler(view);
  }
  return S_OK;
}

template <typename DelegateType, typename Method>
ResultCode Subscribe(ICoreWebView2* view, Method add, typename DelegateType::Body body) {
  const auto handler = DelegateType::Make(std::move(body));
  EventRegistrationToken token{};
  return (view->*add)(handler.Get(), &token);
}

}  // namespace

std::shared_ptr<WebSettings> WebView2View::GetSettings() {
  ComPtr<ICoreWebView2Settings> settings;
  if (FAILED(view_->get_Settings(&settings)) || !settings) return nullptr;
  return std::make_shared<WebView2Settings>(std::move(settings));
}

ResultCode WebView2View::Navigate(std::u16string_view url) {
  return view_->Navigate(ToWide(url).c_str());
}

ResultCode WebView2View::NavigateToString(std::u16string_view markup) {
  return view_->NavigateToString(ToWide(markup).c_str());
}

ResultCode WebView2View::AddNavigationStarting(ViewEventHandler handler) {
  return Subscribe<NavigationStartingDelegate>(
      view_.Get(), &ICoreWebView2::add_NavigationStarting,
      [handler = std::move(handler)](ICoreWebView2* sender, IUnknown*) {
        return RunViewEvent(handler, sender);
      });
}

ResultCode WebView2View::AddNavigationCompleted(ViewEventHandler handler) {
  return Subscribe<NavigationCompletedDelegate>(
      view_.Get(), &ICoreWebView2::add_NavigationCompleted,
      [handler = std::move(handler)](ICoreWebView2* sender, IUnknown*) {
        return RunViewEvent(handler, sender);
      });
}

ResultCode WebView2View::AddHistoryChanged(ViewEventHandler handler) {
  return Subscribe<HistoryChangedDelegate>(
      view_.Get(), &ICoreWebView2::add_HistoryChanged,
      [handler = std::move(handler)](ICoreWebView2* sender, IUnknown*) {
        return RunViewEvent(handler, sender);
      });
}

ResultCode WebView2View::AddWebMessageReceived(WebMessageHandler handler) {
  return Subscribe<WebMessageDelegate>(
      view_.Get(), &ICoreWebView2::add_WebMessageReceived,
      [handler = std::move(handler)](ICoreWebView2* sender,
                                     ICoreWebView2WebMessageReceivedEventArgs* args) {
        if (sender) {
          WebView2View view(sender);
          const WebView2MessageArgs message(args);
          handler(view, message);
        }
        return S_OK;
      });
}

ResultCode WebView2View::AddScriptToExecuteOnDocumentCreated(std::u16string_view script) {
  return view_->AddScriptToExecuteOnDocumentCreated(ToWide(script).c_str(), nullptr);
}

ResultCode WebView2View::ExecuteScript(std::u16string_view script, ScriptCompletion completion) {
  const auto handler = ScriptCompletedDelegate::Make(
      [completion = std::move(completion)](HRESULT errorCode, LPCWSTR json) {
        const std::u16string answer = FromWide(json);
        completion(errorCode, answer);
        return S_OK;
      });
  return view_->ExecuteScript(ToWide(script).c_str(), handler.Get());
}

std::u16string WebView2View::GetSource() {
  LPWSTR source = nullptr;
  if (FAILED(view_->get_Source(&source))) {
    CoTaskMemFree(source);
    return {};
  }
  return TakeComString(source);
}

bool WebView2View::CanGoBack() {
  BOOL flag = FALSE;
  view_->get_CanGoBack(&flag);
  return flag != FALSE;
}

bool WebView2View::CanGoForward() {
  BOOL flag = FALSE;
  view_->get_CanGoForward(&flag);
  return flag != FALSE;
}

ResultCode WebView2View::GoBack() { return view_->GoBack(); }
ResultCode WebView2View::GoForward() { return view_->GoForward(); }
ResultCode WebView2View::Stop() { return view_->Stop(); }
ResultCode WebView2View::Reload() { return view_->Reload(); }
ResultCode WebView2View::OpenDevToolsWindow() { return view_->OpenDevToolsWindow(); }

ResultCode WebView2View::PostWebMessageAsString(std::optional<std::u16string_view> text) {
  if (!text) return view_->PostWebMessageAsString(nullptr);
  return view_->PostWebMessageAsString(ToWide(*text).c_str());
}

}  // namespace qrl::webview2
