// What the browser host asks of a browser component: a loader that makes an
// environment, a controller that owns one view placed in a window, the view
// with its navigation, scripts and events, and its settings.
//
// Every completion and every event runs later, on the thread that made the
// call, out of that thread's message loop, one at a time; a component never
// calls one back from inside the call that asked for it. Each navigation,
// whichever call or page action began it, ends with exactly one
// NavigationCompleted. Handlers are kept by the component for the life of the
// view; nothing is ever unsubscribed.
//
// Which component the module uses is fixed by the build (a live browser, or
// none); tests put a stand-in in its place with UseBrowserComponent.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace qrl {

// Negative means failure, as the codes of the browser component are.
using ResultCode = std::int32_t;
inline constexpr ResultCode ResultOk = 0;
inline constexpr ResultCode ResultFailed = static_cast<ResultCode>(0x80004005u);
inline constexpr ResultCode ResultInvalidArgument = static_cast<ResultCode>(0x80070057u);
// The answer of a build that has no browser at all.
inline constexpr ResultCode ResultNoBrowser = static_cast<ResultCode>(0x80070002u);

// A window as the script names it; on Linux an X11 window id.
using WindowHandle = std::uint32_t;

struct ClientRect {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;
  bool operator==(const ClientRect&) const = default;
};

class WebSettings {
 public:
  virtual ~WebSettings() = default;
  virtual ResultCode SetScriptEnabled(bool enabled) = 0;
  virtual ResultCode SetDefaultScriptDialogsEnabled(bool enabled) = 0;
  virtual ResultCode SetWebMessageEnabled(bool enabled) = 0;
  virtual ResultCode SetDefaultContextMenusEnabled(bool enabled) = 0;
};

// The arguments of one message that a page posted.
class WebMessageArgs {
 public:
  virtual ~WebMessageArgs() = default;
  // The text when the page posted a string, else nothing.
  virtual std::optional<std::u16string> TryGetWebMessageAsString() const = 0;
};

class WebView;

// `resultJson` is the JSON form of the script's value, as UTF-16; it is only
// meaningful when `errorCode` is not negative.
using ScriptCompletion = std::function<void(ResultCode errorCode, std::u16string_view resultJson)>;
// `markup` is what a page capture parses from the answer of a markup script
// (see CapturedMarkup); it is only meaningful when `errorCode` is not
// negative.
using MarkupCompletion = std::function<void(ResultCode errorCode, std::string markup)>;
using ViewEventHandler = std::function<void(WebView& sender)>;
using WebMessageHandler = std::function<void(WebView& sender, const WebMessageArgs& message)>;

class WebView {
 public:
  virtual ~WebView() = default;
  // Null when the settings cannot be had.
  virtual std::shared_ptr<WebSettings> GetSettings() = 0;
  virtual ResultCode Navigate(std::u16string_view url) = 0;
  virtual ResultCode NavigateToString(std::u16string_view markup) = 0;
  virtual ResultCode AddNavigationStarting(ViewEventHandler handler) = 0;
  virtual ResultCode AddNavigationCompleted(ViewEventHandler handler) = 0;
  virtual ResultCode AddHistoryChanged(ViewEventHandler handler) = 0;
  virtual ResultCode AddWebMessageReceived(WebMessageHandler handler) = 0;
  virtual ResultCode AddScriptToExecuteOnDocumentCreated(std::u16string_view script) = 0;
  virtual ResultCode ExecuteScript(std::u16string_view script, ScriptCompletion completion) = 0;
  // Runs a script whose value is a page's markup and answers with the bytes
  // that the capture parses. This one asks ExecuteScript and turns the JSON
  // answer into those bytes; a component that can read a string value
  // directly gives the same bytes without the JSON in between.
  virtual ResultCode ExecuteMarkupScript(std::u16string_view script, MarkupCompletion completion);
  virtual std::u16string GetSource() = 0;
  virtual bool CanGoBack() = 0;
  virtual bool CanGoForward() = 0;
  virtual ResultCode GoBack() = 0;
  virtual ResultCode GoForward() = 0;
  virtual ResultCode Stop() = 0;
  virtual ResultCode Reload() = 0;
  virtual ResultCode OpenDevToolsWindow() = 0;
  // Nothing as the text is a message without a string, which a component
  // refuses.
  virtual ResultCode PostWebMessageAsString(std::optional<std::u16string_view> text) = 0;
};

class WebController {
 public:
  virtual ~WebController() = default;
  virtual std::shared_ptr<WebView> GetView() = 0;
  virtual ResultCode SetBounds(const ClientRect& bounds) = 0;
};

using ControllerCompletion =
    std::function<void(ResultCode errorCode, std::shared_ptr<WebController> controller)>;

class WebEnvironment {
 public:
  virtual ~WebEnvironment() = default;
  virtual ResultCode CreateController(WindowHandle parent, ControllerCompletion completion) = 0;
};

using EnvironmentCompletion =
    std::function<void(ResultCode errorCode, std::shared_ptr<WebEnvironment> environment)>;

// The loader. A negative answer is a failure at once, and the completion is
// then never called.
class BrowserComponent {
 public:
  virtual ~BrowserComponent() = default;
  virtual ResultCode CreateEnvironment(std::u16string_view browserFolder,
                                       std::u16string_view userDataFolder,
                                       EnvironmentCompletion completion) = 0;
};

// The component in use: the build's own unless a test put another in place.
BrowserComponent& ActiveBrowserComponent();
// Puts `component` in place; null brings back the build's own.
void UseBrowserComponent(BrowserComponent* component);
// The build's own component, defined by the backend that the build picked.
BrowserComponent& BuiltInBrowserComponent();

}  // namespace qrl
