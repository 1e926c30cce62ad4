// The one rule that turns a script's URL or path into what the browser is
// asked to load.
#pragma once

#include <string>
#include <string_view>

namespace qrl {

// A drive path becomes a file URL; anything that is not http, https or file
// gets "https://" in front; every backslash becomes a slash. Case is ignored
// by the tests and kept in the result.
std::u16string NormalizeUrl(std::u16string_view url);

}  // namespace qrl
