#include "html/warnings.h"

#include <iostream>
#include <string>

namespace qrl {

namespace {

void WriteWarningLine(const std::string& line) {
  std::cerr.write(line.data(), static_cast<std::streamsize>(line.size()));
  std::cerr.flush();
}

}  // namespace

void WarnElementNotClosed(std::string_view elementName) {
  std::string line = "WARN : element not closed <";
  line.append(elementName).append("> \n");
  WriteWarningLine(line);
}

void WarnUnexpectedClose(std::string_view closingName, std::string_view elementName) {
  std::string line = "WARN : unexpected closed element </";
  line.append(closingName).append("> for <").append(elementName).append(">\n");
  WriteWarningLine(line);
}

void WarnUnexpectedAttributeQuote(char quote) {
  std::string line = "WARN : attribute unexpected ";
  line.push_back(quote);
  line.push_back('\n');
  WriteWarningLine(line);
}

}  // namespace qrl
