// The module's vocabulary as Lua globals: each function row a function under
// its announced name, each constant an integer under its name without "@".
#pragma once

#include <lua.hpp>

namespace qrl {

// The session must be attached to L already.
void InstallModuleGlobals(lua_State* L);

}  // namespace qrl
