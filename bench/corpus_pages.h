// The pages of the benchmark corpus: every *.html file of its folder, found
// through the environment variable QRL_CORPUS, or else the folder that the
// build was configured with.
#pragma once

#include <string>
#include <vector>

namespace qrl::bench {

struct CorpusPage {
  std::string name;   // file name without ".html"
  std::string bytes;  // the whole file
};

std::vector<CorpusPage> LoadCorpusPages();

}  // namespace qrl::bench
