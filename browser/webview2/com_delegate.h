// A handler that the web control calls back: a small reference-counted COM
// object of ours around a std::function, answering QueryInterface for
// IUnknown and its own interface. Its maker holds the first reference and
// lets it go once the control has taken its own.
#pragma once

#include <windows.h>
#include <wrl/client.h>

#include <atomic>
#include <functional>
#include <utility>

namespace qrl::webview2 {

template <typename Interface, const IID& InterfaceId, typename... Args>
class Delegate final : public Interface {
 public:
  using Body = std::function<HRESULT(Args...)>;

  // The pointer takes the first reference: a new delegate counts none. (No
  // Attach: mingw-w64's ComPtr adds a reference there, unlike the SDK's.)
  static Microsoft::WRL::ComPtr<Interface> Make(Body body) {
    return Microsoft::WRL::ComPtr<Interface>(new Delegate(std::move(body)));
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    if (iid != IID_IUnknown && iid != InterfaceId) {
      *object = nullptr;
      return E_NOINTERFACE;
    }
    AddRef();
    *object = static_cast<Interface*>(this);
    return S_OK;
  }

  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }

  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
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

  std::atomic<ULONG> references_{0};
  Body body_;
};

}  // namespace qrl::webview2
