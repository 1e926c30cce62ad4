#include "browser/browser_component.h"
#include "browser/browser_platform.h"
#include "browser/captured_markup.h"

namespace qrl {
namespace {

BrowserComponent* componentInPlace = nullptr;
BrowserPlatform* platformInPlace = nullptr;

}  // namespace

ResultCode WebView::ExecuteMarkupScript(std::u16string_view script, MarkupCompletion completion) {
  return ExecuteScript(script, [completion = std::move(completion)](ResultCode errorCode,
                                                                    std::u16string_view json) {
    completion(errorCode, errorCode < 0 ? std::string() : CapturedMarkup(json));
  });
}

BrowserComponent& ActiveBrowserComponent() {
  return componentInPlace ? *componentInPlace : BuiltInBrowserComponent();
}

void UseBrowserComponent(BrowserComponent* component) { componentInPlace = component; }

BrowserPlatform& ActivePlatform() {
  return platformInPlace ? *platformInPlace : BuiltInPlatform();
}

void UsePlatform(BrowserPlatform* platform) { platformInPlace = platform; }

}  // namespace qrl
