// The Windows platform layer with real windows and messages, and the DLL's
// creation path where no browser can start: what a host on Windows sees.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "browser/browser_platform.h"
#include "lantern/module_host.h"

namespace qrl {
namespace {

constexpr UINT ProbeMessage = WM_APP + 7;
int ProbesHandled = 0;

LRESULT CALLBACK ProbeWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == ProbeMessage) {
    ++ProbesHandled;
    return 0;
  }
  return DefWindowProcA(window, message, wParam, lParam);
}

// A top-level window with a client area of 320 x 200.
HWND MakeWindow() {
  static const ATOM windowClass = [] {
    WNDCLASSA description{};
    description.lpfnWndProc = ProbeWindowProc;
    description.hInstance = GetModuleHandleA(nullptr);
    description.lpszClassName = "QrlProbeWindow";
    return RegisterClassA(&description);
  }();
  RECT frame{0, 0, 320, 200};
  AdjustWindowRect(&frame, WS_OVERLAPPEDWINDOW, FALSE);
  return CreateWindowExA(0, MAKEINTATOM(windowClass), "probe", WS_OVERLAPPEDWINDOW, 10, 10,
                         frame.right - frame.left, frame.bottom - frame.top, nullptr, nullptr,
                         GetModuleHandleA(nullptr), nullptr);
}

WindowHandle HandleOf(HWND window) {
  return static_cast<WindowHandle>(reinterpret_cast<std::uintptr_t>(window));
}

std::string TextOf(HWND window) {
  char text[64] = {};
  GetWindowTextA(window, text, sizeof text);
  return text;
}

class Win32PlatformTest : public ::testing::Test {
 protected:
  void SetUp() override {
    window_ = MakeWindow();
    ASSERT_NE(window_, nullptr);
    // Whatever creating the window queued is out of the way.
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
    ProbesHandled = 0;
  }
  void TearDown() override { DestroyWindow(window_); }

  BrowserPlatform& platform = BuiltInPlatform();
  HWND window_ = nullptr;
};

TEST_F(Win32PlatformTest, SetsTheTextAndMeasuresTheClientArea) {
  platform.SetWindowText(HandleOf(window_), "NavComplete");
  EXPECT_EQ(TextOf(window_), "NavComplete");
  EXPECT_EQ(platform.GetClientRect(HandleOf(window_)), (ClientRect{0, 0, 320, 200}));
  EXPECT_EQ(platform.GetClientRect(0), ClientRect{});
}

TEST_F(Win32PlatformTest, HandlesOneMessageAtATimeAndSwallowsAQuit) {
  PostMessageA(window_, ProbeMessage, 0, 0);
  PostMessageA(window_, ProbeMessage, 0, 0);
  platform.PumpOneMessage();
  EXPECT_EQ(ProbesHandled, 1);
  platform.PumpOneMessage();
  EXPECT_EQ(ProbesHandled, 2);
  platform.PumpOneMessage();  // nothing waiting: returns at once

  PostQuitMessage(0);
  platform.PumpOneMessage();
  MSG message;
  EXPECT_FALSE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE));
}

TEST_F(Win32PlatformTest, DataFolderIsUnderLocalAppData) {
  const std::optional<std::u16string> appData = platform.LocalAppDataFolder();
  ASSERT_TRUE(appData.has_value());
  const std::filesystem::path folder =
      std::filesystem::path(std::u16string(*appData) + platform.FolderSeparator() + u"qrl-probe");
  platform.CreateFolder(folder.u16string());
  EXPECT_TRUE(std::filesystem::is_directory(folder)) << folder;
  std::filesystem::remove(folder);
  EXPECT_TRUE(folder.parent_path().u8string().ends_with(u8"Local")) << folder;
}

// The DLL through its exports: no browser can start, so wvCreate shows the
// loader's failure (on standard error only, with dialogs off), makes the data
// folder, and still gives 0.
TEST_F(Win32PlatformTest, CreationWithoutABrowserReportsAndGivesZero) {
  _putenv("QRLANTERN_NO_DIALOGS=1");
  auto host = ModuleHost::Load(QRL_MODULE_PATH);
  const auto window = static_cast<std::int32_t>(HandleOf(window_));
  ::testing::internal::CaptureStderr();
  const CallOutcome outcome = host->call("wvcreate", {window, std::u16string(u"about:blank"), window});
  const std::string reported = ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(outcome.result.integer, 0);
  EXPECT_NE(reported.find("Error: WebView2 failed with HRESULT: 0x80070002"), std::string::npos)
      << reported;
  const std::optional<std::u16string> appData = platform.LocalAppDataFolder();
  ASSERT_TRUE(appData.has_value());
  EXPECT_TRUE(std::filesystem::is_directory(std::filesystem::path(*appData + u"\\wvWebView2")));
  // The notify window keeps its text: nothing was navigated.
  EXPECT_EQ(TextOf(window_), "probe");
}

}  // namespace
}  // namespace qrl
