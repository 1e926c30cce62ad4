// WebView2Loader.dll on autopilot: a web control for lantern scripts that
// drive the Windows component under wine, where no real control exists. It
// is found beside the module, or along the system's search order, as the
// real loader is. Nothing steers it: it answers as a browser would, and
// every answer and event arrives later, out of the thread's message loop,
// never inside the call that asked for it.
//
// What it can do:
// - make the environment, the controller and its view, each creation
//   completing with S_OK; every object counts its references;
// - load file:// URLs (file:///C:/a.html, file:///a.html, which wine reads
//   through the drive that maps the Unix root, file://localhost/...; percent
//   escapes undone) as UTF-8 text, about:blank as an empty page, and markup
//   given as a string, whose address is then about:blank;
// - fail every other address (http, https, a file that can't be read) as a
//   browser without a network does: NavigationCompleted tells the failure,
//   the page on show is an error page of its own, and the address stays
//   the one asked for;
// - raise NavigationStarting, then after a load time (see work_queue.h)
//   HistoryChanged (when the history moved) and NavigationCompleted, with
//   IsSuccess, the web error status and the navigation id in its arguments;
//   NavigationStarting and HistoryChanged carry no arguments;
// - go back, forward and reload through a browser's history, and stop: a
//   load that Stop or a newer navigation overtakes completes as cancelled
//   and leaves the page as it was;
// - answer "document.documentElement.outerHTML;" with the document's
//   markup as a JSON string (see script_answer.h).
//
// What it can't do:
// - parse a page or run its scripts: the document is the file's text as
//   written, so entities are not decoded and no element is added beyond the
//   <html> wrapper of a page that has none; a click, a timer or a page's
//   own script never happens;
// - run any other script: each one answers null with S_OK, errors included;
//   scripts for new documents are taken and never run, so no web message
//   ever arrives, and a message posted to the page goes nowhere;
// - draw, take focus, give a title or open developer tools: bounds,
//   visibility, zoom and settings are only kept. A method that the module
//   never calls answers E_NOTIMPL.
#include <windows.h>
#include <wrl/client.h>

#include <type_traits>

#include "browser/webview2/com_object.h"
#include "browser/webview2/webview2_interfaces.h"
#include "tests/windows/webview2/autopilot/autopilot_controller.h"
#include "tests/windows/webview2/autopilot/com_methods.h"
#include "tests/windows/webview2/autopilot/work_queue.h"

namespace qrl::autopilot {
namespace {

using Microsoft::WRL::ComPtr;

class AutopilotEnvironment final
    : public webview2::ComObject<webview2::ICoreWebView2Environment,
                                 webview2::IID_ICoreWebView2Environment> {
 public:
  HRESULT STDMETHODCALLTYPE CreateCoreWebView2Controller(
      HWND parentWindow,
      webview2::ICoreWebView2CreateCoreWebView2ControllerCompletedHandler* handler) override {
    if (!handler) return E_POINTER;
    const ComPtr<webview2::ICoreWebView2CreateCoreWebView2ControllerCompletedHandler> completion(
        handler);
    PostWork([completion, parentWindow] {
      const ComPtr<AutopilotController> controller(new AutopilotController(parentWindow));
      completion->Invoke(S_OK, controller.Get());
    });
    return S_OK;
  }
  QRL_AUTOPILOT_UNSUPPORTED(CreateWebResourceResponse, IStream*, int, LPCWSTR, LPCWSTR,
                            IUnknown**)
  QRL_AUTOPILOT_UNSUPPORTED(get_BrowserVersionString, LPWSTR*)
  QRL_AUTOPILOT_NO_EVENT(NewBrowserVersionAvailable, IUnknown)
};

}  // namespace
}  // namespace qrl::autopilot

// The browser's folder, the data folder and the options play no part: there
// is no browser to find and nothing to store.
extern "C" __declspec(dllexport) HRESULT STDAPICALLTYPE CreateCoreWebView2EnvironmentWithOptions(
    LPCWSTR, LPCWSTR, IUnknown*,
    qrl::webview2::ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler* handler) {
  using qrl::autopilot::AutopilotEnvironment;
  if (!handler) return E_POINTER;
  const Microsoft::WRL::ComPtr<
      qrl::webview2::ICoreWebView2CreateCoreWebView2EnvironmentCompletedHandler>
      completion(handler);
  qrl::autopilot::PostWork([completion] {
    const Microsoft::WRL::ComPtr<AutopilotEnvironment> environment(new AutopilotEnvironment);
    completion->Invoke(S_OK, environment.Get());
  });
  return S_OK;
}

// The module calls the entry point through this type.
static_assert(std::is_same_v<decltype(&CreateCoreWebView2EnvironmentWithOptions),
                             qrl::webview2::CreateEnvironmentWithOptionsFn>);
