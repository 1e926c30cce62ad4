// The platform on Windows: a window's text is set by WM_SETTEXT, one step of
// the message loop is one PeekMessage, a message box is the system's own,
// and the browser's data goes under the local application data folder.
#include <windows.h>
#include <shlobj.h>

#include <string>

#include "browser/browser_platform.h"
#include "browser/message_box_line.h"
#include "browser/windows/wide_text.h"
#include "browser/windows/window_handle.h"
#include "commands/unicode_text.h"

namespace qrl {
namespace {

class Win32Platform : public BrowserPlatform {
 public:
  void SetWindowText(WindowHandle window, std::string_view text) override {
    const std::string terminated(text);
    SendMessageA(AsHwnd(window), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(terminated.c_str()));
  }

  ClientRect GetClientRect(WindowHandle window) override {
    RECT area{};
    if (!::GetClientRect(AsHwnd(window), &area)) return {};
    return {area.left, area.top, area.right, area.bottom};
  }

  // A WM_QUIT taken here is gone: it is neither handled nor put back.
  void PumpOneMessage() override {
    MSG message;
    if (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) && message.message != WM_QUIT) {
      TranslateMessage(&message);
      DispatchMessageA(&message);
    }
  }

  void ShowMessageBox(std::string_view text, std::string_view title, TextWidth width) override {
    WriteMessageBoxLine(text, title);
    if (!MessageBoxDialogsAllowed()) return;
    if (width == TextWidth::Wide) {
      MessageBoxW(nullptr, ToWide(Utf8ToUtf16(text)).c_str(), ToWide(Utf8ToUtf16(title)).c_str(),
                  MB_OK);
    } else {
      MessageBoxA(nullptr, std::string(text).c_str(), std::string(title).c_str(), MB_OK);
    }
  }

  std::optional<std::u16string> LocalAppDataFolder() override {
    wchar_t folder[MAX_PATH];
    if (SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder) != S_OK)
      return std::nullopt;
    return FromWide(folder);
  }

  char16_t FolderSeparator() const override { return u'\\'; }

  void CreateFolder(std::u16string_view path) override {
    CreateDirectoryW(ToWide(path).c_str(), nullptr);
  }
};

}  // namespace

BrowserPlatform& BuiltInPlatform() {
  static Win32Platform platform;
  return platform;
}

}  // namespace qrl
