// The module's only two entry points and the object behind them. Each export
// forwards its words untouched; nothing thrown inside may reach the host.
#include "host/cdom.h"

// How an export is marked is the build's choice (QRL_EXPORT): the ELF
// module marks both visible, the Windows DLL lists them in its .def file.

namespace qrl {

CDOM ExtenderObject;
CExtenderBase* const ExtenderPointer = &ExtenderObject;

}  // namespace qrl

using qrl::HostServices;
using qrl::HostValue;
using qrl::HostWord;
using qrl::ResultCallbackFn;

extern "C" {

QRL_EXPORT HostWord QRL_HOSTCALL QORExtenderQuery(HostWord code, void* buffer, HostWord size) {
  try {
    return qrl::ExtenderPointer->Query(code, buffer, size);
  } catch (...) {
    return 0;
  }
}

QRL_EXPORT HostWord QRL_HOSTCALL QORExtender2(HostWord passOn1, HostWord passOn2,
                                              HostWord hostContext, HostWord code,
                                              ResultCallbackFn resultCallback,
                                              HostServices* services, HostWord passOn3, void* args,
                                              HostWord argCount, HostValue* result) {
  try {
    return qrl::ExtenderPointer->Dispatch(passOn1, passOn2, hostContext, code, resultCallback,
                                          services, passOn3, args, argCount, result);
  } catch (...) {
    return 0;
  }
}
}
