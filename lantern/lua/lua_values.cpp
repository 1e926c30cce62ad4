#include "lantern/lua/lua_values.h"

#include "commands/unicode_text.h"

namespace qrl {

namespace {

// The iterator that OrderedPairs hands out: upvalue 1 is the key sequence,
// upvalue 2 the position reached.
int NextInOrder(lua_State* L) {
  const lua_Integer position = lua_tointeger(L, lua_upvalueindex(2)) + 1;
  lua_pushinteger(L, position);
  lua_replace(L, lua_upvalueindex(2));
  if (lua_rawgeti(L, lua_upvalueindex(1), position) == LUA_TNIL) return 1;
  lua_pushvalue(L, -1);
  lua_rawget(L, 1);
  return 2;
}

int OrderedPairs(lua_State* L) {
  luaL_checktype(L, 1, LUA_TTABLE);
  lua_getmetatable(L, 1);
  lua_getfield(L, -1, "__keys");
  lua_pushinteger(L, 0);
  lua_pushcclosure(L, NextInOrder, 2);
  lua_pushvalue(L, 1);
  lua_pushnil(L);
  return 3;
}

void PushMap(lua_State* L, const Value& map) {
  lua_createtable(L, 0, static_cast<int>(map.pairs.size()));
  lua_createtable(L, 0, 3);  // the metatable
  lua_createtable(L, static_cast<int>(map.pairs.size()), 0);  // __keys
  lua_Integer stored = 0;
  for (const MapPair& pair : map.pairs) {
    PushValue(L, pair.key);
    if (lua_isnil(L, -1)) {  // a key that a table cannot hold is left out
      lua_pop(L, 1);
      continue;
    }
    lua_pushvalue(L, -1);
    lua_rawseti(L, -3, ++stored);
    PushValue(L, pair.value);
    lua_rawset(L, -5);
  }
  lua_setfield(L, -2, "__keys");
  lua_pushcfunction(L, OrderedPairs);
  lua_setfield(L, -2, "__pairs");
  lua_pushliteral(L, "lantern map");
  lua_setfield(L, -2, "__name");
  lua_setmetatable(L, -2);
}

void PushArray(lua_State* L, const Value& array) {
  lua_createtable(L, static_cast<int>(array.elements.size()), 0);
  lua_Integer index = 0;
  for (const Value& element : array.elements) {
    PushValue(L, element);
    lua_rawseti(L, -2, ++index);
  }
}

}  // namespace

// Arrays and maps nest only as deep as a module stored records of this host
// into each other, which no command does; the recursion stays shallow.
void PushValue(lua_State* L, const Value& value) {
  switch (value.kind) {
    case Value::Kind::Integer:
      lua_pushinteger(L, value.integer);
      return;
    case Value::Kind::Text:
      lua_pushlstring(L, value.text.data(), value.text.size());
      return;
    case Value::Kind::WideText: {
      const std::string bytes = Utf16ToUtf8(value.wide);
      lua_pushlstring(L, bytes.data(), bytes.size());
      return;
    }
    case Value::Kind::Array:
      PushArray(L, value);
      return;
    case Value::Kind::Map:
      PushMap(L, value);
      return;
    case Value::Kind::Zeroed:
    case Value::Kind::Other:
      lua_pushnil(L);
      return;
  }
}

}  // namespace qrl
