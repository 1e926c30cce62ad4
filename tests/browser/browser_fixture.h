// Drives the module's browser commands through the reference host library,
// with the stand-in browser and platform in place of the live ones, so that a
// test decides when each completion and event arrives.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "browser/standin/standin_browser.h"
#include "browser/standin/standin_platform.h"
#include "lantern/module_host.h"

namespace qrl::testing {

inline constexpr WindowHandle BrowserWindow = 7;
inline constexpr WindowHandle ProgressWindow = 9;

class BrowserTest : public ::testing::Test {
 protected:
  BrowserTest();
  ~BrowserTest() override;

  // Calls a row and checks that the call kept to the contract.
  Value Call(std::string_view name, std::initializer_list<Argument> args);

  // A live browser on `url` in BrowserWindow, reporting to ProgressWindow,
  // with the log cleared behind the chain.
  StandInView& MakeLiveBrowser(std::u16string url = u"file:///start.html");

  // Hands `json` to the newest script in flight of the newest view.
  void AnswerScript(std::u16string_view json, ResultCode errorCode = ResultOk);

  // The progress text of ProgressWindow.
  std::string Progress() const;
  // How many times `text` went to ProgressWindow.
  int ProgressCount(std::string_view text) const;
  // The outer markup of the current document's root.
  std::string DocumentMarkup();

  CallLog log;
  StandInBrowser browser{log};
  StandInPlatform platform{log};
  ModuleHost host;
};

}  // namespace qrl::testing
