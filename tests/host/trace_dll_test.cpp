// The trace through the Windows DLL's exports: the variable names a file
// outside the ANSI code page as the DLL loads, and a navigation of the
// recording web control, its capture and the calls around them each leave
// their line.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "tests/host/module_fixture.h"
#include "tests/windows/test_window.h"
#include "tests/windows/webview2/fake_control.h"

namespace qrl::testing {
namespace {

TEST(TraceThroughTheDll, HasEachCallTheNavigationAndItsCapture) {
  _putenv("QRLANTERN_NO_DIALOGS=1");
  FakeControl& control = FakeControl::Start();
  TestWindow window;
  const std::filesystem::path path = std::filesystem::temp_directory_path() / L"trace-\u5149.txt";
  std::filesystem::remove(path);
  SetEnvironmentVariableW(L"QRLANTERN_TRACE", path.c_str());
  const std::unique_ptr<ModuleHost> host = FreshHost();
  SetEnvironmentVariableW(L"QRLANTERN_TRACE", nullptr);

  host->versionInfo();
  host->call("wvcreate", {window.scriptHandle(), std::u16string(u"C:\\pages\\a.html"),
                          window.scriptHandle()});
  control.RunPending();
  control.source = L"file:///C:/pages/a.html";
  control.RaiseNavigationStarting();
  control.RaiseNavigationCompleted();
  control.RunPending();
  control.AnswerScript(S_OK, LR"("<div><p id=\"a\">x</p></div>")");
  control.RunPending();
  host->call("wvgetelementbyid", {std::int32_t{0}, S("a")});
  host->call("wvgetinnertext", {std::int32_t{1}});

  std::ostringstream trace;
  trace << std::ifstream(path, std::ios::binary).rdbuf();
  const std::string id = std::to_string(window.handle());
  const std::vector<std::string> lines = {
      "query 1 -> 44001 description=\"DllMapServices extender API example\"\n",
      "call wvCreate(" + id + ", \"C:\\\\pages\\\\a.html\", " + id + ") -> int 0 in ",
      "nav start url=\"file:///C:/pages/a.html\"\n",
      "nav done url=\"file:///C:/pages/a.html\"\n",
      "capture navigation bytes=26 elements=2 in ",
      "notify window=" + id + " text=\"NavComplete\"\n",
      "call wvGetElementById(0, \"a\") -> int 1 in ",
      "call wvGetInnerText(1) -> text \"x\" in "};
  for (const std::string& line : lines) EXPECT_THAT(trace.str(), ::testing::HasSubstr(" " + line));
}

}  // namespace
}  // namespace qrl::testing
