// How a row's name reaches the host: copied and folded to lower case by the
// system's own text functions.
#pragma once

namespace qrl {

// Copies the zero-terminated `name` into `out` and folds the copy to lower
// case; `out` has room for the name and its zero.
void CopyNameInLowerCase(char* out, const char* name);

}  // namespace qrl
