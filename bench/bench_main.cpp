// The benchmark executable: the engine's benchmarks on every corpus page,
// and every benchmark that another file of this target defines statically.
#include <benchmark/benchmark.h>

#include "bench/corpus_pages.h"
#include "bench/html_bench.h"

int main(int argc, char** argv) {
  static const std::vector<qrl::bench::CorpusPage> pages = qrl::bench::LoadCorpusPages();
  qrl::bench::RegisterHtmlBenchmarks(pages);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
