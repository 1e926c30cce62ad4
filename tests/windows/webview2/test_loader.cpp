// WebView2Loader.dll for the tests: its entry point hands each environment
// request to the fake control that a test program routes it to, so that the
// component under test finds and calls a loader as it does on a user's
// machine.
#include "browser/webview2/webview2_interfaces.h"

namespace {

qrl::webview2::CreateEnvironmentWithOptionsFn Route = nullptr;

}  // namespace

extern "C" __declspec(dllexport) HRESULT STDAPICALLTYPE CreateCoreWebView2EnvironmentWithOptions(
    LPCWSTR browserExecutableFolder, LPCWSTR userDataFolder, IUnknown* environmentOptions,
    qrl::webview2::ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler* handler) {
  if (!Route) return E_NOTIMPL;
  return Route(browserExecutableFolder, userDataFolder, environmentOptions, handler);
}

extern "C" __declspec(dllexport) void
QrlRouteEnvironmentRequests(qrl::webview2::CreateEnvironmentWithOptionsFn to) {
  Route = to;
}
