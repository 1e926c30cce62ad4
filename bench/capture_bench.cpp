// The page capture on real pages: the answer of the page's markup script
// (the corpus's *.outerhtml.json, as UTF-16) goes through unescaping, the
// quotes, UTF-8, the parse, the replacement of the document and the reset of
// the handle table. Registered as Capture/<page>.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "browser/page_capture.h"
#include "commands/unicode_text.h"
#include "commands/element_table.h"

namespace qrl::bench {
namespace {

std::filesystem::path CorpusFolder() {
  const char* fromEnvironment = std::getenv("QRL_CORPUS");
  return fromEnvironment && *fromEnvironment ? fromEnvironment : QRL_CORPUS_DIR;
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void CaptureAnswer(benchmark::State& state, const std::shared_ptr<std::u16string>& answer) {
  for (auto _ : state) {
    CapturePage(CaptureCause::Navigation, ResultOk, *answer);
    benchmark::DoNotOptimize(RootDocument.get());
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(answer->size() * sizeof(char16_t)));
  RootDocument.reset();
  ResetElementTable();
}

bool RegisterCaptureBenchmarks() {
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(CorpusFolder(), error)) {
    const std::string file = entry.path().filename().string();
    const std::string suffix = ".outerhtml.json";
    if (!file.ends_with(suffix)) continue;
    const std::string page = file.substr(0, file.size() - suffix.size());
    const auto answer = std::make_shared<std::u16string>(Utf8ToUtf16(ReadFile(entry.path())));
    benchmark::RegisterBenchmark(("Capture/" + page).c_str(), CaptureAnswer, answer)
        ->Unit(benchmark::kMillisecond);
  }
  return true;
}

const bool registered = RegisterCaptureBenchmarks();

}  // namespace
}  // namespace qrl::bench
