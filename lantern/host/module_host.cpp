#include "lantern/host/module_host.h"

#include <algorithm>
#include <cstring>

#include "lantern/host/host_services.h"

namespace qrl {

namespace {

// A module announces at most this many rows: the code is a signed 16-bit
// value, and a count beyond it cannot be addressed.
constexpr HostWord MaxRows = 0x7FFF;

const char* ArgTypeName(unsigned type) {
  switch (type) {
    case ArgInteger:
      return "an integer";
    case ArgText:
      return "a text";
    case ArgWideText:
      return "a wide text";
    default:
      return "an argument of an unknown type";
  }
}

bool Fits(const Argument& argument, unsigned type) {
  switch (type) {
    case ArgInteger:
      return std::holds_alternative<std::int32_t>(argument);
    case ArgText:
      return std::holds_alternative<std::string>(argument);
    case ArgWideText:
      return std::holds_alternative<std::u16string>(argument);
    default:
      return false;
  }
}

// The argument records of one call and the texts they point at; the texts
// live here until the call returns.
class ArgumentRecords {
 public:
  explicit ArgumentRecords(std::span<const Argument> args) : records_(args.size()) {
    // Room for every text up front, so that no text moves once pointed at.
    narrow_.reserve(args.size());
    wide_.reserve(args.size());
    for (std::size_t i = 0; i < args.size(); ++i) fill(records_[i], args[i]);
  }
  HostValue* data() { return records_.empty() ? nullptr : records_.data(); }
  HostWord count() const { return static_cast<HostWord>(records_.size()); }

 private:
  void fill(HostValue& record, const Argument& argument) {
    std::memset(&record, 0, sizeof record);
    if (const auto* number = std::get_if<std::int32_t>(&argument)) {
      record.type = ValueInteger;
      record.intValue = *number;
    } else if (const auto* bytes = std::get_if<std::string>(&argument)) {
      record.type = ValueText;
      record.text = narrow_.emplace_back(*bytes).c_str();
    } else {
      record.type = ValueWideText;
      record.text = wide_.emplace_back(std::get<std::u16string>(argument)).c_str();
    }
  }

  std::vector<HostValue> records_;
  std::vector<std::string> narrow_;
  std::vector<std::u16string> wide_;
};

}  // namespace

std::string VocabularyRow::allowedCounts() const {
  const unsigned low = requiredArgs();
  const unsigned high = maxArgs();
  if (low == high) return std::to_string(low) + (low == 1 ? " argument" : " arguments");
  return std::to_string(low) + " to " + std::to_string(high) + " arguments";
}

unsigned VocabularyRow::argType(unsigned position) const {
  if (position >= 16) return ArgInteger;
  return static_cast<unsigned>((argTypes >> (4 * position)) & 0xFu);
}

std::unique_ptr<ModuleHost> ModuleHost::Load(const std::string& path) {
  void* library = OpenLibrary(path);
  ModuleExports exports;
  exports.query = reinterpret_cast<QORExtenderQueryFn>(LibrarySymbol(library, "QORExtenderQuery"));
  exports.dispatch = reinterpret_cast<QORExtender2Fn>(LibrarySymbol(library, "QORExtender2"));
  if (exports.query == nullptr || exports.dispatch == nullptr) {
    const std::string missing = exports.query == nullptr ? "QORExtenderQuery" : "QORExtender2";
    CloseLibrary(library);
    throw ModuleLoadError(path + " is no extender module: it does not export " + missing);
  }
  try {
    auto host = std::make_unique<ModuleHost>(exports);
    host->library_ = library;
    return host;
  } catch (...) {
    CloseLibrary(library);
    throw;
  }
}

ModuleHost::ModuleHost(ModuleExports exports) : exports_(exports) {
  if (exports_.query == nullptr || exports_.dispatch == nullptr) {
    throw ModuleLoadError("a module needs both exports");
  }
  Services::Install(*this);
  try {
    learnVocabulary();
  } catch (...) {
    Services::Uninstall(*this);
    throw;
  }
}

ModuleHost::~ModuleHost() {
  Services::Uninstall(*this);
  CloseLibrary(library_);
}

void ModuleHost::learnVocabulary() {
  HostValue unused{};
  const HostWord count = runDispatch(-1, nullptr, 0, &unused).returned;
  if (count < 0 || count > MaxRows) {
    throw ModuleLoadError("the module announced " + std::to_string(count) + " rows");
  }
  vocabulary_.reserve(static_cast<std::size_t>(count));
  for (HostWord index = 0; index < count; ++index) {
    CommandInfo info{};
    const HostWord answered = runDispatch(-2, &info, index, &unused).returned;
    if (answered != 1) {
      throw ModuleLoadError("the module gave no description of row " + std::to_string(index));
    }
    VocabularyRow row;
    row.index = info.index;
    row.kind = info.kind;
    row.name.assign(info.name, strnlen(info.name, CommandNameRoom));
    row.nameLength = info.nameLength;
    row.spec = info.spec;
    row.argTypes = info.argTypes;
    if (row.index != index) noteFault("row " + std::to_string(index) + " describes itself as row " +
                                      std::to_string(row.index));
    if (row.nameLength != row.name.size()) {
      noteFault("row " + std::to_string(index) + " gives a name length that is not its name's");
    }
    vocabulary_.push_back(std::move(row));
  }
}

const VocabularyRow* ModuleHost::findRow(std::string_view name) const {
  auto found = std::find_if(vocabulary_.begin(), vocabulary_.end(),
                            [&](const VocabularyRow& row) { return row.name == name; });
  return found == vocabulary_.end() ? nullptr : &*found;
}

void ModuleHost::CheckArguments(const VocabularyRow& row, std::span<const Argument> args) {
  if (!row.isFunction()) throw CallRefused(row.name + " is not a function");
  if (args.size() < row.requiredArgs() || args.size() > row.maxArgs()) {
    throw CallRefused(row.name + " takes " + row.allowedCounts() + ", got " +
                      std::to_string(args.size()));
  }
  for (unsigned position = 0; position < args.size(); ++position) {
    const unsigned type = row.argType(position);
    if (!Fits(args[position], type)) {
      throw CallRefused(row.name + ": argument " + std::to_string(position + 1) + " must be " +
                        ArgTypeName(type));
    }
  }
}

CallOutcome ModuleHost::call(std::string_view name, std::span<const Argument> args) {
  const VocabularyRow* row = findRow(name);
  if (row == nullptr) throw CallRefused("the module has no function " + std::string(name));
  return call(*row, args);
}

CallOutcome ModuleHost::call(std::string_view name, std::initializer_list<Argument> args) {
  return call(name, std::span<const Argument>(args.begin(), args.size()));
}

CallOutcome ModuleHost::call(const VocabularyRow& row, std::span<const Argument> args) {
  CheckArguments(row, args);
  ArgumentRecords records(args);
  HostValue result{};
  CallOutcome outcome = runDispatch(row.index, records.data(), records.count(), &result);
  if (outcome.deliveries == 0) noteFault(row.name + " returned without delivering a result");
  // The host is done with every array and map once the outermost call has
  // its result decoded; a nested call must leave the outer call's alone.
  if (activeCalls_.empty()) containers_.releaseAll();
  return outcome;
}

ModuleHost::VersionInfo ModuleHost::versionInfo() {
  // The Query code that asks for the version, and the room that hosts give
  // the description: a path's worth.
  constexpr HostWord VersionQuery = 1;
  char description[260] = {};
  VersionInfo info;
  info.number = query(VersionQuery, description, static_cast<HostWord>(sizeof description));
  description[sizeof description - 1] = '\0';
  info.description = description;
  return info;
}

HostWord ModuleHost::query(HostWord code, void* buffer, HostWord size) {
  return exports_.query(code, buffer, size);
}

CallOutcome ModuleHost::dispatch(HostWord code, void* args, HostWord argCount,
                                 HostValue* result) {
  return runDispatch(code, args, argCount, result);
}

CallOutcome ModuleHost::runDispatch(HostWord code, void* args, HostWord argCount,
                                    HostValue* result) {
  ActiveCall active;
  active.token = nextCallToken_++;
  active.result = result;
  activeCalls_.push_back(&active);
  struct Leave {
    std::vector<ActiveCall*>& calls;
    ~Leave() { calls.pop_back(); }
  } leave{activeCalls_};
  // The pass-on words are handed through untouched and read by no one.
  active.outcome.returned = exports_.dispatch(0, 0, active.token, code, &ResultCallback,
                                              &services_, 0, args, argCount, result);
  return std::move(active.outcome);
}

Value ModuleHost::decode(const HostValue& record) const {
  return containers_.decode(record, nullptr);
}

void ModuleHost::releaseContainers() { containers_.releaseAll(); }

std::size_t ModuleHost::liveContainers() const { return containers_.size(); }

std::size_t ModuleHost::countServiceCalls(std::string_view service) const {
  return static_cast<std::size_t>(
      std::count_if(serviceLog_.begin(), serviceLog_.end(),
                    [&](const ServiceCall& call) { return call.service == service; }));
}

void ModuleHost::noteFault(std::string text) { contractFaults_.push_back(std::move(text)); }

void ModuleHost::checkRecordSize(const char* service, HostWord size) {
  if (size != HostValueSize) {
    noteFault(std::string(service) + " with a record size of " + std::to_string(size));
  }
}

void ModuleHost::checkFlags(const char* service, HostWord flags) {
  if (flags != ServiceFlags) {
    noteFault(std::string(service) + " with a flags word of " + std::to_string(flags));
  }
}

Value ModuleHost::decodeChecked(const char* what, const HostValue& record) {
  std::string fault;
  Value value = containers_.decode(record, &fault);
  if (!fault.empty()) noteFault(std::string(what) + ": " + fault);
  return value;
}

void ModuleHost::log(ServiceCall call) {
  if (logging_) serviceLog_.push_back(std::move(call));
}

}  // namespace qrl
