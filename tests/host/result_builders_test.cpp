// Host arrays and maps when the host's services fail or the host is too old
// for maps: what is reported, and what the script still receives.
#include "tests/host/module_fixture.h"

namespace qrl::testing {
namespace {

constexpr const char* Items =
    "<ul><li class=\"a b c d\">1</li><li>2</li><li>3</li><li>4</li></ul>"
    "<p w=\"1\" x=\"2\" y=\"3\">t</p>";

Value Zeroed() { return Value{}; }

Value PartlyFilled(std::vector<Value> filled, std::size_t length) {
  Value array = Array();
  array.elements = std::move(filled);
  array.elements.resize(length);
  return array;
}

struct FailureCase {
  ServiceFaults faults;
  std::uintptr_t hostVersion;
  const char* command;
  std::int32_t handle;  // -2 stands for the first li, -3 for the p
  std::vector<Argument> extra;
  // The expected result; for arrays of handles only the filled length counts.
  Value expected;
  std::vector<std::string> errors;
};

class Failures : public ModuleTest, public ::testing::WithParamInterface<FailureCase> {};

TEST_P(Failures, AreReportedOnceAndTheResultStillArrives) {
  const FailureCase& c = GetParam();
  Load(Items);
  const std::int32_t item = FirstByTag("li");
  const std::int32_t paragraph = FirstByTag("p");
  const std::int32_t handle = c.handle == -2 ? item : c.handle == -3 ? paragraph : c.handle;
  host.setFaults(c.faults);
  host.setHostVersion(c.hostVersion);
  const CallOutcome outcome = CallOnHandle(host, c.command, handle, c.extra);
  EXPECT_EQ(outcome.errors, c.errors) << c.command;
  Value result = outcome.result;
  if (c.expected.kind == Value::Kind::Array && result.kind == Value::Kind::Array)
    for (auto& element : result.elements)
      if (element.kind == Value::Kind::Integer) element.integer = 0;
  EXPECT_EQ(result, c.expected) << c.command;
}

ServiceFaults ArrayFails(HostWord status) { return {.arrayServices = status}; }
ServiceFaults ElementFails(HostWord index, HostWord status) {
  return {.arrHandler = ServiceFaults::AtIndex{index, status}};
}
ServiceFaults MapCreateFails(HostWord status) { return {.mapCreate = status}; }
ServiceFaults MapStoreFails(HostWord pair, HostWord status) {
  return {.mapStore = ServiceFaults::AtIndex{pair, status}};
}

constexpr std::uintptr_t Current = FirstHostVersionWithMaps;
constexpr std::uintptr_t Old = FirstHostVersionWithMaps - 1;

// Hosts too old for maps are the script tests' business.
INSTANTIATE_TEST_SUITE_P(
    Table, Failures,
    ::testing::Values(
        FailureCase{ArrayFails(7), Current, "wvgetelementsbytagname", 0, {S("li")}, Zeroed(),
                    {"DllArrayServices 7"}},
        FailureCase{ElementFails(2, -2), Current, "wvgetelementsbytagname", 0, {S("li")},
                    PartlyFilled({Value::Integer(0), Value::Integer(0)}, 4),
                    {"DllArrHandler -2"}},
        FailureCase{ElementFails(0, 9), Current, "wvgetchildren", -2, {}, PartlyFilled({}, 1),
                    {"DllArrHandler 9"}},
        FailureCase{ElementFails(1, -2), Current, "wvgetclasses", -2, {},
                    PartlyFilled({Value::Text("a")}, 4), {"DllArrHandler -2"}},
        FailureCase{ArrayFails(-1), Current, "wvgetclasses", -2, {}, Zeroed(),
                    {"DllArrayServices -1"}},
        FailureCase{ArrayFails(3), Current, "wvgetelementsbytagname", -1, {S("li")}, Zeroed(),
                    {"DllArrayServices 3"}},
        FailureCase{ArrayFails(4), Current, "wvgetlinksbyhref", 0, {S("*")}, Zeroed(),
                    {"DllArrayServices 4"}},
        FailureCase{MapCreateFails(5), Current, "wvgetattributes", -3, {}, Zeroed(),
                    {"DllMapServices 5"}},
        FailureCase{MapStoreFails(1, -3), Current, "wvgetattributes", -3, {},
                    TextMap({{"w", "1"}}), {"DllMapServices -3"}},
        FailureCase{MapCreateFails(6), Current, "wvgetattributes", -1, {}, Zeroed(),
                    {"DllMapServices 6"}},
        FailureCase{{}, Old, "wvgetattributes", -3, {}, Zeroed(), {}}));

TEST_F(ModuleTest, ArraysCostOneServiceCallPerElement) {
  Load(Items);
  host.clearServiceLog();
  const Value items = Call("wvgetelementsbytagname", {0, S("li")});
  ASSERT_EQ(items.elements.size(), 4u);
  EXPECT_EQ(host.countServiceCalls("DllArrayServices"), 1u);
  EXPECT_EQ(host.countServiceCalls("DllArrHandler"), 4u);
  const auto& made = host.serviceLog().front();
  ASSERT_EQ(made.words.size(), 8u);
  EXPECT_EQ(made.words[1], 4);  // the element count, then four zeros
  for (std::size_t i = 0; i < host.serviceLog().size() - 1; ++i)
    EXPECT_EQ(host.serviceLog()[i + 1].words[0], static_cast<HostWord>(i));

  host.clearServiceLog();
  EXPECT_EQ(Call("wvgetattributes", {FirstByTag("p")}),
            TextMap({{"w", "1"}, {"x", "2"}, {"y", "3"}}));
  EXPECT_EQ(host.countServiceCalls("DllMapServices"), 4u);

  host.clearServiceLog();
  EXPECT_EQ(Call("wvgetelementsbytagname", {0, S("none")}), Array());
  EXPECT_EQ(host.countServiceCalls("DllArrayServices"), 1u);
  EXPECT_EQ(host.countServiceCalls("DllArrHandler"), 0u);
}

}  // namespace
}  // namespace qrl::testing
