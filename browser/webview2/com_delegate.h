// A handler that the web control calls back: a small COM object of ours
// around a std::function. Its maker holds the first reference and lets it go
// once the control has taken its own.
#pragma once

#include <windows.h>
#include <wrl/client.h>

#include <functional>
#include <utility>

#include "browser/webview2/com_object.h"

namespace qrl::webview2 {

template <typename Interface, const IID& InterfaceId, typename... Args>
class Delegate final : public ComObject<Interface, InterfaceId> {
 public:
  using Body = std::function<HRESULT(Args...)>;

  // The pointer takes the first reference. (No Attach: mingw-w64's ComPtr
  // adds a reference there, unlike the SDK's.)
  static Microsoft::WRL::ComPtr<Interface> Make(Body body) {
    return Microsoft::WRL::ComPtr<Interface>(new Delegate(std::move(body)));
  }

  // Nothing may unwind into the control: a body that throws answers E_FAIL.
  HRESULT STDMETHODCALLTYPE Invoke(Args... args) override {
    try {
      return body_(args...);
    } catch (...) {
      return E_FAIL;
    }
  }

 private:
  explicit Delegate(Body body) : body_(std::move(body)) {}

  Body body_;
};

}  // namespace qrl::webview2
