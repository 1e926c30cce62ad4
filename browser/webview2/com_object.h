// The IUnknown part of a COM object of ours that implements one interface:
// QueryInterface for IUnknown and that interface, and a reference count that
// deletes the object when it falls to zero. A new object counts no
// references; the first pointer that holds it adds one.
#pragma once

#include <windows.h>

#include <atomic>

namespace qrl::webview2 {

template <typename Interface, const IID& InterfaceId>
class ComObject : public Interface {
 public:
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

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

 protected:
  ComObject() = default;
  virtual ~ComObject() = default;

 private:
  std::atomic<ULONG> references_{0};
};

}  // namespace qrl::webview2
