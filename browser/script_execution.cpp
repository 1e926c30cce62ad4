// wvExecuteScript: runs a piece of JavaScript in the page.
#include <string>

#include "browser/browser_state.h"
#include "browser/script_output.h"
#include "host/cdom.h"
#include "trace/trace_text.h"

namespace qrl {

// Fire and forget: the value only goes to standard output, and the document
// does not change.
HostWord CDOM::wvExecuteScript(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  const std::u16string script = WideArg(args, 0);
  if (BrowserView) {
    // Answers may come in another order than the scripts went, so the trace
    // names the script that each one answers.
    std::string traced = TraceDetail([&script] { return " for=" + TraceQuoted(script); });
    BrowserView->ExecuteScript(script, [traced = std::move(traced)](ResultCode errorCode,
                                                                     std::u16string_view json) {
      if (errorCode < 0) {
        Trace("script", [&] { return "failed=" + TraceCode(errorCode) + traced; });
        PrintScriptError(errorCode);
      } else {
        Trace("script", [&] { return "ok result=" + TraceQuoted(json) + traced; });
        PrintScriptResult(json);
      }
    });
  }
  return GiveInt(1);
}

}  // namespace qrl
