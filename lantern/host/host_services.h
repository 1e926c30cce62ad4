// The services that a ModuleHost serves to its module, as plain functions of
// the contract's signatures. Internal to the host library.
#pragma once

#include "lantern/host/module_host.h"

namespace qrl {

// A call that has reached the module and not yet come back.
struct ModuleHost::ActiveCall {
  HostWord token = 0;  // the hostContext of this Dispatch
  const HostValue* result = nullptr;
  CallOutcome outcome;
};

class ModuleHost::Services {
 public:
  static void Install(ModuleHost& host);
  static void Uninstall(ModuleHost& host);

  static HostWord QRL_HOSTCALL NamedValue(HostWord context, const char* name, HostValue* value,
                                          HostWord valueSize, HostWord flags);
  static HostWord QRL_HOSTCALL ArrayServices(HostWord context, HostValue* array,
                                             HostWord valueSize, std::int32_t* dims,
                                             HostWord dimsSize, HostWord flags);
  static HostWord QRL_HOSTCALL ArrHandler(HostWord context, HostValue* array, HostWord index,
                                          HostWord index1, HostWord index2, HostWord index3,
                                          HostWord index4, HostValue* value, HostWord valueSize,
                                          HostWord flags);
  static HostWord QRL_HOSTCALL ReportError(HostWord context, const char* text);
  static HostWord QRL_HOSTCALL MapServices(HostWord context, HostValue* map, HostWord mapSize,
                                           HostWord zero1, HostWord zero2, HostValue* key,
                                           HostWord keySize, HostValue* value,
                                           HostWord valueSize, HostWord operation);
};

}  // namespace qrl
