// The host side of the extender contract, without any scripting language.
//
// A ModuleHost loads an extender module (or takes two export functions
// directly), learns its vocabulary, calls its rows and serves every host
// service that the module may call during a call: arrays and maps (owned
// here, in a handle table), named values, error reports and the result
// callback. The reference host and the C++ tests both drive modules through
// it.
//
// Besides serving, it watches the module: every service call can be logged,
// services can be told to fail, and anything the module does against the
// contract (a wrong context, size or flag word, a store outside an array, a
// second delivery, a delivery for a call that has ended) is written to
// contractFaults().
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "host/host_contract.h"
#include "lantern/host/call_value.h"
#include "lantern/host/host_containers.h"

namespace qrl {

// The two exports of a module.
struct ModuleExports {
  QORExtenderQueryFn query = nullptr;
  QORExtender2Fn dispatch = nullptr;
};

// Loading a module file failed; what() holds the path and the loader's text.
class ModuleLoadError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A call that this host refuses before it reaches the module (a wrong count
// or kind of argument, a constant row, an unknown name), as a host does from
// what the vocabulary declares. what() names the function.
class CallRefused : public std::invalid_argument {
 public:
  using std::invalid_argument::invalid_argument;
};

// One row of the vocabulary, as the module described it at code -2.
struct VocabularyRow {
  std::int32_t index = 0;
  std::int32_t kind = 0;
  std::string name;  // as announced: lower case, constants with their "@"
  std::uint16_t nameLength = 0;
  std::uint32_t spec = 0;
  std::uint64_t argTypes = 0;

  bool isFunction() const { return kind == KindFunction; }
  bool isConstant() const { return kind == KindConstant; }
  unsigned requiredArgs() const { return spec & 0xFFu; }
  unsigned optionalArgs() const { return (spec >> 8) & 0xFFu; }
  unsigned maxArgs() const { return requiredArgs() + optionalArgs(); }
  // "1 argument", "2 to 3 arguments", "0 arguments".
  std::string allowedCounts() const;
  // The type nibble of a position counted from 0.
  unsigned argType(unsigned position) const;
  std::int32_t constantValue() const { return static_cast<std::int32_t>(spec); }
};

// What a service answers when it refuses a request that breaks the contract
// (an unknown record, an index outside the array, a wrong context).
inline constexpr HostWord ServiceRefused = -1;

// One service call as the module made it. `words` holds the call's word
// arguments after the context, in order, with pointers left out:
//   DllArrayServices  valueSize, dims[0..4], dimsSize, flags
//   DllArrHandler     index, index1..index4, valueSize, flags
//   DllMapServices    mapSize, zero1, zero2, keySize, valueSize, operation
//   DllNamedValue     valueSize, flags
//   DllReportError    (none)
struct ServiceCall {
  std::string service;  // "DllArrayServices", "DllArrHandler", ...
  std::vector<HostWord> words;
  std::string text;  // the name of a named value, the text of a report
  Value key;         // the key of a map store
  Value value;       // the element, map value or named value stored
  HostWord status = 0;  // what the service answered
};

// Services told to fail: each answers the given status instead of doing its
// work. They stay in force until changed.
struct ServiceFaults {
  std::optional<HostWord> arrayServices = {};  // every DllArrayServices call
  struct AtIndex {
    HostWord index;
    HostWord status;
  };
  std::optional<AtIndex> arrHandler = {};  // DllArrHandler at this element index
  std::optional<HostWord> mapCreate = {};  // DllMapServices with operation 3
  std::optional<AtIndex> mapStore = {};  // the n-th store (from 0) into one map
};

// What one call came to.
struct CallOutcome {
  Value result;                     // the delivered result, decoded at delivery
  int deliveries = 0;               // how often the result callback came
  HostWord returned = 0;            // what Dispatch returned
  std::vector<std::string> errors;  // texts of DllReportError, in order
};

class ModuleHost {
 public:
  // Learns the vocabulary at once (Dispatch -1, then -2 per row).
  explicit ModuleHost(ModuleExports exports);
  ~ModuleHost();
  ModuleHost(const ModuleHost&) = delete;
  ModuleHost& operator=(const ModuleHost&) = delete;

  // Loads a module file and reaches it only through its two exports.
  // Throws ModuleLoadError with the loader's text when it cannot.
  static std::unique_ptr<ModuleHost> Load(const std::string& path);

  const std::vector<VocabularyRow>& vocabulary() const { return vocabulary_; }
  // The row of an announced name (lower case, constants with "@"), or null.
  const VocabularyRow* findRow(std::string_view name) const;

  // Calls a function row. The arguments must fit the row's counts and type
  // nibbles, else CallRefused is thrown and the module is not called.
  CallOutcome call(std::string_view name, std::span<const Argument> args);
  CallOutcome call(const VocabularyRow& row, std::span<const Argument> args);
  CallOutcome call(std::string_view name, std::initializer_list<Argument> args);
  // Checks a call as call() does; throws CallRefused with the reason.
  static void CheckArguments(const VocabularyRow& row, std::span<const Argument> args);

  // The module's version number and description, as Query with code 1 gives
  // them into a buffer of the usual room.
  struct VersionInfo {
    HostWord number = 0;
    std::string description;
  };
  VersionInfo versionInfo();

  // Raw access for tests of the boundary itself.
  HostWord query(HostWord code, void* buffer, HostWord size);
  // Dispatch with this host's context, callback and services and the caller's
  // code, argument words and result record, unchecked. The delivery lands in
  // the returned outcome as for call(); the arrays and maps made stay until
  // releaseContainers() or the end of the next call().
  CallOutcome dispatch(HostWord code, void* args, HostWord argCount, HostValue* result);
  HostServices* services() { return &services_; }
  static HostWord QRL_HOSTCALL ResultCallback(HostWord zero, HostWord hostContext,
                                              HostServices* services, HostValue* result);
  const ModuleExports& exports() const { return exports_; }

  // Decodes a record of this host, following its arrays and maps; a record
  // whose container has been released decodes as Other.
  Value decode(const HostValue& record) const;
  // Releases every array and map. A call releases them itself when the
  // outermost call ends, after its result was decoded.
  void releaseContainers();
  std::size_t liveContainers() const;

  void setHostVersion(std::uintptr_t version) { services_.hostVersion = version; }
  std::uintptr_t hostVersion() const { return services_.hostVersion; }
  // What the result callback returns (and so what Dispatch returns).
  void setCallbackReturn(HostWord word) { callbackReturn_ = word; }

  void setFaults(const ServiceFaults& faults) { faults_ = faults; }
  void clearFaults() { faults_ = {}; }

  // Logging is on from the start; a benchmark turns it off for speed.
  void setServiceLogging(bool on) { logging_ = on; }
  const std::vector<ServiceCall>& serviceLog() const { return serviceLog_; }
  std::size_t countServiceCalls(std::string_view service) const;
  void clearServiceLog() { serviceLog_.clear(); }

  const std::vector<std::string>& contractFaults() const { return contractFaults_; }
  void clearContractFaults() { contractFaults_.clear(); }

  // DllNamedValue(name, value) lands here; without a hook it is only logged.
  using NamedValueHook = std::function<void(const std::string& name, const Value& value)>;
  void setNamedValueHook(NamedValueHook hook) { namedValueHook_ = std::move(hook); }

 private:
  struct ActiveCall;
  class Services;
  friend class Services;

  // The system's loader (module_loader_<system>.cpp). OpenLibrary throws
  // ModuleLoadError with the loader's text when it cannot.
  static void* OpenLibrary(const std::string& path);
  static void* LibrarySymbol(void* library, const char* name);
  static void CloseLibrary(void* library);
  void learnVocabulary();
  CallOutcome runDispatch(HostWord code, void* args, HostWord argCount, HostValue* result);
  static ModuleHost* HostOfServices(const HostServices* services);
  void noteFault(std::string text);
  void checkRecordSize(const char* service, HostWord size);
  void checkFlags(const char* service, HostWord flags);
  Value decodeChecked(const char* what, const HostValue& record);
  void log(ServiceCall call);

  ModuleExports exports_;
  void* library_ = nullptr;  // the dlopen handle, when Load made this host
  HostServices services_{};
  std::vector<VocabularyRow> vocabulary_;
  HostContainers containers_;
  std::vector<ActiveCall*> activeCalls_;  // innermost last
  HostWord nextCallToken_ = 1;
  HostWord callbackReturn_ = 0;
  ServiceFaults faults_;
  bool logging_ = true;
  std::vector<ServiceCall> serviceLog_;
  std::vector<std::string> contractFaults_;
  NamedValueHook namedValueHook_;
};

}  // namespace qrl
