// The two operations that the exports forward to. Everything the host can ask
// of the module goes through these, so all behaviour lives behind one object.
#pragma once

#include "host/host_contract.h"

namespace qrl {

class CExtenderBase {
 public:
  virtual HostWord Query(HostWord code, void* buffer, HostWord size) = 0;
  virtual HostWord Dispatch(HostWord passOn1, HostWord passOn2, HostWord hostContext,
                            HostWord code, ResultCallbackFn resultCallback,
                            HostServices* services, HostWord passOn3, void* args,
                            HostWord argCount, HostValue* result) = 0;

 protected:
  ~CExtenderBase() = default;
};

// The one object behind the exports; set up before the host can call either.
extern CExtenderBase* const ExtenderPointer;

// The host passes codes in a whole word but only the low half counts.
inline std::int16_t LowHalf(HostWord code) {
  return static_cast<std::int16_t>(static_cast<std::uint16_t>(code & 0xFFFF));
}

}  // namespace qrl
