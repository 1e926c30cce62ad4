#include "browser/standin/standin_browser.h"

#include <stdexcept>
#include <utility>

#include "commands/unicode_text.h"

namespace qrl {
namespace {

std::string Flag(bool value) { return value ? "1" : "0"; }

}  // namespace

ResultCode StandInSettings::Record(const char* what, bool enabled) {
  log_.push_back(std::string("settings.") + what + "(" + Flag(enabled) + ")");
  return ResultOk;
}

ResultCode StandInSettings::SetScriptEnabled(bool enabled) {
  return Record("SetScriptEnabled", enabled);
}
ResultCode StandInSettings::SetDefaultScriptDialogsEnabled(bool enabled) {
  return Record("SetDefaultScriptDialogsEnabled", enabled);
}
ResultCode StandInSettings::SetWebMessageEnabled(bool enabled) {
  return Record("SetWebMessageEnabled", enabled);
}
ResultCode StandInSettings::SetDefaultContextMenusEnabled(bool enabled) {
  return Record("SetDefaultContextMenusEnabled", enabled);
}

void StandInView::Record(const std::string& call) { log_.push_back(name_ + "." + call); }

std::shared_ptr<WebSettings> StandInView::GetSettings() {
  Record("GetSettings");
  if (!settingsAvailable) return nullptr;
  return std::make_shared<StandInSettings>(log_);
}

ResultCode StandInView::Navigate(std::u16string_view url) {
  Record("Navigate(" + Utf16ToUtf8(url) + ")");
  return ResultOk;
}

ResultCode StandInView::NavigateToString(std::u16string_view markup) {
  Record("NavigateToString(" + Utf16ToUtf8(markup) + ")");
  return ResultOk;
}

ResultCode StandInView::AddNavigationStarting(ViewEventHandler handler) {
  Record("AddNavigationStarting");
  starting_.push_back(std::move(handler));
  return ResultOk;
}

ResultCode StandInView::AddNavigationCompleted(ViewEventHandler handler) {
  Record("AddNavigationCompleted");
  completed_.push_back(std::move(handler));
  return ResultOk;
}

ResultCode StandInView::AddHistoryChanged(ViewEventHandler handler) {
  Record("AddHistoryChanged");
  history_.push_back(std::move(handler));
  return ResultOk;
}

ResultCode StandInView::AddWebMessageReceived(WebMessageHandler handler) {
  Record("AddWebMessageReceived");
  messages_.push_back(std::move(handler));
  return ResultOk;
}

ResultCode StandInView::AddScriptToExecuteOnDocumentCreated(std::u16string_view script) {
  Record("AddScriptToExecuteOnDocumentCreated(" + Utf16ToUtf8(script) + ")");
  return ResultOk;
}

ResultCode StandInView::ExecuteScript(std::u16string_view script, ScriptCompletion completion) {
  Record("ExecuteScript(" + Utf16ToUtf8(script) + ")");
  scripts_.push_back({std::u16string(script), std::move(completion)});
  return ResultOk;
}

std::u16string StandInView::GetSource() {
  Record("GetSource");
  return source;
}

bool StandInView::CanGoBack() {
  Record("CanGoBack");
  return canGoBack;
}

bool StandInView::CanGoForward() {
  Record("CanGoForward");
  return canGoForward;
}

ResultCode StandInView::GoBack() {
  Record("GoBack");
  return ResultOk;
}

ResultCode StandInView::GoForward() {
  Record("GoForward");
  return ResultOk;
}

ResultCode StandInView::Stop() {
  Record("Stop");
  return ResultOk;
}

ResultCode StandInView::Reload() {
  Record("Reload");
  return ResultOk;
}

ResultCode StandInView::OpenDevToolsWindow() {
  Record("OpenDevToolsWindow");
  return ResultOk;
}

ResultCode StandInView::PostWebMessageAsString(std::optional<std::u16string_view> text) {
  const std::string posted = text ? Utf16ToUtf8(*text) : "(null)";
  Record("PostWebMessageAsString(" + posted + ")");
  postedMessages.push_back(posted);
  return text ? ResultOk : ResultInvalidArgument;
}

// Handlers are copied first: one of them may subscribe more while it runs.
void StandInView::RaiseNavigationStarting() {
  const auto handlers = starting_;
  for (const auto& handler : handlers) handler(*this);
}

void StandInView::RaiseNavigationCompleted() {
  const auto handlers = completed_;
  for (const auto& handler : handlers) handler(*this);
}

void StandInView::RaiseHistoryChanged() {
  const auto handlers = history_;
  for (const auto& handler : handlers) handler(*this);
}

void StandInView::RaiseWebMessage(std::optional<std::u16string> text) {
  const StandInMessage message(std::move(text));
  const auto handlers = messages_;
  for (const auto& handler : handlers) handler(*this, message);
}

void StandInView::CompleteScript(std::size_t index, ResultCode errorCode,
                                 std::u16string_view resultJson) {
  ScriptInFlight script = std::move(scripts_.at(index));
  scripts_.erase(scripts_.begin() + static_cast<std::ptrdiff_t>(index));
  script.completion(errorCode, resultJson);
}

std::shared_ptr<WebView> StandInController::GetView() {
  log_.push_back(name_ + ".GetView");
  return view_;
}

ResultCode StandInController::SetBounds(const ClientRect& bounds) {
  log_.push_back(name_ + ".SetBounds(" + std::to_string(bounds.left) + "," +
                 std::to_string(bounds.top) + "," + std::to_string(bounds.right) + "," +
                 std::to_string(bounds.bottom) + ")");
  return ResultOk;
}

ResultCode StandInEnvironment::CreateController(WindowHandle parent,
                                                ControllerCompletion completion) {
  log_.push_back("environment.CreateController(" + std::to_string(parent) + ")");
  waiting.push_back(std::move(completion));
  return ResultOk;
}

ResultCode StandInBrowser::CreateEnvironment(std::u16string_view browserFolder,
                                             std::u16string_view userDataFolder,
                                             EnvironmentCompletion completion) {
  log_.push_back("loader.CreateEnvironment(" + Utf16ToUtf8(browserFolder) + ", " +
                 Utf16ToUtf8(userDataFolder) + ")");
  if (loaderAnswer >= 0) environments_.push_back(std::move(completion));
  return loaderAnswer;
}

void StandInBrowser::CompleteEnvironment(ResultCode errorCode, bool withEnvironment) {
  EnvironmentCompletion completion = std::move(environments_.at(0));
  environments_.erase(environments_.begin());
  std::shared_ptr<StandInEnvironment> environment;
  if (withEnvironment) {
    environment = std::make_shared<StandInEnvironment>(log_);
    madeEnvironments_.push_back(environment);
  }
  completion(errorCode, environment);
}

bool StandInBrowser::controllerWaiting() const {
  for (const auto& environment : madeEnvironments_)
    if (!environment->waiting.empty()) return true;
  return false;
}

void StandInBrowser::CompleteController(ResultCode errorCode, bool withController) {
  for (const auto& environment : madeEnvironments_) {
    if (environment->waiting.empty()) continue;
    ControllerCompletion completion = std::move(environment->waiting.front());
    environment->waiting.erase(environment->waiting.begin());
    std::shared_ptr<StandInController> controller;
    if (withController) {
      const std::string number = std::to_string(views_.size() + 1);
      views_.push_back(std::make_shared<StandInView>(log_, "view" + number));
      controller = std::make_shared<StandInController>(log_, views_.back(), "controller" + number);
    }
    completion(errorCode, controller);
    return;
  }
  throw std::logic_error("no controller is waiting");
}

void StandInBrowser::CompleteChain() {
  CompleteEnvironment();
  CompleteController();
}

}  // namespace qrl
