// What the browser host asks of the operating system, and nothing more.
//
// Which platform the module uses is fixed by the build; tests put a stand-in
// in its place with UsePlatform.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "browser/browser_component.h"

namespace qrl {

class BrowserPlatform {
 public:
  virtual ~BrowserPlatform() = default;
  // Sets the text of a window and returns once it is set.
  virtual void SetWindowText(WindowHandle window, std::string_view text) = 0;
  // The client area of a window; an empty rectangle when it has none.
  virtual ClientRect GetClientRect(WindowHandle window) = 0;
  // Handles at most one pending message or event, without waiting.
  virtual void PumpOneMessage() = 0;
  // Shows a modal note with an OK button. Texts are UTF-8; `width` says
  // whether the Windows form takes them as wide or as narrow text, as each
  // message has always been shown.
  enum class TextWidth { Wide, Narrow };
  virtual void ShowMessageBox(std::string_view text, std::string_view title, TextWidth width) = 0;
  // The folder for per-user application data, or nothing when unknown.
  virtual std::optional<std::u16string> LocalAppDataFolder() = 0;
  // The separator between a folder and a name inside it.
  virtual char16_t FolderSeparator() const = 0;
  // Makes a folder; whether that worked is not reported.
  virtual void CreateFolder(std::u16string_view path) = 0;
};

BrowserPlatform& ActivePlatform();
void UsePlatform(BrowserPlatform* platform);
BrowserPlatform& BuiltInPlatform();

}  // namespace qrl
