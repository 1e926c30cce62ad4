#include "browser/script_output.h"

#include <cinttypes>
#include <cstdio>
#include <string>

#include "commands/unicode_text.h"

namespace qrl {

// The lines are written as UTF-8 through the same narrow stream that the host
// prints to, and flushed, so that they keep their place among the host's own
// lines when standard output is a pipe.
void PrintScriptError(ResultCode errorCode) {
  std::printf("Error executing script: 0x%08" PRIx32 "\n", static_cast<std::uint32_t>(errorCode));
  std::fflush(stdout);
}

void PrintScriptResult(std::u16string_view resultJson) {
  const std::string text = Utf16ToUtf8(resultJson);
  std::fputs("Script executed successfully, result: ", stdout);
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

}  // namespace qrl
