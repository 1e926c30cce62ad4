// Host arrays and maps when the host's services fail or the host is too old
// for maps: what is reported, and what the script still receives.
#include "tests/host/module_fixture.h"

namespace qrl::testing {
namespace {

constexpr const char* Items =
    "<ul><li class=\"a b c d\">1</li><li>2</li><li>3</li><li>4</li></ul>"
    "<p w=\"1\" x=\"2\" y=\"3\">t</p>";

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

constexpr std::uintptr_t Old = FirstHostVersionWithMaps - 1;

INSTANTIATE_TEST_SUITE_P(
    Table, Failures,
    ::testing::Values(
        FailureCase{{.arrayServices = 7}, "wvgetelementsbytagname", "root", {S("li")}, Value{}, "DllArrayServices 7"},
        // The array goes out as far as it was filled, at its full length.
        FailureCase{{.arrHandler = ServiceFaults::AtIndex{2, -2}}, "wvgetelementsbytagname", "root", {S("li")},
                    Array({Value::Integer(0), Value::Integer(0), Value{}, Value{}}), "DllArrHandler -2"},
        FailureCase{{.arrayServices = 3}, "wvgetelementsbytagname", "none", {S("li")}, Value{}, "DllArrayServices 3"},
        FailureCase{{.mapCreate = 5}, "wvgetattributes", "p", {}, Value{}, "DllMapServices 5"},
        FailureCase{{.mapStore = ServiceFaults::AtIndex{1, -3}}, "wvgetattributes", "p", {}, TextMap({{"w", "1"}}),
                    "DllMapServices -3"},
        FailureCase{{}, "wvgetattributes", "p", {}, Value{}, nullptr, Old},
        FailureCase{{}, "wvgetclasses", "li", {}, TextArray({"a", "b", "c", "d"}), nullptr, Old}));

}  // namespace
}  // namespace qrl::testing
