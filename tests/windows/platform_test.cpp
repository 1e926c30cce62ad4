// The Windows platform layer with real windows and messages, and the DLL's
// creation path where no browser can start: what a host on Windows sees.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "browser/browser_platform.h"
#include "lantern/host/module_host.h"
#include "tests/windows/test_window.h"

namespace qrl {
namespace {

class Win32PlatformTest : public ::testing::Test {
 protected:
  BrowserPlatform& platform = BuiltInPlatform();
  testing::TestWindow window_;
};

// (The component tests see the texts and the client area of real windows.)
TEST_F(Win32PlatformTest, NoWindowHasNoClientArea) {
  EXPECT_EQ(platform.GetClientRect(0), ClientRect{});
}

TEST_F(Win32PlatformTest, HandlesOneMessageAtATimeAndSwallowsAQuit) {
  MSG message;
  PostMessageA(window_.hwnd(), WM_CLOSE, 0, 0);
  PostThreadMessageA(GetCurrentThreadId(), WM_APP, 0, 0);
  platform.PumpOneMessage();
  EXPECT_FALSE(IsWindow(window_.hwnd())) << "the close was taken but not handled";
  // One message a step; the last step finds nothing waiting and returns.
  for (const BOOL left : {TRUE, FALSE}) {
    EXPECT_EQ(PeekMessageA(&message, nullptr, WM_APP, WM_APP, PM_NOREMOVE), left);
    platform.PumpOneMessage();
  }
  PostQuitMessage(0);
  platform.PumpOneMessage();
  EXPECT_FALSE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE));
}

TEST_F(Win32PlatformTest, DataFolderIsUnderLocalAppDataOrNone) {
  const std::optional<std::u16string> appData = platform.LocalAppDataFolder();
  ASSERT_TRUE(appData.has_value());
  EXPECT_TRUE(std::filesystem::path(*appData).u8string().ends_with(u8"Local"));
  // Moved to a folder that does not exist, the system can't give it.
  constexpr wchar_t key[] =
      L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";
  constexpr wchar_t name[] = L"Local AppData";
  wchar_t saved[MAX_PATH];
  DWORD type = 0, size = sizeof saved;
  const bool had = RegGetValueW(HKEY_CURRENT_USER, key, name, RRF_RT_ANY | RRF_NOEXPAND, &type,
                                saved, &size) == ERROR_SUCCESS;
  const wchar_t missing[] = L"C:\\qrl-no-such-folder\\Local";
  RegSetKeyValueW(HKEY_CURRENT_USER, key, name, REG_EXPAND_SZ, missing, sizeof missing);
  EXPECT_FALSE(platform.LocalAppDataFolder().has_value());
  if (had) {
    RegSetKeyValueW(HKEY_CURRENT_USER, key, name, type, saved, size);
  } else {
    RegDeleteKeyValueW(HKEY_CURRENT_USER, key, name);
  }
}

// The DLL through its exports, with no WebView2Loader.dll beside it or on the
// search path: wvCreate makes the data folder, shows the loader's failure (on
// standard error only, with dialogs off), and still gives 0.
TEST_F(Win32PlatformTest, CreationWithoutABrowserReportsAndGivesZero) {
  _putenv("QRLANTERN_NO_DIALOGS=1");
  auto host = ModuleHost::Load(QRL_MODULE_PATH);
  const std::int32_t window = window_.scriptHandle();
  ::testing::internal::CaptureStderr();
  const CallOutcome outcome =
      host->call("wvcreate", {window, std::u16string(u"about:blank"), window});
  const std::string reported = ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(outcome.result.integer, 0);
  EXPECT_NE(reported.find("Error: WebView2 failed with HRESULT: 0x8007007E"), std::string::npos)
      << reported;
  const std::optional<std::u16string> appData = platform.LocalAppDataFolder();
  ASSERT_TRUE(appData.has_value());
  EXPECT_TRUE(std::filesystem::is_directory(std::filesystem::path(*appData + u"\\wvWebView2")));
}

}  // namespace
}  // namespace qrl
