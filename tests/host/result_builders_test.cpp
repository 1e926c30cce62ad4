// Host arrays and maps when the host's services fail or the host is too old
// for maps: what is reported, and what the script still receives.
#include "tests/host/module_fixture.h"

namespace qrl::testing {
namespace {

constexpr const char* Items =
    "<ul><li class=\"a b c d\">1</li><li>2</li><li>3</li><li>4</li></ul>"
    "<p w=\"1\" x=\"2\" y=\"3\">t</p>";

Value PartlyFilled(std::vector<Value> filled, std::size_t length) {
  Value array = Array(std::move(filled));
  array.elements.resize(length);
  return array;
}

struct FailureCase {
  ServiceFaults faults;
  const char* command;
  const char* start;  // the first element of a tag; "root" is handle 0, "none" -1
  std::vector<Argument> extra;
  Value expected;     // for arrays of handles only the filled length counts
  const char* error;  // none when null
  std::uintptr_t hostVersion = FirstHostVersionWithMaps;
};

class Failures : public ModuleTest, public ::testing::WithParamInterface<FailureCase> {};

TEST_P(Failures, AreReportedOnceAndTheResultStillArrives) {
  const FailureCase& c = GetParam();
  Load(Items);
  const std::string_view start = c.start;
  const std::int32_t handle = start == "root" ? 0 : start == "none" ? -1 : FirstByTag(start);
  host.setFaults(c.faults);
  host.setHostVersion(c.hostVersion);
  const CallOutcome outcome = CallOnHandle(host, c.command, handle, c.extra);
  EXPECT_EQ(outcome.errors, c.error ? std::vector<std::string>{c.error} : std::vector<std::string>{}) << c.command;
  Value result = outcome.result;
  for (auto& element : result.elements)
    if (element.kind == Value::Kind::Integer) element.integer = 0;
  EXPECT_EQ(result, c.expected) << c.command;
}

ServiceFaults ElementFails(HostWord index, HostWord status) {
  return {.arrHandler = ServiceFaults::AtIndex{index, status}};
}
const Value Zero = Value::Integer(0);
constexpr std::uintptr_t Old = FirstHostVersionWithMaps - 1;

INSTANTIATE_TEST_SUITE_P(
    Table, Failures,
    ::testing::Values(
        FailureCase{{.arrayServices = 7}, "wvgetelementsbytagname", "root", {S("li")}, Value{}, "DllArrayServices 7"},
        FailureCase{ElementFails(2, -2), "wvgetelementsbytagname", "root", {S("li")}, PartlyFilled({Zero, Zero}, 4),
                    "DllArrHandler -2"},
        FailureCase{ElementFails(0, 9), "wvgetchildren", "li", {}, PartlyFilled({}, 1), "DllArrHandler 9"},
        FailureCase{ElementFails(1, -2), "wvgetclasses", "li", {}, PartlyFilled({Value::Text("a")}, 4),
                    "DllArrHandler -2"},
        FailureCase{{.arrayServices = -1}, "wvgetclasses", "li", {}, Value{}, "DllArrayServices -1"},
        FailureCase{{.arrayServices = 3}, "wvgetelementsbytagname", "none", {S("li")}, Value{}, "DllArrayServices 3"},
        FailureCase{{.arrayServices = 4}, "wvgetlinksbyhref", "root", {S("*")}, Value{}, "DllArrayServices 4"},
        FailureCase{{.mapCreate = 5}, "wvgetattributes", "p", {}, Value{}, "DllMapServices 5"},
        FailureCase{{.mapStore = ServiceFaults::AtIndex{1, -3}}, "wvgetattributes", "p", {}, TextMap({{"w", "1"}}),
                    "DllMapServices -3"},
        FailureCase{{.mapCreate = 6}, "wvgetattributes", "none", {}, Value{}, "DllMapServices 6"},
        FailureCase{{}, "wvgetattributes", "p", {}, Value{}, nullptr, Old},
        FailureCase{{}, "wvgetattributes", "none", {}, Value{}, nullptr, Old},
        FailureCase{{}, "wvgetclasses", "li", {}, TextArray({"a", "b", "c", "d"}), nullptr, Old}));

}  // namespace
}  // namespace qrl::testing
