// The lines that the browser host writes to standard output about scripts.
#pragma once

#include <string_view>

#include "browser/browser_component.h"

namespace qrl {

// "Error executing script: 0x%08lx\n", the code as its 32 bits.
void PrintScriptError(ResultCode errorCode);

// "Script executed successfully, result: %s\n", the JSON text as it came.
void PrintScriptResult(std::u16string_view resultJson);

}  // namespace qrl
