// A deterministic browser component for tests. It records every call as one
// line in a log that a test reads, answers from fields that a test sets, and
// runs no completion and no event by itself: the test delivers each one,
// in any order, as the live browser would out of its message loop.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "browser/browser_component.h"

namespace qrl {

using CallLog = std::vector<std::string>;

class StandInSettings : public WebSettings {
 public:
  explicit StandInSettings(CallLog& log) : log_(log) {}
  ResultCode SetScriptEnabled(bool enabled) override;
  ResultCode SetDefaultScriptDialogsEnabled(bool enabled) override;
  ResultCode SetWebMessageEnabled(bool enabled) override;
  ResultCode SetDefaultContextMenusEnabled(bool enabled) override;

 private:
  ResultCode Record(const char* what, bool enabled);
  CallLog& log_;
};

class StandInMessage : public WebMessageArgs {
 public:
  explicit StandInMessage(std::optional<std::u16string> text) : text_(std::move(text)) {}
  std::optional<std::u16string> TryGetWebMessageAsString() const override { return text_; }

 private:
  std::optional<std::u16string> text_;
};

class StandInView : public WebView {
 public:
  StandInView(CallLog& log, std::string name) : log_(log), name_(std::move(name)) {}

  // What the view answers.
  bool canGoBack = false;
  bool canGoForward = false;
  bool settingsAvailable = true;
  std::u16string source;
  // Texts that PostWebMessageAsString sent; "(null)" for a message without one.
  std::vector<std::string> postedMessages;

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

  // The test's side: events to every subscribed handler, and completions of
  // the scripts in flight, counted from the oldest.
  void RaiseNavigationStarting();
  void RaiseNavigationCompleted();
  void RaiseHistoryChanged();
  void RaiseWebMessage(std::optional<std::u16string> text);
  std::size_t scriptsInFlight() const { return scripts_.size(); }
  std::u16string scriptText(std::size_t index) const { return scripts_.at(index).text; }
  void CompleteScript(std::size_t index, ResultCode errorCode, std::u16string_view resultJson);

 private:
  struct ScriptInFlight {
    std::u16string text;
    ScriptCompletion completion;
  };
  void Record(const std::string& call);

  CallLog& log_;
  std::string name_;
  std::vector<ViewEventHandler> starting_;
  std::vector<ViewEventHandler> completed_;
  std::vector<ViewEventHandler> history_;
  std::vector<WebMessageHandler> messages_;
  std::vector<ScriptInFlight> scripts_;
};

class StandInController : public WebController {
 public:
  StandInController(CallLog& log, std::shared_ptr<StandInView> view, std::string name)
      : log_(log), view_(std::move(view)), name_(std::move(name)) {}
  std::shared_ptr<WebView> GetView() override;
  ResultCode SetBounds(const ClientRect& bounds) override;

 private:
  CallLog& log_;
  std::shared_ptr<StandInView> view_;
  std::string name_;
};

class StandInEnvironment : public WebEnvironment {
 public:
  explicit StandInEnvironment(CallLog& log) : log_(log) {}
  ResultCode CreateController(WindowHandle parent, ControllerCompletion completion) override;
  std::vector<ControllerCompletion> waiting;

 private:
  CallLog& log_;
};

class StandInBrowser : public BrowserComponent {
 public:
  explicit StandInBrowser(CallLog& log) : log_(log) {}

  ResultCode loaderAnswer = ResultOk;

  ResultCode CreateEnvironment(std::u16string_view browserFolder,
                               std::u16string_view userDataFolder,
                               EnvironmentCompletion completion) override;

  // Delivers the oldest waiting environment completion.
  void CompleteEnvironment(ResultCode errorCode = ResultOk, bool withEnvironment = true);
  // Delivers the oldest waiting controller completion; with a controller it
  // brings a new view, which view() then gives.
  void CompleteController(ResultCode errorCode = ResultOk, bool withController = true);
  // Both steps at once: the usual successful chain.
  void CompleteChain();

  bool environmentWaiting() const { return !environments_.empty(); }
  bool controllerWaiting() const;
  // The newest view; null before the first controller.
  StandInView* view() const { return views_.empty() ? nullptr : views_.back().get(); }
  StandInView* view(std::size_t index) const { return views_.at(index).get(); }

 private:
  CallLog& log_;
  std::vector<EnvironmentCompletion> environments_;
  std::vector<std::shared_ptr<StandInEnvironment>> madeEnvironments_;
  std::vector<std::shared_ptr<StandInView>> views_;
};

}  // namespace qrl
