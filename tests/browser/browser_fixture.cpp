#include "tests/browser/browser_fixture.h"

#include <algorithm>

#include "browser/browser_state.h"
#include "tests/browser/linked_exports.h"

namespace qrl::testing {

BrowserTest::BrowserTest() : host(LinkedExports()) {
  UseBrowserComponent(&browser);
  UsePlatform(&platform);
  platform.clientRects[BrowserWindow] = {0, 0, 640, 480};
  ScriptEventName.clear();
  CanGoBackFlag = 0;
  CanGoForwardFlag = 0;
}

BrowserTest::~BrowserTest() {
  BrowserView.reset();
  BrowserController.reset();
  ScriptEventName.clear();
  UseBrowserComponent(nullptr);
  UsePlatform(nullptr);
}

Value BrowserTest::Call(std::string_view name, std::initializer_list<Argument> args) {
  const CallOutcome outcome = host.call(name, args);
  EXPECT_EQ(outcome.deliveries, 1) << name;
  EXPECT_TRUE(outcome.errors.empty()) << name;
  EXPECT_TRUE(host.contractFaults().empty()) << name << ": " << host.contractFaults().front();
  return outcome.result;
}

StandInView& BrowserTest::MakeLiveBrowser(std::u16string url) {
  Call("wvcreate", {std::int32_t{BrowserWindow}, std::move(url), std::int32_t{ProgressWindow}});
  browser.CompleteChain();
  log.clear();
  return *browser.view();
}

void BrowserTest::AnswerScript(std::u16string_view json, ResultCode errorCode) {
  StandInView& view = *browser.view();
  view.CompleteScript(view.scriptsInFlight() - 1, errorCode, json);
}

std::string BrowserTest::Progress() const {
  const auto found = platform.windowTexts.find(ProgressWindow);
  return found == platform.windowTexts.end() ? std::string() : found->second;
}

int BrowserTest::ProgressCount(std::string_view text) const {
  const std::string line = "SetWindowText(" + std::to_string(ProgressWindow) + ", " +
                           std::string(text) + ")";
  return static_cast<int>(std::count(log.begin(), log.end(), line));
}

std::string BrowserTest::DocumentMarkup() {
  const Value markup = Call("wvgetouterhtml", {std::int32_t{0}});
  return markup.kind == Value::Kind::Text ? markup.text : "<integer " + std::to_string(markup.integer) + ">";
}

}  // namespace qrl::testing
