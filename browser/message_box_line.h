// What every platform does with a message box before (or instead of)
// showing it.
#pragma once

#include <string_view>

namespace qrl {

// A message box always leaves its text on standard error as well, so that it
// is seen where no one can click.
void WriteMessageBoxLine(std::string_view text, std::string_view title);

// False when QRLANTERN_NO_DIALOGS is "1": tests and headless runs set it,
// since nobody would be there to press OK.
bool MessageBoxDialogsAllowed();

}  // namespace qrl
