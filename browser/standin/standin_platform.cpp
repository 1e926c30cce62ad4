#include "browser/standin/standin_platform.h"

#include "commands/unicode_text.h"

namespace qrl {

void StandInPlatform::SetWindowText(WindowHandle window, std::string_view text) {
  log_.push_back("SetWindowText(" + std::to_string(window) + ", " + std::string(text) + ")");
  windowTexts[window] = std::string(text);
  if (onWindowText) onWindowText(window, text);
}

ClientRect StandInPlatform::GetClientRect(WindowHandle window) {
  log_.push_back("GetClientRect(" + std::to_string(window) + ")");
  const auto found = clientRects.find(window);
  return found == clientRects.end() ? ClientRect{} : found->second;
}

void StandInPlatform::PumpOneMessage() { log_.push_back("PumpOneMessage"); }

void StandInPlatform::ShowMessageBox(std::string_view text, std::string_view title,
                                     TextWidth width) {
  log_.push_back(std::string(width == TextWidth::Wide ? "ShowMessageBoxW(" : "ShowMessageBoxA(") +
                 std::string(title) + ": " + std::string(text) + ")");
  messageBoxes.push_back(std::string(title) + ": " + std::string(text));
}

std::optional<std::u16string> StandInPlatform::LocalAppDataFolder() {
  log_.push_back("LocalAppDataFolder");
  return appDataFolder;
}

void StandInPlatform::CreateFolder(std::u16string_view path) {
  log_.push_back("CreateFolder(" + Utf16ToUtf8(path) + ")");
  createdFolders.push_back(Utf16ToUtf8(path));
}

}  // namespace qrl
