// Drives the module's browser commands through the reference host library,
// with the stand-in browser and platform in place of the live ones, so that a
// test decides when each completion and event arrives.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>

#include "browser/browser_state.h"
#include "browser/standin/standin_browser.h"
#include "browser/standin/standin_platform.h"
#include "lantern/host/module_host.h"
#include "tests/browser/linked_exports.h"

namespace qrl::testing {

inline constexpr WindowHandle BrowserWindow = 7;
inline constexpr WindowHandle ProgressWindow = 9;

class BrowserTest : public ::testing::Test {
 protected:
  BrowserTest() : host(LinkedExports()) {
    UseBrowserComponent(&browser);
    UsePlatform(&platform);
    platform.clientRects[BrowserWindow] = {0, 0, 640, 480};
    ScriptEventName.clear();
  }
  ~BrowserTest() override {
    BrowserView.reset();
    BrowserController.reset();
    UseBrowserComponent(nullptr);
    UsePlatform(nullptr);
  }

  // Calls a row and checks that the call kept to the contract.
  Value Call(std::string_view name, std::initializer_list<Argument> args) {
    const CallOutcome outcome = host.call(name, args);
    EXPECT_EQ(outcome.deliveries, 1) << name;
    EXPECT_TRUE(outcome.errors.empty()) << name;
    EXPECT_TRUE(host.contractFaults().empty()) << name << ": " << host.contractFaults().front();
    return outcome.result;
  }
  Value IdOf(const char* id) {
    return Call("wvgetelementbyid", {std::int32_t{0}, std::string(id)});
  }

  // A live browser in BrowserWindow, reporting to ProgressWindow, with the
  // log cleared behind the chain.
  StandInView& MakeLiveBrowser(std::u16string url = u"file:///start.html") {
    Call("wvcreate", {std::int32_t{BrowserWindow}, std::move(url), std::int32_t{ProgressWindow}});
    browser.CompleteChain();
    log.clear();
    return *browser.view();
  }

  std::string Progress() const {
    const auto found = platform.windowTexts.find(ProgressWindow);
    return found == platform.windowTexts.end() ? std::string() : found->second;
  }

  CallLog log;
  StandInBrowser browser{log};
  StandInPlatform platform{log};
  ModuleHost host;
};

}  // namespace qrl::testing
