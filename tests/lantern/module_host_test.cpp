// The host library against a small module of its own, so that every service
// path, failure and contract check is reached on purpose.
#include <gtest/gtest.h>

#include <climits>
#include <filesystem>
#include <fstream>

#include "lantern/module_host.h"
#include "tests/lantern/expected_values.h"

namespace qrl {
namespace {

using testing::Array;
using testing::Map;

class FakeModuleTest : public ::testing::Test {
 protected:
  static ModuleHost& Shared() {
    static const std::unique_ptr<ModuleHost> host = ModuleHost::Load(QRL_FAKE_MODULE_PATH);
    return *host;
  }

  FakeModuleTest() : host(Shared()) {
    host.clearFaults();
    host.clearServiceLog();
    host.clearContractFaults();
    host.setHostVersion(FirstHostVersionWithMaps);
    host.setCallbackReturn(0);
    host.setNamedValueHook(nullptr);
  }

  HostWord rowCalls() { return host.query(9, nullptr, 0); }

  ModuleHost& host;
};

// Counts, types and constants of the rows show in the refusals below and in
// the listing that lantern prints.
TEST_F(FakeModuleTest, LearnsTheVocabularyAsAnnounced) {
  ASSERT_EQ(host.vocabulary().size(), 8u);
  EXPECT_EQ(host.findRow("Echo"), nullptr) << "names are looked up as announced";
  EXPECT_EQ(host.findRow("report")->allowedCounts(), "1 argument");
  EXPECT_EQ(host.findRow("@answer")->index, 7);
  EXPECT_TRUE(host.contractFaults().empty());
}

TEST_F(FakeModuleTest, RefusesCallsThatBreakTheRowBeforeTheModuleSeesThem) {
  struct Case {
    const char* name;
    std::vector<Argument> args;
    const char* message;
  };
  const Case cases[] = {
      {"echo", {}, "echo takes 1 to 3 arguments, got 0"},
      {"echo", {1, std::string("a"), u"b", 4}, "echo takes 1 to 3 arguments, got 4"},
      {"echo", {std::string("1")}, "echo: argument 1 must be an integer"},
      {"echo", {1, 2}, "echo: argument 2 must be a text"},
      {"echo", {1, std::string("a"), std::string("b")}, "echo: argument 3 must be a wide text"},
      {"silent", {0}, "silent takes 0 arguments, got 1"},
      {"@answer", {}, "@answer is not a function"},
      {"nosuch", {}, "the module has no function nosuch"},
  };
  for (const Case& c : cases) {
    const HostWord before = rowCalls();
    try {
      host.call(c.name, std::span<const Argument>(c.args));
      ADD_FAILURE() << c.message << ": not refused";
    } catch (const CallRefused& refused) {
      EXPECT_STREQ(refused.what(), c.message);
    }
    EXPECT_EQ(rowCalls(), before) << c.message;
  }
}

TEST_F(FakeModuleTest, DecodesEachKindOfResult) {
  struct Case {
    std::vector<Argument> args;
    Value expected;
  };
  const Case cases[] = {
      {{5}, Value::Integer(5)},
      {{INT_MIN}, Value::Integer(INT_MIN)},
      {{1, std::string()}, Value::Text("")},
      {{1, std::string("h\xC3\xA9 \xFF")}, Value::Text("h\xC3\xA9 \xFF")},
      {{1, std::string(), std::u16string()}, Value::WideText(u"")},
      {{1, std::string(), std::u16string(u"w\u00E9 \U0001F600")},
       Value::WideText(u"w\u00E9 \U0001F600")},
  };
  for (const Case& c : cases) {
    const CallOutcome outcome = host.call("echo", std::span<const Argument>(c.args));
    EXPECT_EQ(outcome.result, c.expected);
    EXPECT_EQ(outcome.deliveries, 1);
    EXPECT_TRUE(outcome.errors.empty());
  }
  host.setCallbackReturn(99);
  EXPECT_EQ(host.call("echo", {3}).returned, 99);
  EXPECT_TRUE(host.contractFaults().empty());
}

TEST_F(FakeModuleTest, ArraysHoldWhatWasStoredWithOneServiceCallPerElement) {
  EXPECT_EQ(host.call("makelist", {3}).result,
            Array({Value::Integer(0), Value::Integer(1), Value::Integer(2)}));
  EXPECT_EQ(host.countServiceCalls("DllArrayServices"), 1u);
  EXPECT_EQ(host.countServiceCalls("DllArrHandler"), 3u);
  const ServiceCall& made = host.serviceLog().front();
  EXPECT_EQ(made.words,
            (std::vector<HostWord>{HostValueSize, 3, 0, 0, 0, 0, ArrayDimsSize, ServiceFlags}));
  EXPECT_EQ(host.serviceLog().back().words,
            (std::vector<HostWord>{2, 0, 0, 0, 0, HostValueSize, ServiceFlags}));

  EXPECT_EQ(host.call("makelist", {0}).result, Array({}));
  // Texts are copied on store: the module's strings are gone by now.
  EXPECT_EQ(host.call("makelist", {2, std::string("x")}).result,
            Array({Value::Text("x0"), Value::Text("x1")}));
  EXPECT_EQ(host.liveContainers(), 0u) << "a call releases its containers";
  EXPECT_TRUE(host.contractFaults().empty());
}

TEST_F(FakeModuleTest, FailingServicesLeaveWhatWasMadeAndTheModulesReport) {
  struct Case {
    ServiceFaults faults;
    const char* name;
    Argument arg;
    Value expected;
    const char* report;
  };
  const Value zeroed;
  const Case cases[] = {
      {{.arrayServices = 7}, "makelist", 4, zeroed, "DllArrayServices 7"},
      {{.arrHandler = ServiceFaults::AtIndex{2, -2}}, "makelist", 4,
       Array({Value::Integer(0), Value::Integer(1), zeroed, zeroed}), "DllArrHandler -2"},
      {{.arrHandler = ServiceFaults::AtIndex{0, 3}}, "makelist", 4,
       Array({zeroed, zeroed, zeroed, zeroed}), "DllArrHandler 3"},
      {{.mapCreate = 5}, "makemap", std::string("a=1"), zeroed, "DllMapServices 5"},
      {{.mapStore = ServiceFaults::AtIndex{1, 9}}, "makemap", std::string("a=1;b=2;c=3"),
       Map({{Value::Text("a"), Value::Text("1")}}), "DllMapServices 9"},
  };
  for (const Case& c : cases) {
    host.setFaults(c.faults);
    const CallOutcome outcome = host.call(c.name, {c.arg});
    EXPECT_EQ(outcome.result, c.expected) << c.report;
    EXPECT_EQ(outcome.errors, std::vector<std::string>{c.report});
  }
  host.clearFaults();
  EXPECT_EQ(host.call("makelist", {1}).result, Array({Value::Integer(0)}));
}

TEST_F(FakeModuleTest, MapsKeepTheStoredOrderAndReplaceARepeatedKeyInPlace) {
  EXPECT_EQ(host.call("makemap", {std::string("b=1;a=2;b=3")}).result,
            Map({{Value::Text("b"), Value::Text("3")}, {Value::Text("a"), Value::Text("2")}}));
  host.clearServiceLog();
  EXPECT_EQ(host.call("makemap", {std::string()}).result, Map({}));
  EXPECT_EQ(host.countServiceCalls("DllMapServices"), 1u);
  EXPECT_EQ(host.serviceLog().front().words,
            (std::vector<HostWord>{HostValueSize, 0, 0, 0, 0, MapCreate}));
  EXPECT_TRUE(host.contractFaults().empty());
}

TEST_F(FakeModuleTest, MapServiceForAHostBelow1011IsAContractFault) {
  host.setHostVersion(1010);
  host.call("makemap", {std::string("a=1")});
  ASSERT_FALSE(host.contractFaults().empty());
  EXPECT_NE(host.contractFaults().front().find("version 1010"), std::string::npos);
}

TEST_F(FakeModuleTest, ReportsBelongToTheCallThatMadeThem) {
  const CallOutcome outcome = host.call("report", {std::string("it broke")});
  EXPECT_EQ(outcome.result, Value::Integer(0));
  EXPECT_EQ(outcome.errors, std::vector<std::string>{"it broke"});
  EXPECT_TRUE(host.call("echo", {1}).errors.empty());
}

TEST_F(FakeModuleTest, ANestedCallDuringANamedValueLeavesTheOuterArrayAlone) {
  std::vector<std::string> seen;
  Value nested;
  host.setNamedValueHook([&](const std::string& name, const Value& value) {
    seen.push_back(name + "=" + value.text);
    nested = host.call("makelist", {3}).result;
  });
  const CallOutcome outcome = host.call("setname", {std::string("Creation"), std::string("v")});
  EXPECT_EQ(seen, std::vector<std::string>{"Creation=v"});
  EXPECT_EQ(nested, Array({Value::Integer(0), Value::Integer(1), Value::Integer(2)}));
  EXPECT_EQ(outcome.result, Array({Value::Integer(1), Value::Integer(2)}));
  EXPECT_TRUE(host.contractFaults().empty()) << host.contractFaults().front();
  EXPECT_EQ(host.liveContainers(), 0u);
}

TEST_F(FakeModuleTest, MissingAndRepeatedDeliveriesAreContractFaults) {
  CallOutcome outcome = host.call("silent", {});
  EXPECT_EQ(outcome.deliveries, 0);
  EXPECT_EQ(host.contractFaults().size(), 1u);

  host.clearContractFaults();
  outcome = host.call("twice", {});
  EXPECT_EQ(outcome.deliveries, 2);
  EXPECT_EQ(outcome.result, Value::Integer(2));
  EXPECT_EQ(host.contractFaults().size(), 1u);

  host.clearContractFaults();
  HostValue record{};
  EXPECT_EQ(ModuleHost::ResultCallback(0, 12345, host.services(), &record), 0);
  EXPECT_EQ(host.contractFaults().size(), 1u) << "a delivery with no call running";
  HostServices stranger{};
  EXPECT_EQ(ModuleHost::ResultCallback(0, 1, &stranger, &record), ServiceRefused);
}

TEST_F(FakeModuleTest, RawDispatchKeepsItsContainersUntilReleased) {
  HostValue args[1] = {};
  args[0].intValue = 2;
  HostValue result{};
  const CallOutcome outcome = host.dispatch(1, args, 1, &result);
  EXPECT_EQ(outcome.deliveries, 1);
  EXPECT_EQ(host.decode(result), Array({Value::Integer(0), Value::Integer(1)}));
  EXPECT_EQ(host.liveContainers(), 1u);
  host.releaseContainers();
  EXPECT_EQ(host.decode(result).kind, Value::Kind::Other) << "a released array is gone";
}

TEST(ModuleLoading, NamesThePathAndTheReasonWhenAFileIsNoModule) {
  const auto notLibrary = std::filesystem::temp_directory_path() / "qrl-not-a-module.so";
  std::ofstream(notLibrary) << "plain text";
  const std::string paths[] = {"/nonexistent/qrlantern.so", notLibrary.string()};
  for (const std::string& path : paths) {
    try {
      ModuleHost::Load(path);
      ADD_FAILURE() << path << " loaded";
    } catch (const ModuleLoadError& error) {
      EXPECT_NE(std::string(error.what()).find(path), std::string::npos) << error.what();
    }
  }
  std::filesystem::remove(notLibrary);
}

}  // namespace
}  // namespace qrl
