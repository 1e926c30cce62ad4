// The component of a build without a browser: every environment request
// fails at once, as a loader does that finds no browser to start.
#include "browser/browser_component.h"

namespace qrl {
namespace {

class NoBrowser : public BrowserComponent {
 public:
  ResultCode CreateEnvironment(std::u16string_view, std::u16string_view,
                               EnvironmentCompletion) override {
    return ResultNoBrowser;
  }
};

}  // namespace

BrowserComponent& BuiltInBrowserComponent() {
  static NoBrowser component;
  return component;
}

}  // namespace qrl
