// Host arrays and maps when the host's services fail or the host is too old
// for maps: what is reported, and what the script still receives.
#include "tests/host/module_fixture.h"

namespace qrl::testing {
namespace {

constexpr const char* Items =
    "<ul><li class=\"a b c d\">1</li><li>2</li><li>3</li><li>4</li></ul>"
    "<p w=\"1\" x=\"2\" y=\"3\">t</p>";

Value PartlyFilled(std::vector<Value> filled, std::size_t length) {
  Value array = Array();
  array.elements = std::move(filled);
  array.elements.resize(length);
  return array;
}

struct FailureCase {
  ServiceFaults faults;
  const char* command;
  std::int32_t handle;  // -2 stands for the first li, -3 for the p
  std::vector<Argument> extra;
  Value expected;  // for arrays of handles only the filled length counts
  const char* error;  // none when null
  std::uintptr_t hostVersion = FirstHostVersionWithMaps;
};

class Failures : public ModuleTest, public ::testing::WithParamInterface<FailureCase> {};

TEST_P(Failures, AreReportedOnceAndTheResultStillArrives) {
  const FailureCase& c = GetParam();
  Load(Items);
  const std::int32_t item = FirstByTag("li");
  const std::int32_t paragraph = FirstByTag("p");
  host.setFaults(c.faults);
  host.setHostVersion(c.hostVersion);
  const CallOutcome outcome = CallOnHandle(
      host, c.command, c.handle == -2 ? item : c.handle == -3 ? paragraph : c.handle, c.extra);
  EXPECT_EQ(outcome.errors, c.error ? std::vector<std::string>{c.error}
                                     : std::vector<std::string>{}) << c.command;
  Value result = outcome.result;
  if (result.kind == Value::Kind::Array)
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
        FailureCase{{.arrayServices = 7}, "wvgetelementsbytagname", 0, {S("li")}, Value{},
                    "DllArrayServices 7"},
        FailureCase{ElementFails(2, -2), "wvgetelementsbytagname", 0, {S("li")},
                    PartlyFilled({Zero, Zero}, 4), "DllArrHandler -2"},
        FailureCase{ElementFails(0, 9), "wvgetchildren", -2, {}, PartlyFilled({}, 1),
                    "DllArrHandler 9"},
        FailureCase{ElementFails(1, -2), "wvgetclasses", -2, {},
                    PartlyFilled({Value::Text("a")}, 4), "DllArrHandler -2"},
        FailureCase{{.arrayServices = -1}, "wvgetclasses", -2, {}, Value{},
                    "DllArrayServices -1"},
        FailureCase{{.arrayServices = 3}, "wvgetelementsbytagname", -1, {S("li")}, Value{},
                    "DllArrayServices 3"},
        FailureCase{{.arrayServices = 4}, "wvgetlinksbyhref", 0, {S("*")}, Value{},
                    "DllArrayServices 4"},
        FailureCase{{.mapCreate = 5}, "wvgetattributes", -3, {}, Value{}, "DllMapServices 5"},
        FailureCase{{.mapStore = ServiceFaults::AtIndex{1, -3}}, "wvgetattributes", -3, {},
                    TextMap({{"w", "1"}}), "DllMapServices -3"},
        FailureCase{{.mapCreate = 6}, "wvgetattributes", -1, {}, Value{},
                    "DllMapServices 6"},
        FailureCase{{}, "wvgetattributes", -3, {}, Value{}, nullptr, Old},
        FailureCase{{}, "wvgetattributes", -1, {}, Value{}, nullptr, Old},
        FailureCase{{}, "wvgetclasses", -2, {}, TextArray({"a", "b", "c", "d"}), nullptr, Old}));

TEST_F(ModuleTest, ArraysCostOneServiceCallPerElement) {
  Load(Items);
  host.clearServiceLog();
  ASSERT_EQ(Call("wvgetelementsbytagname", {0, S("li")}).elements.size(), 4u);
  EXPECT_EQ(host.countServiceCalls("DllArrayServices"), 1u);
  EXPECT_EQ(host.countServiceCalls("DllArrHandler"), 4u);
  const auto& made = host.serviceLog().front();
  ASSERT_EQ(made.words.size(), 8u);
  EXPECT_EQ(made.words[1], 4);  // the element count, then four zeros
  for (std::size_t i = 1; i < host.serviceLog().size(); ++i)
    EXPECT_EQ(host.serviceLog()[i].words[0], static_cast<HostWord>(i - 1));

  host.clearServiceLog();
  Call("wvgetattributes", {FirstByTag("p")});
  EXPECT_EQ(host.countServiceCalls("DllMapServices"), 4u);  // made, then three stores
}

}  // namespace
}  // namespace qrl::testing
