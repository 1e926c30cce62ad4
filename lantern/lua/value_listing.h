// Values as the prompt shows them to a script author: integers (handles
// among them) as numbers, texts quoted so that "-1" and -1 differ, arrays
// listed in order, maps as name = value in the order the module stored the
// pairs.
#pragma once

#include <lua.hpp>
#include <string>

namespace qrl {

// The value at `index`, written out; it stays on the stack.
std::string ListValue(lua_State* L, int index);

}  // namespace qrl
