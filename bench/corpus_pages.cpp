#include "bench/corpus_pages.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace qrl::bench {

namespace {

std::filesystem::path CorpusFolder() {
  if (const char* fromEnvironment = std::getenv("QRL_CORPUS")) return fromEnvironment;
  return QRL_CORPUS_DIR;
}

std::string ReadWholeFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

}  // namespace

std::vector<CorpusPage> LoadCorpusPages() {
  std::vector<CorpusPage> pages;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(CorpusFolder(), error)) {
    if (entry.path().extension() != ".html") continue;
    pages.push_back({entry.path().stem().string(), ReadWholeFile(entry.path())});
  }
  std::sort(pages.begin(), pages.end(),
            [](const CorpusPage& a, const CorpusPage& b) { return a.bytes.size() < b.bytes.size(); });
  return pages;
}

}  // namespace qrl::bench
