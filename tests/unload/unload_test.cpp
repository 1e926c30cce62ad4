// A host may unload its extenders whenever it likes. These cycles load the
// module, use it and let it go a hundred times in one process: with documents
// only, and with a live browser that is at every stage of a load when the
// module goes (being made, navigating, capturing, done). Whatever the browser
// does afterwards must find the module's code still there, and the cycles
// must not make the process grow.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "lantern/host/module_host.h"
#include "tests/unload/cycle_platform.h"

namespace qrl::testing {
namespace {

constexpr int Cycles = 100;
// Memory is compared from this cycle on, when caches have found their size.
constexpr int SettledCycle = 25;

Value Call(ModuleHost& host, std::string_view name, std::initializer_list<Argument> args) {
  const CallOutcome outcome = host.call(name, args);
  EXPECT_EQ(outcome.deliveries, 1) << name;
  EXPECT_TRUE(outcome.errors.empty()) << name;
  return outcome.result;
}

// What every cycle asks of a fresh load: a document, a query, its answer.
void UseDocument(ModuleHost& host, int cycle) {
  const std::string id = "c" + std::to_string(cycle);
  Call(host, "wvparse", {std::string("<ul><li id='" + id + "'>cycle</li><li>x</li></ul>")});
  const Value item = Call(host, "wvgetelementbyid", {0, id});
  ASSERT_EQ(item.kind, Value::Kind::Integer);
  EXPECT_EQ(Call(host, "wvgetinnertext", {item.integer}), Value::Text("cycle"));
  EXPECT_EQ(Call(host, "wvgetelementsbytagname", {0, std::string("li")}).elements.size(), 2u);
}

class UnloadCycles : public ::testing::Test {
 protected:
  // Loads, uses with `use`, unloads, drains; memory must stay flat.
  template <typename Use>
  void RunCycles(Use use) {
    std::size_t settled = 0;
    for (int cycle = 0; cycle < Cycles && !HasFailure(); ++cycle) {
      SCOPED_TRACE("cycle " + std::to_string(cycle));
      std::unique_ptr<ModuleHost> host = ModuleHost::Load(QRL_MODULE_PATH);
      UseDocument(*host, cycle);
      use(*host, cycle);
      host.reset();
      platform.Drain();
      if (cycle == SettledCycle) settled = platform.ResidentBytes();
    }
    if (settled == 0) return;
    const long long growth = static_cast<long long>(platform.ResidentBytes()) -
                             static_cast<long long>(settled);
    EXPECT_LT(growth, growthAllowed) << "bytes gained after cycle " << SettledCycle;
  }

  CyclePlatform& platform = ThisPlatform();
  long long growthAllowed = 4 << 20;
};

TEST_F(UnloadCycles, WithDocumentsOnly) {
  RunCycles([](ModuleHost&, int) {});
}

TEST_F(UnloadCycles, WithABrowserAtEveryStageOfALoad) {
  if (!platform.HasBrowser()) GTEST_SKIP() << "no browser in this build or no display";
  // A browser engine keeps caches of its own that fill over the first loads.
  growthAllowed = 24 << 20;
  const std::int32_t window = platform.MakeWindow();
  RunCycles([&](ModuleHost& host, int cycle) {
    const int stage = cycle % (CyclePlatform::FinishedStage + 1);
    // Every fourth cycle makes a new browser, whose chain is still under way
    // when the module goes; the others load a page in the browser that an
    // earlier load of the module made.
    if (stage == 0) Call(host, "wvcreate", {window, std::u16string(QRL_START_PAGE), window});
    platform.ClearText(window);
    Call(host, "wvnavigatestr", {std::u16string(u"<p id='late'>loaded</p>")});
    platform.Advance(window, stage);
    if (stage != CyclePlatform::FinishedStage) return;
    // The start page of a new browser, or a load that ours cut short, may
    // complete first; ours comes after them.
    Value late = Value::Integer(-1);
    for (int load = 0; load < 4 && late == Value::Integer(-1); ++load) {
      ASSERT_EQ(platform.WindowText(window), "NavComplete");
      late = Call(host, "wvgetelementbyid", {0, std::string("late")});
      platform.ClearText(window);
      if (late == Value::Integer(-1)) platform.Advance(window, CyclePlatform::FinishedStage);
    }
    EXPECT_EQ(Call(host, "wvgetinnertext", {late.integer}), Value::Text("loaded"));
  });
}

}  // namespace
}  // namespace qrl::testing
