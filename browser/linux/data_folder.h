// File-system pieces that every Linux platform shares.
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

}  // namespace qrl
