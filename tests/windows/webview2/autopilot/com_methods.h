// Method bodies that the autopilot control's objects share, as macros: a
// property that is only kept, and the methods that the module never calls.
#pragma once

#include <windows.h>

#include "browser/webview2/webview2_interfaces.h"

// A property that the control keeps and hands back, with no effect: nothing
// is drawn.
#define QRL_AUTOPILOT_PROPERTY(property, Type, member)                 \
  HRESULT STDMETHODCALLTYPE get_##property(Type* value) override {     \
    if (!value) return E_POINTER;                                      \
    *value = member;                                                   \
    return S_OK;                                                       \
  }                                                                    \
  HRESULT STDMETHODCALLTYPE put_##property(Type value) override {      \
    member = value;                                                    \
    return S_OK;                                                       \
  }

// A method that the module never calls. E_NOTIMPL rather than a quiet S_OK,
// so that a module that starts calling it fails where it calls.
#define QRL_AUTOPILOT_UNSUPPORTED(method, ...) \
  HRESULT STDMETHODCALLTYPE method(__VA_ARGS__) override { return E_NOTIMPL; }

// An event that the module never subscribes to.
#define QRL_AUTOPILOT_NO_EVENT(event, Handler)                                           \
  QRL_AUTOPILOT_UNSUPPORTED(add_##event, Handler*, ::qrl::webview2::EventRegistrationToken*) \
  QRL_AUTOPILOT_UNSUPPORTED(remove_##event, ::qrl::webview2::EventRegistrationToken)
