// The handlers of one event of the autopilot control, each held until it is
// unsubscribed or the view goes.
#pragma once

#include <windows.h>
#include <wrl/client.h>

#include <cstdint>
#include <vector>

#include "browser/webview2/webview2_interfaces.h"

namespace qrl::autopilot {

template <typename Handler>
class EventList {
 public:
  HRESULT Add(Handler* handler, webview2::EventRegistrationToken* token) {
    if (!handler || !token) return E_INVALIDARG;
    token->value = ++lastToken_;
    entries_.push_back({token->value, Microsoft::WRL::ComPtr<Handler>(handler)});
    return S_OK;
  }

  HRESULT Remove(webview2::EventRegistrationToken token) {
    std::erase_if(entries_, [token](const Entry& entry) { return entry.token == token.value; });
    return S_OK;
  }

  // Calls every handler on a copy of the list: a handler may subscribe or
  // unsubscribe meanwhile, and one that goes stays alive for its own call.
  template <typename... Args>
  void Raise(Args... args) const {
    const std::vector<Entry> handlers = entries_;
    for (const Entry& entry : handlers) entry.handler->Invoke(args...);
  }

 private:
  struct Entry {
    std::int64_t token;
    Microsoft::WRL::ComPtr<Handler> handler;
  };
  std::vector<Entry> entries_;
  std::int64_t lastToken_ = 0;
};

}  // namespace qrl::autopilot

// An event that the module subscribes to, kept in `list` (an EventList).
#define QRL_AUTOPILOT_EVENT(event, Handler, list)                                          \
  HRESULT STDMETHODCALLTYPE add_##event(Handler* handler,                                  \
                                        ::qrl::webview2::EventRegistrationToken* token)    \
      override {                                                                           \
    return list.Add(handler, token);                                                       \
  }                                                                                        \
  HRESULT STDMETHODCALLTYPE remove_##event(::qrl::webview2::EventRegistrationToken token) \
      override {                                                                           \
    return list.Remove(token);                                                             \
  }
