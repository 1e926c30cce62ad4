#pragma once

#include <vector>

#include "bench/corpus_pages.h"

namespace qrl::bench {

// Parse, Release, ParseRelease, Text, Markup, ByTag, ByClass and ById on each page, named
// "<benchmark>/<page>", each counting the page's bytes as processed; and ParseSequence, the
// pages parsed in turn from the smallest, each replacing the one before.
void RegisterHtmlBenchmarks(const std::vector<CorpusPage>& pages);

}  // namespace qrl::bench
