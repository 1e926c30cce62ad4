// The cost of a call through the module's real exports, driven by the
// reference host library the way a host drives it: a cheap command, and a
// search whose result has many handles (which must stay linear).
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "lantern/module_host.h"

namespace qrl {
namespace {

constexpr HostWord RowGetTagName = 31;
constexpr HostWord RowGetElementsByClass = 5;

ModuleHost& Host() {
  static const std::unique_ptr<ModuleHost> host = [] {
    auto loaded = ModuleHost::Load(QRL_MODULE_PATH);
    loaded->setServiceLogging(false);
    return loaded;
  }();
  return *host;
}

void LoadDocument(const std::string& markup) {
  Host().call("wvparse", {markup});
}

HostValue IntegerArgument(std::int32_t value) {
  HostValue argument{};
  argument.type = ValueInteger;
  argument.intValue = value;
  return argument;
}

HostValue TextArgument(const char* text) {
  HostValue argument{};
  argument.type = ValueText;
  argument.text = text;
  return argument;
}

void GetTagName(benchmark::State& state) {
  LoadDocument("<p>a<b>x</b></p>");
  const Value found = Host().call("wvgetelementsbytagname", {0, std::string("b")}).result;
  HostValue args[1] = {IntegerArgument(found.elements.at(0).integer)};
  HostValue result{};
  for (auto _ : state) {
    const CallOutcome outcome = Host().dispatch(RowGetTagName, args, 1, &result);
    benchmark::DoNotOptimize(outcome.returned);
  }
  state.SetItemsProcessed(state.iterations());
}

// Each round issues one handle per element and builds one array of them;
// the table is cut back afterwards so that every round starts alike.
void ByClass(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  std::string markup = "<div>";
  markup.reserve(count * 20);
  for (std::size_t i = 0; i < count; ++i) markup += "<i class=\"k\">x</i>";
  markup += "</div>";
  LoadDocument(markup);
  HostValue args[2] = {IntegerArgument(0), TextArgument("k")};
  HostValue result{};
  for (auto _ : state) {
    const CallOutcome outcome = Host().dispatch(RowGetElementsByClass, args, 2, &result);
    if (outcome.result.elements.size() != count) state.SkipWithError("wrong number of handles");
    Host().call("wvclear", {});
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(GetTagName)->Name("Dispatch/GetTagName");
BENCHMARK(ByClass)->Name("Dispatch/ByClass10k")->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(ByClass)->Name("Dispatch/ByClass100k")->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace qrl
