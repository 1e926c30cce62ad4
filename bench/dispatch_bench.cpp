// The cost of a call through the module's real exports, driven by the
// reference host library the way a host drives it: a cheap command, and a
// search whose result has many handles (which must stay linear); and the
// cheap command again with the trace going to a file.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "lantern/host/module_host.h"

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

// A module of its own, loaded from a copy of the file, traces into a file:
// the variable is read as a module loads, so the one above stays untraced.
// The trace file is unlinked at once; the module writes on into it until
// the process ends.
ModuleHost& TracedHost() {
  static const std::unique_ptr<ModuleHost> host = [] {
    const std::string stem = (std::filesystem::temp_directory_path() /
                              ("qrlantern-bench-" + std::to_string(getpid())))
                                 .string();
    std::filesystem::copy_file(QRL_MODULE_PATH, stem + ".so",
                               std::filesystem::copy_options::overwrite_existing);
    setenv("QRLANTERN_TRACE", (stem + ".trace").c_str(), 1);
    auto loaded = ModuleHost::Load(stem + ".so");
    unsetenv("QRLANTERN_TRACE");
    std::filesystem::remove(stem + ".so");
    std::filesystem::remove(stem + ".trace");
    loaded->setServiceLogging(false);
    return loaded;
  }();
  return *host;
}

void LoadDocument(ModuleHost& host, const std::string& markup) {
  host.call("wvparse", {markup});
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

void GetTagNameOn(benchmark::State& state, ModuleHost& host) {
  LoadDocument(host, "<p>a<b>x</b></p>");
  const Value found = host.call("wvgetelementsbytagname", {0, std::string("b")}).result;
  HostValue args[1] = {IntegerArgument(found.elements.at(0).integer)};
  HostValue result{};
  for (auto _ : state) {
    const CallOutcome outcome = host.dispatch(RowGetTagName, args, 1, &result);
    benchmark::DoNotOptimize(outcome.returned);
  }
  state.SetItemsProcessed(state.iterations());
}

void GetTagName(benchmark::State& state) { GetTagNameOn(state, Host()); }

// Each call writes its line (formatted, then one write to the file).
void GetTagNameTraced(benchmark::State& state) { GetTagNameOn(state, TracedHost()); }

// Each round issues one handle per element and builds one array of them;
// the table is cut back afterwards so that every round starts alike.
void ByClass(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  std::string markup = "<div>";
  markup.reserve(count * 20);
  for (std::size_t i = 0; i < count; ++i) markup += "<i class=\"k\">x</i>";
  markup += "</div>";
  LoadDocument(Host(), markup);
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
BENCHMARK(GetTagNameTraced)->Name("Dispatch/GetTagNameTraced");
BENCHMARK(ByClass)->Name("Dispatch/ByClass10k")->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(ByClass)->Name("Dispatch/ByClass100k")->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace qrl
