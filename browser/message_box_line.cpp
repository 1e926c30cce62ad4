#include "browser/message_box_line.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "trace/trace_text.h"

namespace qrl {

void WriteMessageBoxLine(std::string_view text, std::string_view title) {
  const std::string line = std::string(title) + ": " + std::string(text) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fflush(stderr);
  Trace("warn", [&line] { return TraceQuoted(std::string_view(line).substr(0, line.size() - 1)); });
}

bool MessageBoxDialogsAllowed() {
  const char* noDialogs = std::getenv("QRLANTERN_NO_DIALOGS");
  return !(noDialogs && std::string_view(noDialogs) == "1");
}

}  // namespace qrl
