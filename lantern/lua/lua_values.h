// Results as scripts see them.
//
// integer -> integer; text -> string (its bytes); wide text -> string (UTF-8);
// array -> sequence (a slot the module never stored is nil); map -> table
// from key to value whose pairs() runs in the order the module stored the
// pairs (its metatable's __pairs; the same order is in the metatable's
// __keys sequence); zeroed record or unknown type -> nil.
#pragma once

#include <lua.hpp>

#include "lantern/host/call_value.h"

namespace qrl {

void PushValue(lua_State* L, const Value& value);

}  // namespace qrl
