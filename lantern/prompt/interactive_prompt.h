// The prompt of `lantern -i`: lines of Lua typed by hand, in the same state
// as the script that ran before them, with the message loop running while
// lantern waits for the next line.
#pragma once

#include <lua.hpp>

#include "lantern/lua/lua_session.h"

namespace qrl {

// Runs lines until the end of input. An error in one line is shown and the
// prompt goes on; what a line gives is listed (see value_listing.h).
void RunPrompt(lua_State* L, LuaSession& session, const char* greeting);

}  // namespace qrl
