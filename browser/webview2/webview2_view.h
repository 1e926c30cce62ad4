// The browser seam over the web control's view (ICoreWebView2): each call is
// the one method of the control that it names, nothing more.
#pragma once

#include <wrl/client.h>

#include <memory>

#include "browser/browser_component.h"
#include "browser/webview2/webview2_interfaces.h"

namespace qrl::webview2 {

class WebView2View final : public WebView {
 public:
  explicit WebView2View(Microsoft::WRL::ComPtr<ICoreWebView2> view) : view_(std::move(view)) {}

  std::shared_ptr<WebSettings> GetSettings() override;
  ResultCode Navigate(std::u16string_view url) override;
  ResultCode NavigateToString(std::u16string_view markup) override;
  ResultCode AddNavigationStarting(ViewEventHandler handler) override;
  ResultCode AddNavigationCompleted(ViewEventHandler handler) override;
  ResultCode AddHistoryChanged(ViewEventHandler handler) override;
  ResultCode AddWebMessageReceived(WebMessageHandler handler) override;
  ResultCode AddScriptToExecuteOnDocumentCreated(std::u16string_view script) override;
  ResultCode ExecuteScript(std::u16string_view script, ScriptCompletion completion) override;
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
  Microsoft::WRL::ComPtr<ICoreWebView2> view_;
};

}  // namespace qrl::webview2
