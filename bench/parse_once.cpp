// Parses one file once and exits: a driver for measuring the peak memory of a
// parse from outside (e.g. /usr/bin/time -v qrlantern_parse_once code.html).
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "html/html_parser.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FILE\n", argv[0]);
    return 2;
  }
  std::ifstream file(argv[1], std::ios::binary);
  if (!file) {
    std::fprintf(stderr, "cannot read %s\n", argv[1]);
    return 1;
  }
  std::ostringstream bytes;
  bytes << file.rdbuf();
  const std::string input = bytes.str();
  qrl::HtmlParser parser;
  const qrl::DocumentRef document = parser.Parse(input.c_str(), static_cast<std::uint32_t>(input.size()));
  std::printf("%zu top-level nodes\n", document->root->children.size());
  return 0;
}
