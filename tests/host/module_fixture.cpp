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
                    ("qrlantern-fresh-" + std::to_string(getpid()) + "-" +
                     std::to_string(copies++) + ".so");
  std::filesystem::copy_file(QRL_MODULE_PATH, copy,
                             std::filesystem::copy_options::overwrite_existing);
  auto host = ModuleHost::Load(copy.string());
  std::filesystem::remove(copy);
  return host;
}

CallOutcome CallOnHandle(ModuleHost& host, std::string_view command, std::int32_t handle,
                         const std::vector<Argument>& extra) {
  std::vector<Argument> args{handle};
  args.insert(args.end(), extra.begin(), extra.end());
  host.clearContractFaults();
  CallOutcome outcome = host.call(command, std::span<const Argument>(args));
  EXPECT_EQ(outcome.deliveries, 1) << command << " " << handle;
  EXPECT_EQ(host.contractFaults(), std::vector<std::string>{}) << command << " " << handle;
  return outcome;
}

ModuleTest::~ModuleTest() {
  host.clearFaults();
  host.setHostVersion(FirstHostVersionWithMaps);
  host.setCallbackReturn(0);
}

Value ModuleTest::Call(std::string_view name, std::initializer_list<Argument> args) {
  host.clearContractFaults();
  const CallOutcome outcome = host.call(name, args);
  EXPECT_EQ(outcome.deliveries, 1) << name;
  EXPECT_EQ(host.contractFaults(), std::vector<std::string>{}) << name;
  EXPECT_EQ(outcome.errors, std::vector<std::string>{}) << name;
  return outcome.result;
}

void ModuleTest::Load(std::string_view markup) {
  ASSERT_EQ(Call("wvparse", {std::string(markup)}), Value::Integer(0));
}

std::int32_t ModuleTest::FirstByTag(std::string_view tag) {
  const Value found = Call("wvgetelementsbytagname", {0, std::string(tag)});
  if (found.elements.empty()) ADD_FAILURE() << "no element " << tag;
  return found.elements.empty() ? -1 : found.elements.front().integer;
}

// Issuing a handle is the only way to see the table's size from outside: an
// empty id matches the first node without an id, so this issues exactly one.
std::int32_t ModuleTest::NextHandle() {
  return Call("wvgetelementbyid", {0, std::string()}).integer;
}

std::string ModuleTest::Name(std::int32_t handle) {
  const Value tag = Call("wvgettagname", {handle});
  const Value text = Call("wvgetinnertext", {handle});
  return tag.text + ":" + text.text;
}

std::string ModuleTest::Names(const Value& result) {
  if (result.kind == Value::Kind::Integer)
    return result.integer == -1 ? "-1" : "#" + Name(result.integer);
  if (result.kind != Value::Kind::Array) return Describe(result);
  std::string names = "[";
  for (const auto& element : result.elements) {
    if (names.size() > 1) names += ",";
    names += element.kind == Value::Kind::Integer ? Name(element.integer) : Describe(element);
  }
  return names + "]";
}

}  // namespace qrl::testing
