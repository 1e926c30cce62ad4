#include "browser/browser_component.h"
#include "browser/browser_platform.h"

namespace qrl {
namespace {

BrowserComponent* componentInPlace = nullptr;
BrowserPlatform* platformInPlace = nullptr;

}  // namespace

BrowserComponent& ActiveBrowserComponent() {
  return componentInPlace ? *componentInPlace : BuiltInBrowserComponent();
}

void UseBrowserComponent(BrowserComponent* component) { componentInPlace = component; }

BrowserPlatform& ActivePlatform() {
  return platformInPlace ? *platformInPlace : BuiltInPlatform();
}

void UsePlatform(BrowserPlatform* platform) { platformInPlace = platform; }

}  // namespace qrl
