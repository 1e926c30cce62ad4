// The module's two entry points as linked into this program rather than
// loaded from the shared library, for drivers that put their own browser
// component or platform in place before the first call.
#pragma once

#include "host/host_contract.h"
#include "lantern/host/module_host.h"

extern "C" {
qrl::HostWord QRL_HOSTCALL QORExtenderQuery(qrl::HostWord code, void* buffer, qrl::HostWord size);
qrl::HostWord QRL_HOSTCALL QORExtender2(qrl::HostWord passOn1, qrl::HostWord passOn2,
                                        qrl::HostWord hostContext, qrl::HostWord code,
                                        qrl::ResultCallbackFn resultCallback,
                                        qrl::HostServices* services, qrl::HostWord passOn3,
                                        void* args, qrl::HostWord argCount,
                                        qrl::HostValue* result);
}

namespace qrl {

inline ModuleExports LinkedExports() { return {&QORExtenderQuery, &QORExtender2}; }

}  // namespace qrl
