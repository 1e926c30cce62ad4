// File-system and standard-error pieces that every Linux platform shares.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qrl {

// $XDG_DATA_HOME, else ~/.local/share from $HOME; nothing when neither is
// set to an absolute path.
std::optional<std::u16string> UserDataHome();

// mkdir with the usual mode; an existing folder or a failure is not reported.
void MakeFolder(std::u16string_view path);

// A message box always leaves its text on standard error as well, so that it
// is seen where no one can click.
void WriteMessageBoxLine(std::string_view text, std::string_view title);

}  // namespace qrl
