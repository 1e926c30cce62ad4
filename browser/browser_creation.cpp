// wvCreate and its chain: the command records its arguments, asks the
// component for an environment and returns; the environment, the controller,
// the settings, the bounds, the first navigation and the subscriptions follow
// later as completions on the host's thread.
#include <cstdio>
#include <memory>
#include <string>

#include "browser/browser_component.h"
#include "browser/browser_platform.h"
#include "browser/browser_state.h"
#include "browser/navigation_events.h"
#include "browser/page_capture.h"
#include "browser/url_rule.h"
#include "host/cdom.h"

namespace qrl {
namespace {

// The double colon is part of the default as it has always been: the URL
// rule turns it into "https://https::edge://version/".
constexpr std::u16string_view DefaultStartUrl = u"https::edge://version/";
constexpr std::u16string_view DefaultBrowserFolder = u".\\edge";
constexpr std::u16string_view UserDataFolderName = u"wvWebView2";

void ApplySettings(WebView& view) {
  const std::shared_ptr<WebSettings> settings = view.GetSettings();
  if (!settings) return;
  settings->SetScriptEnabled(true);
  settings->SetDefaultScriptDialogsEnabled(true);
  settings->SetWebMessageEnabled(true);
}

void Subscribe(WebView& view) {
  view.AddNavigationStarting(OnNavigationStarting);
  view.AddNavigationCompleted(OnNavigationCompleted);
  view.AddHistoryChanged(OnHistoryChanged);
  view.AddWebMessageReceived(EchoWebMessage);
}

// The error codes of the chain are not looked at: a component that gives an
// object goes on with it. A missing controller ends the chain without a word,
// and a browser made by an earlier chain stays as it was, so that its events
// are never subscribed twice.
void OnControllerCreated(WindowHandle window, const std::shared_ptr<WebController>& controller) {
  if (!controller) return;
  BrowserController = controller;
  BrowserView.reset();
  BrowserView = controller->GetView();
  const std::shared_ptr<WebView> view = BrowserView;
  if (!view) return;
  ApplySettings(*view);
  controller->SetBounds(ActivePlatform().GetClientRect(window));
  // Issued before the subscriptions: the component reports it later, out of
  // the message loop, when the handlers are in place.
  view->Navigate(StartUrl);
  Subscribe(*view);
  view->AddScriptToExecuteOnDocumentCreated(PostUrlScript);
}

void OnEnvironmentCreated(WindowHandle window, const std::shared_ptr<WebEnvironment>& environment) {
  if (!environment) return;
  environment->CreateController(
      window, [window](ResultCode, std::shared_ptr<WebController> controller) {
        OnControllerCreated(window, controller);
      });
}

void ReportLoaderFailure(ResultCode result) {
  char text[256];
  std::snprintf(text, sizeof text, "WebView2 failed with HRESULT: 0x%08X",
                static_cast<unsigned>(result));
  ActivePlatform().ShowMessageBox(text, "Error", BrowserPlatform::TextWidth::Narrow);
}

}  // namespace

HostWord CDOM::wvCreate(HostWord, HostWord, HostWord, HostValue* args, HostWord argCount) {
  // The named value and the message step let the host run; a call that it
  // makes meanwhile replaces the frame, so this call's own frame is kept.
  const CallFrame callFrame = frame;
  HostWindow = static_cast<WindowHandle>(IntArg(args, 0));
  StartUrl = DefaultStartUrl;
  NotifyWindow = 0;
  BrowserFolder = DefaultBrowserFolder;
  if (argCount >= 2 && argCount <= 6) {
    if (argCount >= 5) ScriptEventName = TextArg(args, 4);
    if (argCount >= 4) BrowserFolder = WideArg(args, 3);
    if (argCount >= 3) NotifyWindow = static_cast<WindowHandle>(IntArg(args, 2));
    StartUrl = WideArg(args, 1);
  }
  if (!ScriptEventName.empty()) RaiseScriptEvent("Creation");
  CreateBrowser();
  frame = callFrame;
  return GiveInt(0);
}

void CDOM::CreateBrowser() {
  StartUrl = NormalizeUrl(StartUrl);
  BrowserPlatform& platform = ActivePlatform();
  const std::optional<std::u16string> appData = platform.LocalAppDataFolder();
  if (!appData) {
    platform.ShowMessageBox("Failed to get the AppData\\Local path.", "Note",
                            BrowserPlatform::TextWidth::Wide);
    return;
  }
  std::u16string userDataFolder = *appData;
  userDataFolder += platform.FolderSeparator();
  userDataFolder += UserDataFolderName;
  platform.CreateFolder(userDataFolder);
  const WindowHandle window = HostWindow;
  const ResultCode started = ActiveBrowserComponent().CreateEnvironment(
      BrowserFolder, userDataFolder,
      [window](ResultCode, std::shared_ptr<WebEnvironment> environment) {
        OnEnvironmentCreated(window, environment);
      });
  if (started < 0) ReportLoaderFailure(started);
  platform.PumpOneMessage();
}

void CDOM::RaiseScriptEvent(const char* word) {
  static HostValue eventValue{};
  eventValue.type = ValueText;
  eventValue.text = word;
  if (frame.result) frame.result->type = ValueText;
  HostServices* services = frame.services;
  if (!services || !services->DllNamedValue) return;
  // The host may run script code that calls wvCreate again; the name is read
  // from a copy that such a call cannot change.
  const std::string name = ScriptEventName;
  services->DllNamedValue(services->context, name.c_str(), &eventValue, HostValueSize,
                          ServiceFlags);
}

}  // namespace qrl
