#include "lantern/host/host_services.h"

#include <algorithm>
#include <string>

namespace qrl {

namespace {

// Every live host, so that a context word or a services pointer that the
// module hands back can be checked before it is trusted.
std::vector<ModuleHost*>& LiveHosts() {
  static std::vector<ModuleHost*> hosts;
  return hosts;
}

std::string Word(HostWord word) { return std::to_string(word); }

ServiceCall NewCall(const char* service, std::vector<HostWord> words) {
  ServiceCall call;
  call.service = service;
  call.words = std::move(words);
  return call;
}

}  // namespace

void ModuleHost::Services::Install(ModuleHost& host) {
  LiveHosts().push_back(&host);
  HostServices& block = host.services_;
  block.hostVersion = FirstHostVersionWithMaps;
  block.context = reinterpret_cast<HostWord>(&host);
  block.DllNamedValue = &NamedValue;
  block.DllArrHandler = &ArrHandler;
  block.DllArrayServices = &ArrayServices;
  block.DllReportError = &ReportError;
  block.DllMapServices = &MapServices;
}

void ModuleHost::Services::Uninstall(ModuleHost& host) {
  std::erase(LiveHosts(), &host);
}

namespace {

ModuleHost* HostOfContext(HostWord context) {
  for (ModuleHost* host : LiveHosts()) {
    if (reinterpret_cast<HostWord>(host) == context) return host;
  }
  return nullptr;
}

}  // namespace

ModuleHost* ModuleHost::HostOfServices(const HostServices* services) {
  for (ModuleHost* host : LiveHosts()) {
    if (&host->services_ == services) return host;
  }
  return nullptr;
}

HostWord QRL_HOSTCALL ModuleHost::Services::NamedValue(HostWord context, const char* name,
                                                       HostValue* value, HostWord valueSize,
                                                       HostWord flags) {
  ModuleHost* host = HostOfContext(context);
  if (host == nullptr) return ServiceRefused;
  ServiceCall call = NewCall("DllNamedValue", {valueSize, flags});
  host->checkRecordSize("DllNamedValue", valueSize);
  host->checkFlags("DllNamedValue", flags);
  if (name == nullptr || value == nullptr) {
    host->noteFault("DllNamedValue without a name or a value");
    call.status = ServiceRefused;
    host->log(std::move(call));
    return ServiceRefused;
  }
  call.text = name;
  call.value = host->decodeChecked("DllNamedValue", *value);
  if (host->namedValueHook_) host->namedValueHook_(call.text, call.value);
  host->log(std::move(call));
  return 0;
}

HostWord QRL_HOSTCALL ModuleHost::Services::ArrayServices(HostWord context, HostValue* array,
                                                          HostWord valueSize, std::int32_t* dims,
                                                          HostWord dimsSize, HostWord flags) {
  ModuleHost* host = HostOfContext(context);
  if (host == nullptr) return ServiceRefused;
  ServiceCall call = NewCall("DllArrayServices", {valueSize});
  if (dims != nullptr) call.words.insert(call.words.end(), dims, dims + 5);
  call.words.push_back(dimsSize);
  call.words.push_back(flags);
  host->checkRecordSize("DllArrayServices", valueSize);
  host->checkFlags("DllArrayServices", flags);
  if (dimsSize != ArrayDimsSize) {
    host->noteFault("DllArrayServices with a dims size of " + Word(dimsSize));
  }
  if (array == nullptr || dims == nullptr || dims[0] < 0) {
    host->noteFault("DllArrayServices without a record, without dims or with a negative count");
    call.status = ServiceRefused;
  } else if (dims[1] != 0 || dims[2] != 0 || dims[3] != 0 || dims[4] != 0) {
    host->noteFault("DllArrayServices asked for more than one dimension");
    call.status = ServiceRefused;
  } else if (host->faults_.arrayServices) {
    call.status = *host->faults_.arrayServices;
  } else {
    host->containers_.makeArray(*array, static_cast<std::size_t>(dims[0]));
  }
  const HostWord status = call.status;
  host->log(std::move(call));
  return status;
}

HostWord QRL_HOSTCALL ModuleHost::Services::ArrHandler(HostWord context, HostValue* array,
                                                       HostWord index, HostWord index1,
                                                       HostWord index2, HostWord index3,
                                                       HostWord index4, HostValue* value,
                                                       HostWord valueSize, HostWord flags) {
  ModuleHost* host = HostOfContext(context);
  if (host == nullptr) return ServiceRefused;
  ServiceCall call =
      NewCall("DllArrHandler", {index, index1, index2, index3, index4, valueSize, flags});
  host->checkRecordSize("DllArrHandler", valueSize);
  host->checkFlags("DllArrHandler", flags);
  if (index1 != 0 || index2 != 0 || index3 != 0 || index4 != 0) {
    host->noteFault("DllArrHandler with an index of more than one dimension");
  }
  HostContainer* container = array ? host->containers_.find(*array) : nullptr;
  if (container == nullptr || container->isMap || value == nullptr) {
    host->noteFault("DllArrHandler on a record that is no array of this host, or without a value");
    call.status = ServiceRefused;
  } else if (index < 0 || static_cast<std::size_t>(index) >= container->elements.size()) {
    host->noteFault("DllArrHandler at index " + Word(index) + " of an array of " +
                    std::to_string(container->elements.size()));
    call.status = ServiceRefused;
  } else if (host->faults_.arrHandler && host->faults_.arrHandler->index == index) {
    call.status = host->faults_.arrHandler->status;
  } else {
    Value element = host->decodeChecked("DllArrHandler", *value);
    if (host->logging_) call.value = element;
    container->elements[static_cast<std::size_t>(index)] = std::move(element);
  }
  const HostWord status = call.status;
  host->log(std::move(call));
  return status;
}

HostWord QRL_HOSTCALL ModuleHost::Services::ReportError(HostWord context, const char* text) {
  ModuleHost* host = HostOfContext(context);
  if (host == nullptr) return ServiceRefused;
  ServiceCall call = NewCall("DllReportError", {});
  if (text == nullptr) {
    host->noteFault("DllReportError without a text");
  } else {
    call.text = text;
  }
  if (host->activeCalls_.empty()) {
    host->noteFault("DllReportError outside a call: " + call.text);
  } else {
    host->activeCalls_.back()->outcome.errors.push_back(call.text);
  }
  host->log(std::move(call));
  return 0;
}

HostWord QRL_HOSTCALL ModuleHost::Services::MapServices(HostWord context, HostValue* map,
                                                        HostWord mapSize, HostWord zero1,
                                                        HostWord zero2, HostValue* key,
                                                        HostWord keySize, HostValue* value,
                                                        HostWord valueSize, HostWord operation) {
  ModuleHost* host = HostOfContext(context);
  if (host == nullptr) return ServiceRefused;
  ServiceCall call =
      NewCall("DllMapServices", {mapSize, zero1, zero2, keySize, valueSize, operation});
  host->checkRecordSize("DllMapServices", mapSize);
  if (zero1 != 0 || zero2 != 0) host->noteFault("DllMapServices with non-zero reserved words");
  if (host->services_.hostVersion < FirstHostVersionWithMaps) {
    host->noteFault("DllMapServices called by a host of version " +
                    std::to_string(host->services_.hostVersion));
  }
  if (map == nullptr) {
    host->noteFault("DllMapServices without a map record");
    call.status = ServiceRefused;
  } else if (operation == MapCreate) {
    if (key != nullptr || value != nullptr || keySize != 0 || valueSize != 0) {
      host->noteFault("DllMapServices create with a key or a value");
    }
    if (host->faults_.mapCreate) {
      call.status = *host->faults_.mapCreate;
    } else {
      host->containers_.makeMap(*map);
    }
  } else if (operation == MapStore) {
    host->checkRecordSize("DllMapServices key", keySize);
    host->checkRecordSize("DllMapServices value", valueSize);
    HostContainer* container = host->containers_.find(*map);
    if (container == nullptr || !container->isMap || key == nullptr || value == nullptr) {
      host->noteFault("DllMapServices store into a record that is no map of this host, "
                      "or without a key or a value");
      call.status = ServiceRefused;
    } else {
      const HostWord attempt = container->storeAttempts++;
      if (host->faults_.mapStore && host->faults_.mapStore->index == attempt) {
        call.status = host->faults_.mapStore->status;
      } else {
        Value storedKey = host->decodeChecked("DllMapServices key", *key);
        Value storedValue = host->decodeChecked("DllMapServices value", *value);
        if (host->logging_) {
          call.key = storedKey;
          call.value = storedValue;
        }
        HostContainers::StorePair(*container, std::move(storedKey), std::move(storedValue));
      }
    }
  } else {
    host->noteFault("DllMapServices with operation " + Word(operation));
    call.status = ServiceRefused;
  }
  const HostWord status = call.status;
  host->log(std::move(call));
  return status;
}

HostWord QRL_HOSTCALL ModuleHost::ResultCallback(HostWord zero, HostWord hostContext,
                                                 HostServices* services, HostValue* result) {
  ModuleHost* host = HostOfServices(services);
  if (host == nullptr) return ServiceRefused;
  if (zero != 0) host->noteFault("result callback with a first word of " + Word(zero));
  auto call = std::find_if(host->activeCalls_.begin(), host->activeCalls_.end(),
                           [&](const ActiveCall* active) { return active->token == hostContext; });
  if (call == host->activeCalls_.end()) {
    host->noteFault("result delivered for a call that is not running");
    return host->callbackReturn_;
  }
  ActiveCall& active = **call;
  if (result != active.result) host->noteFault("result delivered in a record not of its call");
  if (++active.outcome.deliveries > 1) host->noteFault("result delivered more than once");
  if (result != nullptr) active.outcome.result = host->decodeChecked("result", *result);
  return host->callbackReturn_;
}

}  // namespace qrl
