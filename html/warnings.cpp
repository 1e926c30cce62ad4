#include "html/warnings.h"

#include <iostream>
#include <string>

#include "trace/trace_text.h"

namespace qrl {

namespace {

// The trace gets the line as it was written, without its line break.
void WriteWarningLine(const std::string& line) {
  std::cerr.write(line.data(), static_cast<std::streamsize>(line.size()));
  std::cerr.flush();
  Trace("warn", [&line] { return TraceQuoted(std::string_view(line).substr(0, line.size() - 1)); });
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
