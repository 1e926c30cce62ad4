#include "tests/host/module_fixture.h"

#include <unistd.h>

#include <atomic>
#include <filesystem>

namespace qrl::testing {

ModuleHost& SharedHost() {
  static const std::unique_ptr<ModuleHost> host = ModuleHost::Load(QRL_MODULE_PATH);
  return *host;
}

std::unique_ptr<ModuleHost> FreshHost() {
  static std::atomic<int> copies{0};
  const auto copy = std::filesystem::temp_directory_path() /
                    ("qrlantern-fresh-" + std::to_string(getpid()) + "-" + std::to_string(copies++) + ".so");
  std::filesystem::copy_file(QRL_MODULE_PATH, copy, std::filesystem::copy_options::overwrite_existing);
  auto host = ModuleHost::Load(copy.string());
  // Windows keeps a loaded DLL's file; that copy stays in the temp folder.
  std::error_code inUse;
  std::filesystem::remove(copy, inUse);
  return host;
}

namespace {

CallOutcome CallKeepingContract(ModuleHost& host, std::string_view command, std::span<const Argument> args) {
  host.clearContractFaults();
  CallOutcome outcome = host.call(command, args);
  EXPECT_EQ(outcome.deliveries, 1) << command;
  EXPECT_EQ(host.contractFaults(), std::vector<std::string>{}) << command;
  return outcome;
}

}  // namespace

CallOutcome CallOnHandle(ModuleHost& host, std::string_view command, std::int32_t handle,
                         const std::vector<Argument>& extra) {
  SCOPED_TRACE(handle);
  std::vector<Argument> args{handle};
  args.insert(args.end(), extra.begin(), extra.end());
  return CallKeepingContract(host, command, args);
}

ModuleTest::~ModuleTest() {
  host.clearFaults();
  host.setHostVersion(FirstHostVersionWithMaps);
  host.setCallbackReturn(0);
}

Value ModuleTest::Call(std::string_view name, std::initializer_list<Argument> args) {
  const CallOutcome outcome = CallKeepingContract(host, name, {args.begin(), args.size()});
  EXPECT_EQ(outcome.errors, std::vector<std::string>{}) << name;
  return outcome.result;
}

void ModuleTest::Load(std::string_view markup) { ASSERT_EQ(Call("wvparse", {std::string(markup)}), Value::Integer(0)); }

std::int32_t ModuleTest::FirstByTag(std::string_view tag) {
  const Value found = Call("wvgetelementsbytagname", {0, std::string(tag)});
  if (found.elements.empty()) ADD_FAILURE() << "no element " << tag;
  return found.elements.empty() ? -1 : found.elements.front().integer;
}

// Issuing a handle is the only way to see the table's size from outside: an
// empty id matches the first node without an id, so this issues exactly one.
std::int32_t ModuleTest::NextHandle() { return Call("wvgetelementbyid", {0, std::string()}).integer; }

std::string ModuleTest::Names(const Value& result) {
  const auto name = [&](const Value& handle) {
    if (handle.kind != Value::Kind::Integer) return Describe(handle);
    return Call("wvgettagname", {handle.integer}).text + ":" + Call("wvgetinnertext", {handle.integer}).text;
  };
  if (result.kind == Value::Kind::Integer) return result.integer == -1 ? "-1" : "#" + name(result);
  if (result.kind != Value::Kind::Array) return Describe(result);
  std::string names;
  for (const auto& element : result.elements) names += (names.empty() ? "" : ",") + name(element);
  return "[" + names + "]";
}

}  // namespace qrl::testing
