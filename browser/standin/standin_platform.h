// A deterministic operating system for tests: window texts, client areas,
// message boxes and folders live in fields that a test sets and reads, and
// every call goes to the same log as the stand-in browser's.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "browser/browser_platform.h"
#include "browser/standin/standin_browser.h"

namespace qrl {

class StandInPlatform : public BrowserPlatform {
 public:
  explicit StandInPlatform(CallLog& log) : log_(log) {}

  std::map<WindowHandle, std::string> windowTexts;
  std::map<WindowHandle, ClientRect> clientRects;
  std::optional<std::u16string> appDataFolder = u"/home/user/.local/share";
  std::vector<std::string> createdFolders;
  // "title: text" of every message box, in order.
  std::vector<std::string> messageBoxes;
  // Runs inside SetWindowText, after the text is set, as a window's own
  // message handling would.
  std::function<void(WindowHandle, std::string_view)> onWindowText;

  void SetWindowText(WindowHandle window, std::string_view text) override;
  ClientRect GetClientRect(WindowHandle window) override;
  void PumpOneMessage() override;
  void ShowMessageBox(std::string_view text, std::string_view title, TextWidth width) override;
  std::optional<std::u16string> LocalAppDataFolder() override;
  char16_t FolderSeparator() const override { return u'/'; }
  void CreateFolder(std::u16string_view path) override;

 private:
  CallLog& log_;
};

}  // namespace qrl
