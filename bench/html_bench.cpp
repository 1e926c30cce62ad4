#include "bench/html_bench.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string>

#include "html/class_names.h"
#include "html/html_parser.h"
#include "html/tree_walk.h"

namespace qrl::bench {

namespace {

// A parsed page with query arguments that a script would plausibly use on
// it: its most frequent tag, its most frequent class, and its last id.
struct ParsedPage {
  const CorpusPage* page;
  HtmlParser parser;
  DocumentRef document;
  std::string frequentTag;
  std::string frequentClass;
  std::string lastId;
};

std::string MostFrequent(const std::map<std::string, int, std::less<>>& counts) {
  std::string best;
  int bestCount = 0;
  for (const auto& [key, count] : counts) {
    if (count > bestCount) {
      best = key;
      bestCount = count;
    }
  }
  return best;
}

std::shared_ptr<ParsedPage> ParseForQueries(const CorpusPage& page) {
  auto parsed = std::make_shared<ParsedPage>();
  parsed->page = &page;
  parsed->document = parsed->parser.Parse(page.bytes.c_str(), static_cast<std::uint32_t>(page.bytes.size()));
  std::map<std::string, int, std::less<>> tags;
  std::map<std::string, int, std::less<>> classes;
  WalkDescendants(*parsed->document->root, [&](const HtmlElement& node) {
    if (node.name() != "plain" && !node.name().empty()) ++tags[std::string(node.name())];
    const AttributeMap attributes = node.attributes();
    const auto classList = attributes.find("class");
    if (classList != attributes.end()) {
      for (std::string_view name : SplitClassNameViews(classList->second)) ++classes[std::string(name)];
    }
    const auto id = attributes.find("id");
    if (id != attributes.end()) parsed->lastId = std::string(id->second);
    return true;
  });
  parsed->frequentTag = MostFrequent(tags);
  parsed->frequentClass = MostFrequent(classes);
  return parsed;
}

void CountPageBytes(benchmark::State& state, const CorpusPage& page) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(page.bytes.size()));
}

DocumentRef ParsePage(HtmlParser& parser, const CorpusPage& page) {
  return parser.Parse(page.bytes.c_str(), static_cast<std::uint32_t>(page.bytes.size()));
}

// The parse alone: the previous tree is held by the caller, as a captured
// page is held by the current document, and is released untimed afterwards.
void Parse(benchmark::State& state, const CorpusPage& page) {
  HtmlParser parser;
  DocumentRef previous = ParsePage(parser, page);
  for (auto _ : state) {
    DocumentRef document = ParsePage(parser, page);
    benchmark::DoNotOptimize(document.get());
    state.PauseTiming();
    previous = std::move(document);
    state.ResumeTiming();
  }
  CountPageBytes(state, page);
}

// Destroying a whole tree, the other half of replacing a document. It takes
// next to nothing next to the untimed parse before it, so the round count is
// fixed rather than grown until the timed part fills the minimum time.
void Release(benchmark::State& state, const CorpusPage& page) {
  for (auto _ : state) {
    state.PauseTiming();
    DocumentRef document;
    {
      HtmlParser parser;
      document = ParsePage(parser, page);
    }
    state.ResumeTiming();
    document.reset();
  }
  CountPageBytes(state, page);
}

// The pages parsed in turn, as a capture sequence meets them: each new
// document replaces the one before once it is made, so the memory of pages
// of other sizes is what a parse finds free.
void ParseSequence(benchmark::State& state, const std::vector<CorpusPage>& pages) {
  std::int64_t bytes = 0;
  for (const CorpusPage& page : pages) bytes += static_cast<std::int64_t>(page.bytes.size());
  DocumentRef current;
  for (auto _ : state) {
    for (const CorpusPage& page : pages) {
      HtmlParser parser;
      current = ParsePage(parser, page);
      benchmark::DoNotOptimize(current.get());
    }
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * bytes);
}

// Parse and release of a whole page together, as a page capture pays for
// them: the tree of each parse goes before the next parse.
void ParseRelease(benchmark::State& state, const CorpusPage& page) {
  for (auto _ : state) {
    HtmlParser parser;
    DocumentRef document = ParsePage(parser, page);
    benchmark::DoNotOptimize(document.get());
  }
  CountPageBytes(state, page);
}

void Text(benchmark::State& state, const ParsedPage& parsed) {
  for (auto _ : state) {
    std::string text = parsed.document->root->GetText();
    benchmark::DoNotOptimize(text.data());
  }
  CountPageBytes(state, *parsed.page);
}

void Markup(benchmark::State& state, const ParsedPage& parsed) {
  for (auto _ : state) {
    std::string markup;
    parsed.document->root->AppendMarkup(markup);
    benchmark::DoNotOptimize(markup.data());
  }
  CountPageBytes(state, *parsed.page);
}

void ByTag(benchmark::State& state, const ParsedPage& parsed) {
  state.SetLabel("tag " + parsed.frequentTag);
  for (auto _ : state) {
    ElementList found = parsed.document->root->GetElementsByTagName(parsed.frequentTag);
    benchmark::DoNotOptimize(found.data());
  }
  CountPageBytes(state, *parsed.page);
}

void ByClass(benchmark::State& state, const ParsedPage& parsed) {
  state.SetLabel("class " + parsed.frequentClass);
  for (auto _ : state) {
    ElementList found = parsed.document->root->GetElementsByClassName(parsed.frequentClass);
    benchmark::DoNotOptimize(found.data());
  }
  CountPageBytes(state, *parsed.page);
}

void ById(benchmark::State& state, const ParsedPage& parsed) {
  state.SetLabel("id " + parsed.lastId);
  for (auto _ : state) {
    ElementRef found = parsed.document->root->GetElementById(parsed.lastId);
    benchmark::DoNotOptimize(found.get());
  }
  CountPageBytes(state, *parsed.page);
}

}  // namespace

void RegisterHtmlBenchmarks(const std::vector<CorpusPage>& pages) {
  using QueryBenchmark = void (*)(benchmark::State&, const ParsedPage&);
  const std::pair<const char*, QueryBenchmark> queries[] = {
      {"Text", Text}, {"Markup", Markup}, {"ByTag", ByTag}, {"ByClass", ByClass}, {"ById", ById}};
  for (const CorpusPage& page : pages) {
    benchmark::RegisterBenchmark(("Parse/" + page.name).c_str(),
                                 [&page](benchmark::State& state) { Parse(state, page); })
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("Release/" + page.name).c_str(),
                                 [&page](benchmark::State& state) { Release(state, page); })
        ->Iterations(20)
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark(("ParseRelease/" + page.name).c_str(),
                                 [&page](benchmark::State& state) { ParseRelease(state, page); })
        ->Unit(benchmark::kMicrosecond);
    // Parsed on first use, so that a filter that skips the queries also
    // skips their setup.
    auto parsed = std::make_shared<std::shared_ptr<ParsedPage>>();
    for (const auto& [name, query] : queries) {
      benchmark::RegisterBenchmark((std::string(name) + "/" + page.name).c_str(),
                                   [&page, parsed, query](benchmark::State& state) {
                                     if (!*parsed) *parsed = ParseForQueries(page);
                                     query(state, **parsed);
                                   })
          ->Unit(benchmark::kMillisecond);
    }
  }
  // Small pages first, as a session usually begins.
  auto sequence = std::make_shared<std::vector<CorpusPage>>(pages);
  std::sort(sequence->begin(), sequence->end(),
            [](const CorpusPage& a, const CorpusPage& b) { return a.bytes.size() < b.bytes.size(); });
  if (!sequence->empty()) {
    benchmark::RegisterBenchmark("ParseSequence", [sequence](benchmark::State& state) {
      ParseSequence(state, *sequence);
    })->Unit(benchmark::kMillisecond);
  }
}

}  // namespace qrl::bench
