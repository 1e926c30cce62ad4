// The platform of a build without a window system: there are no windows to
// set a text on or to measure, no messages to handle, and a message box is a
// line on standard error.

#include "browser/browser_platform.h"
#include "browser/linux/data_folder.h"
#include "browser/message_box_line.h"
#include "commands/unicode_text.h"

namespace qrl {
namespace {

class PlainPlatform : public BrowserPlatform {
 public:
  void SetWindowText(WindowHandle, std::string_view) override {}
  ClientRect GetClientRect(WindowHandle) override { return {}; }
  void PumpOneMessage() override {}
  void ShowMessageBox(std::string_view text, std::string_view title, TextWidth) override {
    WriteMessageBoxLine(text, title);
  }
  std::optional<std::u16string> LocalAppDataFolder() override { return UserDataHome(); }
  char16_t FolderSeparator() const override { return u'/'; }
  void CreateFolder(std::u16string_view path) override { MakeFolder(path); }
};

}  // namespace

BrowserPlatform& BuiltInPlatform() {
  static PlainPlatform platform;
  return platform;
}

}  // namespace qrl
