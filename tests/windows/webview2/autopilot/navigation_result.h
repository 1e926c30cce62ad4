// The arguments of NavigationCompleted: whether the page loaded, the web
// error status when it did not, and the navigation's id. The module passes
// them along unread, but the control always gives them, as the runtime
// does, so that a module that starts reading them finds them filled in.
//
// The interface is none of those the module declares: the three getters
// from slot 3 and the IID below are the runtime's.
#pragma once

#include <windows.h>

#include <cstdint>

#include "browser/webview2/com_object.h"

namespace qrl::autopilot {

struct ICoreWebView2NavigationCompletedEventArgs : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE get_IsSuccess(BOOL* isSuccess) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_WebErrorStatus(std::int32_t* webErrorStatus) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_NavigationId(UINT64* navigationId) = 0;
};

inline constexpr IID IID_ICoreWebView2NavigationCompletedEventArgs = {
    0x30D68B7D, 0x20D9, 0x4752, {0xA9, 0xCA, 0xEC, 0x84, 0x48, 0xFB, 0xB5, 0xC1}};

// The runtime's values of the statuses that the control gives.
namespace WebErrorStatus {
inline constexpr std::int32_t Unknown = 0;  // also the status of a page that loaded
inline constexpr std::int32_t ConnectionAborted = 9;
inline constexpr std::int32_t CannotConnect = 12;
inline constexpr std::int32_t OperationCanceled = 14;
}  // namespace WebErrorStatus

class NavigationResult final
    : public webview2::ComObject<ICoreWebView2NavigationCompletedEventArgs,
                                 IID_ICoreWebView2NavigationCompletedEventArgs> {
 public:
  NavigationResult(bool success, std::int32_t status, UINT64 id)
      : success_(success), status_(status), id_(id) {}

  HRESULT STDMETHODCALLTYPE get_IsSuccess(BOOL* isSuccess) override {
    if (!isSuccess) return E_POINTER;
    *isSuccess = success_ ? TRUE : FALSE;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_WebErrorStatus(std::int32_t* webErrorStatus) override {
    if (!webErrorStatus) return E_POINTER;
    *webErrorStatus = status_;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE get_NavigationId(UINT64* navigationId) override {
    if (!navigationId) return E_POINTER;
    *navigationId = id_;
    return S_OK;
  }

 private:
  bool success_;
  std::int32_t status_;
  UINT64 id_;
};

}  // namespace qrl::autopilot
