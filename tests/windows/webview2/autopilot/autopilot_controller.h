// The controller of the autopilot control: it owns the one view, and keeps
// what places it (bounds, visibility, zoom, parent) without drawing anything.
#pragma once

#include <windows.h>
#include <wrl/client.h>

#include "browser/webview2/com_object.h"
#include "browser/webview2/webview2_interfaces.h"
#include "tests/windows/webview2/autopilot/autopilot_view.h"
#include "tests/windows/webview2/autopilot/com_methods.h"

namespace qrl::autopilot {

class AutopilotController final
    : public webview2::ComObject<webview2::ICoreWebView2Controller,
                                 webview2::IID_ICoreWebView2Controller> {
 public:
  explicit AutopilotController(HWND parent) : parent_(parent) {}

  QRL_AUTOPILOT_PROPERTY(IsVisible, BOOL, visible_)
  QRL_AUTOPILOT_PROPERTY(Bounds, RECT, bounds_)
  QRL_AUTOPILOT_PROPERTY(ZoomFactor, double, zoomFactor_)
  QRL_AUTOPILOT_NO_EVENT(ZoomFactorChanged, IUnknown)
  HRESULT STDMETHODCALLTYPE SetBoundsAndZoomFactor(RECT bounds, double zoomFactor) override {
    bounds_ = bounds;
    zoomFactor_ = zoomFactor;
    return S_OK;
  }
  QRL_AUTOPILOT_UNSUPPORTED(MoveFocus, webview2::COREWEBVIEW2_MOVE_FOCUS_REASON)
  QRL_AUTOPILOT_NO_EVENT(MoveFocusRequested, IUnknown)
  QRL_AUTOPILOT_NO_EVENT(GotFocus, IUnknown)
  QRL_AUTOPILOT_NO_EVENT(LostFocus, IUnknown)
  QRL_AUTOPILOT_NO_EVENT(AcceleratorKeyPressed, IUnknown)
  QRL_AUTOPILOT_PROPERTY(ParentWindow, HWND, parent_)
  HRESULT STDMETHODCALLTYPE NotifyParentWindowPositionChanged() override { return S_OK; }
  // Nothing is drawn, so there is nothing to take down; the view lives on
  // for as long as someone holds it.
  HRESULT STDMETHODCALLTYPE Close() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE get_CoreWebView2(webview2::ICoreWebView2** coreWebView2) override {
    if (!coreWebView2) return E_POINTER;
    *coreWebView2 = view_.Get();
    (*coreWebView2)->AddRef();
    return S_OK;
  }

 private:
  HWND parent_;
  BOOL visible_ = TRUE;
  RECT bounds_{};
  double zoomFactor_ = 1.0;
  Microsoft::WRL::ComPtr<AutopilotView> view_{new AutopilotView};
};

}  // namespace qrl::autopilot
