// Parses one file once and exits: a driver for measuring the peak memory of a
// parse from outside (e.g. /usr/bin/time -v qrlantern_parse_once code.html).
#include <cstdio>
#include <fstream>
#include <string>

#include "html/html_parser.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FILE\n", argv[0]);
    return 2;
  }
  // Read into one string of the file's size, so that the peak holds the
  // page once, as a capture holds its markup once.
  std::ifstream file(argv[1], std::ios::binary | std::ios::ate);
  std::string input(file ? static_cast<std::size_t>(file.tellg()) : 0, '\0');
  if (!file || !file.seekg(0).read(input.data(), static_cast<std::streamsize>(input.size()))) {
    std::fprintf(stderr, "cannot read %s\n", argv[1]);
    return 1;
  }
  qrl::HtmlParser parser;
  const qrl::DocumentRef document = parser.Parse(input.c_str(), static_cast<std::uint32_t>(input.size()));
  std::printf("%zu top-level nodes\n", document->root->children().size());
  return 0;
}
