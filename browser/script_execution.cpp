// wvExecuteScript: runs a piece of JavaScript in the page.
#include <string>

#include "browser/browser_state.h"
#include "browser/script_output.h"
#include "host/cdom.h"

namespace qrl {

// Fire and forget: the value only goes to standard output, and the document
// does not change.
HostWord CDOM::wvExecuteScript(HostWord, HostWord, HostWord, HostValue* args, HostWord) {
  const std::u16string script = WideArg(args, 0);
  if (BrowserView) {
    BrowserView->ExecuteScript(script, [](ResultCode errorCode, std::u16string_view json) {
      if (errorCode < 0) {
        PrintScriptError(errorCode);
      } else {
        PrintScriptResult(json);
      }
    });
  }
  return GiveInt(1);
}

}  // namespace qrl
