// The Windows component: the web control's loader, its environment and its
// controller behind the browser seam. The control answers every request
// later, out of the thread's message loop; nothing here waits for it.
#include <wrl/client.h>

#include <memory>
#include <string>
#include <utility>

#include "browser/browser_component.h"
#include "browser/webview2/com_delegate.h"
#include "browser/webview2/webview2_interfaces.h"
#include "browser/webview2/webview2_loader.h"
#include "browser/webview2/webview2_view.h"
#include "browser/windows/wide_text.h"
#include "browser/windows/window_handle.h"

namespace qrl::webview2 {
namespace {

using Microsoft::WRL::ComPtr;

// From the first handler that the control gets, this DLL stays loaded until
// the process ends. The control holds our handlers and calls them out of the
// message loop whenever its work completes, also after a host has freed the
// DLL; unmapping it would leave the control calling into nothing. A host that
// loads the DLL again gets the same one back, with its browser as it was.
void KeepModuleLoaded() {
  HMODULE self = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                     reinterpret_cast<LPCWSTR>(&KeepModuleLoaded), &self);
}

using EnvironmentCompletedDelegate =
    Delegate<ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler,
             IID_ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler, HRESULT,
             ICoreWebView2Environment*>;
using ControllerCompletedDelegate =
    Delegate<ICoreWebView2CreateCoreWebView2ControllerCompletedHandler,
             IID_ICoreWebView2CreateCoreWebView2ControllerCompletedHandler, HRESULT,
             ICoreWebView2Controller*>;

class WebView2Controller final : public WebController {
 public:
  explicit WebView2Controller(ComPtr<ICoreWebView2Controller> controller)
      : controller_(std::move(controller)) {}

  std::shared_ptr<WebView> GetView() override {
    ComPtr<ICoreWebView2> view;
    if (FAILED(controller_->get_CoreWebView2(&view)) || !view) return nullptr;
    return std::make_shared<WebView2View>(std::move(view));
  }

  ResultCode SetBounds(const ClientRect& bounds) override {
    return controller_->put_Bounds(RECT{bounds.left, bounds.top, bounds.right, bounds.bottom});
  }

 private:
  ComPtr<ICoreWebView2Controller> controller_;
};

class WebView2Environment final : public WebEnvironment {
 public:
  explicit WebView2Environment(ComPtr<ICoreWebView2Environment> environment)
      : environment_(std::move(environment)) {}

  ResultCode CreateController(WindowHandle parent, ControllerCompletion completion) override {
    const auto handler = ControllerCompletedDelegate::Make(
        [completion = std::move(completion)](HRESULT errorCode,
                                             ICoreWebView2Controller* controller) {
          completion(errorCode,
                     controller ? std::make_shared<WebView2Controller>(controller) : nullptr);
          return S_OK;
        });
    return environment_->CreateCoreWebView2Controller(AsHwnd(parent), handler.Get());
  }

 private:
  ComPtr<ICoreWebView2Environment> environment_;
};

class WebView2Component final : public BrowserComponent {
 public:
  ResultCode CreateEnvironment(std::u16string_view browserFolder,
                               std::u16string_view userDataFolder,
                               EnvironmentCompletion completion) override {
    const LoaderEntry loader = FindLoader();
    if (!loader.create) return loader.failure;
    KeepModuleLoaded();
    const auto handler = EnvironmentCompletedDelegate::Make(
        [completion = std::move(completion)](HRESULT errorCode,
                                             ICoreWebView2Environment* environment) {
          completion(errorCode,
                     environment ? std::make_shared<WebView2Environment>(environment) : nullptr);
          return S_OK;
        });
    return loader.create(ToWide(browserFolder).c_str(), ToWide(userDataFolder).c_str(), nullptr,
                         handler.Get());
  }
};

}  // namespace
}  // namespace qrl::webview2

namespace qrl {

BrowserComponent& BuiltInBrowserComponent() {
  static webview2::WebView2Component component;
  return component;
}

}  // namespace qrl
